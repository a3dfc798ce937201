// The data folder: making it again, and deleting all that it holds.
#include "home/mainwindow.h"

#include "home/removetree.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPalette>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int progressWidth = 320; // pixels, for the title to be read
constexpr QRgb progressColor = 0xff2d2d2d; // that of the icons
constexpr int progressInterval = 200; // ms
constexpr int progressStep = 10; // per cent
constexpr int closeDelay = 500; // ms

/// The progress dialog. The person cannot send it away while its work goes on; the program can, and
/// so can the end of the program.
class ProgressDialog : public QDialog
{
public:
    explicit ProgressDialog(QWidget *parent)
        : QDialog(parent)
        , bar(new QProgressBar)
    {
        setWindowTitle(u"Eliminando datos"_s);
        setModal(true);
        bar->setRange(0, 100);
        bar->setValue(0);
        bar->setMinimumWidth(progressWidth);
        // Dark enough for the white figure on it.
        QPalette dark = bar->palette();
        dark.setColor(QPalette::Highlight, progressColor);
        bar->setPalette(dark);
        (new QVBoxLayout(this))->addWidget(bar);
    }

    /// In per cent.
    void setValue(int value) { bar->setValue(value); }

protected:
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }
    void closeEvent(QCloseEvent *event) override
    {
        if (event->spontaneous())
            event->ignore();
        else
            QDialog::closeEvent(event);
    }

private:
    QProgressBar *bar;
};

bool confirmDeletion(QWidget *parent)
{
    QMessageBox box(parent);
    box.setWindowTitle(u"Confirmar eliminación"_s);
    box.setText(
        u"¿De verdad desea eliminar todos los datos registrados, incluyendo proyectos y la carpeta "
        "raíz?\n\nUna vez los datos sean eliminados, el programa se cerrará en automático y deberá "
        "reiniciarlo manualmente."_s);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.button(QMessageBox::Yes)->setText(u"Aceptar"_s);
    box.button(QMessageBox::No)->setText(u"Cancelar"_s);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

void MainWindow::redoFolder()
{
    const QDir folder(dataPath);
    if (folder.exists()) {
        QMessageBox::information(this, u"Carpeta existente"_s,
                                 u"La carpeta raíz ya existe y no es necesario reconstruirla."_s);
    } else if (folder.mkpath(u"."_s)) {
        QMessageBox::information(this, u"Éxito"_s,
                                 u"La carpeta raíz ha sido reconstruida correctamente."_s);
    } else {
        QMessageBox::critical(this, u"Error"_s, u"No se pudo reconstruir la carpeta raíz."_s);
    }
}

void MainWindow::deleteAll()
{
    if (!confirmDeletion(this))
        return;
    if (!QDir(dataPath).exists()) {
        QMessageBox::information(this, u"Sin datos"_s,
                                 u"No hubo datos por eliminar, la carpeta raíz no existe."_s);
        return;
    }

    // Quirk: deleting all data takes two seconds however little there is, because the bar fills at
    // its own pace and the folder goes at its end; so there is time to see what happens.
    auto *const dialog = new ProgressDialog(this);
    dialog->show();
    QCoreApplication::processEvents();

    auto *const timer = new QTimer(dialog);
    int progress = 0;
    QEventLoop loop;

    const auto step = [&] {
        progress += progressStep;
        dialog->setValue(progress);
        if (progress < 100)
            return;

        timer->stop();
        const bool removed = removeTree(QFileInfo(dataPath));
        if (!removed)
            QMessageBox::critical(dialog, u"Error"_s, u"No se pudo eliminar la carpeta raíz."_s);
        timer->deleteLater();
        dialog->close();
        dialog->deleteLater();
        if (removed) {
            QTimer::singleShot(closeDelay, this, &MainWindow::close);
            loop.quit();
        }
        // Quirk: after a failed deletion the program goes on inside the event loop of the deletion,
        // because only a success leaves it; nothing of it is felt.
    };
    // The loop is the context: the steps need the variables here, and end with them at the latest.
    connect(timer, &QTimer::timeout, &loop, step, Qt::DirectConnection);
    // The loop must not outlive the window.
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    timer->start(progressInterval);
    loop.exec();
}
