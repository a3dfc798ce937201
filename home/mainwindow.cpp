// Builds and wires the home window, and turns its pages.
#include "home/mainwindow.h"

#include "home/projectdelegate.h"
#include "look/attention.h"
#include "look/windowlook.h"

#include "ui_mainwindow.h"

#include <QDir>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Gives the horizontal rule that is the text of \a label the label's text colour. Older versions
/// of Qt draw a rule in a shade of the background, which is transparent in these labels.
void showRule(QLabel *label)
{
    label->sizeHint(); // polishes the label, lays its text out, and so makes the document
    if (auto *const document = label->findChild<QTextDocument *>()) {
        QTextBlockFormat colored;
        colored.setBackground(label->palette().windowText());
        QTextCursor(document).mergeBlockFormat(colored);
    }
}

/// Names the pictures on the pages of \a help, for people who do not see them, after their pages.
void namePreviews(const QTabWidget *help)
{
    for (int i = 0; i < help->count(); ++i) {
        const auto labels = help->widget(i)->findChildren<QLabel *>();
        for (auto *label : labels) {
            if (label->property("picture").isValid())
                label->setAccessibleName(MainWindow::tr("Vista previa: %1").arg(help->tabText(i)));
        }
    }
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    // Quirk: boards lie in "Documents/OrvanePlumara" in the home folder also where the system calls
    // its folder of documents otherwise, because the path is written out and boards that exist lie
    // there.
    , dataPath(QDir::homePath() + "/Documents/OrvanePlumara"_L1)
    , projectDelegate(std::make_unique<ProjectDelegate>())
{
    // Quirk: some texts are misspelt, for example "presición", "Recondtuir", "difernetes" and
    // "infrerior", because they are the product's own texts, which manuals and people quote.
    // Quirk: the boxes on the settings page do nothing and forget their state, because they
    // announce what is to come; the one that speaks of encryption is OnlyViewData.
    applyWindowStyle(*this);
    ui->setupUi(this);

    checkVersion();
    initializeUpdateAdvisorEffect();
    NavMain();

    dressWidgets(*this);
    showRule(ui->Separator);
    showRule(ui->SeparatorMenu);
    ui->listWidget->setAccessibleName(ui->SubTitleIndexFiles->text());
    namePreviews(ui->HelpWidget);
    QLocale::setDefault(locale);
    setFixedSize(size());
    setFocusPolicy(Qt::NoFocus);

    ui->NewProject->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    ui->ImportProject->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);

    connect(ui->NavMainBtn, &QPushButton::clicked, this, &MainWindow::NavMain);
    connect(ui->NavSettingsBtn, &QPushButton::clicked, this, &MainWindow::NavSettings);
    connect(ui->NavHelpBtn, &QPushButton::clicked, this, &MainWindow::NavHelp);
    connect(ui->NewProject, &QToolButton::clicked, this, &MainWindow::startProject);
    connect(ui->ImportProject, &QToolButton::clicked, this, &MainWindow::openProject);

    ui->listWidget->setItemDelegate(projectDelegate.get());
    // Made before showProjects() makes its first connection, and so served before all of them.
    connect(ui->listWidget, &QListWidget::itemClicked, this, [this] { clickServed = false; });
    openBoardsByEnter();
    ui->listWidget->setPlaceholder(
        u"Aquí aparecerán las pizarras que guarde en\n%1"_s.arg(dataPath));

    if (!QDir(dataPath).exists())
        QDir(dataPath).mkpath(u"."_s);
    showProjects();

    connect(ui->ClearCacheBtn, &QPushButton::clicked, this, &MainWindow::animateCacheClear);
    connect(ui->RedoFolder, &QPushButton::clicked, this, &MainWindow::redoFolder);
    connect(ui->DeleteAll, &QPushButton::clicked, this, &MainWindow::deleteAll);
    connect(ui->CancelUpdate, &QPushButton::clicked, this, &MainWindow::closeUpdateMessage);
    connect(ui->StartUpdate, &QPushButton::clicked, this, &MainWindow::launchUpdater);
}

MainWindow::~MainWindow() = default;

void MainWindow::NavMain()
{
    showPage(ui->MainMenu);
}

void MainWindow::NavSettings()
{
    showPage(ui->SettingsMenu);
}

void MainWindow::NavHelp()
{
    showPage(ui->HelpMenu);
}

void MainWindow::showPage(const QWidget *page)
{
    struct Entry
    {
        QWidget *page;
        QPushButton *button;
    };
    const Entry entries[] = {
        {ui->MainMenu, ui->NavMainBtn},
        {ui->SettingsMenu, ui->NavSettingsBtn},
        {ui->HelpMenu, ui->NavHelpBtn},
    };
    // Every state is set each time: a click has already toggled the button that was clicked.
    for (const Entry &entry : entries) {
        entry.page->setVisible(entry.page == page);
        entry.button->setChecked(entry.page == page);
    }
}

void MainWindow::restoreWindow()
{
    bringToFront(*this);
}

bool MainWindow::flashTaskbarIcon()
{
    return flash(*this);
}
