// Watches the progress of deleting everything.
#pragma once

#include "tests/support/dialogs/poll.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLayout>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>

#include <utility>

/// Watches for the progress dialog of the home window and keeps the steps of its bar.
class ProgressWatch
{
public:
    struct Step
    {
        int value;
        qint64 time; // ms since the dialog was seen
        bool folderExists;
    };
    /// How fast the steps follow one another: as the program has it, or at once, for tests that are
    /// not about the time.
    enum Pace { OwnPace, Hurried };

    ProgressWatch(QWidget &home, QString dataPath, Pace pace = Hurried)
        : window(home)
        , folder(std::move(dataPath))
        , hurried(pace == Hurried)
        , poll([this](Poll &) { watch(); })
    { }

    QPointer<QDialog> dialog;
    const QWidget *identity = nullptr; // of the dialog, also when it is gone; to compare with only
    bool seen = false;
    QString title;
    QString layout;
    int width = 0; // of the dialog
    QList<int> range; // minimum, maximum and first value
    bool modal = false;
    int interval = 0; // ms
    QList<Step> steps;
    bool goneAfterThem = false; // the folder, as soon as the last step was done

private:
    void watch()
    {
        auto *const bar = window.findChild<QProgressBar *>();
        if (!bar || !bar->isVisible())
            return;
        if (!seen)
            describe(*bar);
        // The dialog is shown a little before its steps begin.
        auto *const beat = dialog->findChild<QTimer *>({}, Qt::FindDirectChildrenOnly);
        if (!beat || !beat->isActive())
            return;
        poll.stop();
        interval = beat->interval();
        if (hurried)
            beat->setInterval(hurriedInterval);
    }

    void describe(QProgressBar &bar)
    {
        clock.start();
        seen = true;
        dialog = qobject_cast<QDialog *>(bar.window());
        identity = dialog;
        title = dialog->windowTitle();
        layout = QString::fromLatin1(dialog->layout()->metaObject()->className());
        width = dialog->width();
        range = {bar.minimum(), bar.maximum(), bar.value()};
        modal = dialog->isModal() && dialog->parentWidget() == &window;
        QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [this](int value) {
            steps << Step{value, clock.elapsed(), QFileInfo::exists(folder)};
            if (value == 100) {
                QMetaObject::invokeMethod(
                    &after, [this] { goneAfterThem = !QFileInfo::exists(folder); },
                    Qt::QueuedConnection);
            }
        });
    }

    static constexpr int hurriedInterval = 10; // ms

    QWidget &window;
    QString folder;
    bool hurried;
    QElapsedTimer clock;
    Poll poll;
    QObject after; // hears of what comes after a step
};
