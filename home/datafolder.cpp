// The advanced settings: the effect on the cache button, and making and deleting the data folder.

#include "home/mainwindow.h"

#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPalette>
#include <QParallelAnimationGroup>
#include <QProgressBar>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QSequentialAnimationGroup>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int coverWidth = 175; // pixels, the width of the cache button
constexpr int coverParkingY = 30; // pixels, just below the container of the button
constexpr int coverGrowTime = 250; // ms
constexpr int coverStayTime = 3000; // ms
constexpr int coverShrinkTime = 200; // ms

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

/// The rectangles that a cover of the cache button passes through.
struct CoverPath
{
    explicit CoverPath(const QWidget *cover)
        : folded(cover->x(), cover->y(), 0, cover->height())
        , spread(cover->x(), cover->y(), coverWidth, cover->height())
        , foldedRight(cover->x() + coverWidth, cover->y(), 0, cover->height())
        , parked(0, coverParkingY, 0, cover->height())
    { }

    QRect folded;
    QRect spread;
    QRect foldedRight;
    QRect parked;
};

QPropertyAnimation *coverAnimation(QWidget *cover, const QRect &from, const QRect &to, int duration)
{
    auto *const animation = new QPropertyAnimation(cover, "geometry");
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(duration);
    animation->setEasingCurve(QEasingCurve::OutQuad);
    return animation;
}

/// Removes a file, also one that is write-protected, which Windows refuses at first.
bool removeFile(const QString &path)
{
    return QFile::remove(path)
        || (QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteUser)
            && QFile::remove(path));
}

/// Removes \a entry and, if it is a folder, all it holds, as far as possible; returns whether
/// nothing is left. A link is removed itself, and what it leads to is left alone, even where the
/// link stands in the place of the data folder or is a junction of Windows;
/// QDir::removeRecursively() would empty the folder at its other end.
bool removeTree(const QFileInfo &entry)
{
    const QString path = entry.filePath();
    if (!entry.exists() && !entry.isSymLink())
        return true; // gone meanwhile
    if (entry.isSymLink() || entry.isJunction())
        return QFile::remove(path) || QDir().rmdir(path); // a link to a folder is one to Windows
    if (!entry.isDir())
        return removeFile(path);

    bool removed = true;
    const QFileInfoList entries = QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden
                                                           | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &child : entries)
        removed = removeTree(child) && removed;
    return removed && QDir().rmdir(path);
}

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

void MainWindow::animateCacheClear()
{
    QWidget *const strip = ui->CleanedCacheW;
    QWidget *const label = ui->CleanedCacheS;
    const CoverPath stripPath(strip);
    const CoverPath labelPath(label);

    auto *const effect = new QSequentialAnimationGroup(this);

    auto *const in = new QParallelAnimationGroup;
    in->addAnimation(coverAnimation(strip, stripPath.folded, stripPath.spread, coverGrowTime));
    in->addAnimation(coverAnimation(label, labelPath.folded, labelPath.spread, coverGrowTime));
    effect->addAnimation(in);

    effect->addPause(coverStayTime);

    // Wanted: nothing enables the button again before the next start.
    ui->ClearCacheBtn->setEnabled(false);

    auto *const out = new QSequentialAnimationGroup(this);
    for (const auto &[cover, path] : {std::pair(strip, stripPath), std::pair(label, labelPath)}) {
        out->addAnimation(coverAnimation(cover, path.spread, path.foldedRight, coverShrinkTime));
        out->addAnimation(coverAnimation(cover, path.foldedRight, path.parked, coverShrinkTime));
    }
    effect->addAnimation(out);

    effect->start();
}

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
        // Wanted: after a failure the loop runs on, and the program lives in it until it ends.
    };
    // The loop is the context: the steps need the variables here, and end with them at the latest.
    connect(timer, &QTimer::timeout, &loop, step, Qt::DirectConnection);
    // The loop must not outlive the window.
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    timer->start(progressInterval);
    loop.exec();
}
