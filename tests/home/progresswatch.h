#pragma once

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

    ProgressWatch(QWidget &home, QString dataPath)
        : window(home)
        , folder(std::move(dataPath))
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { look(); });
        timer.start(1);
    }

    QPointer<QDialog> dialog;
    const QWidget *identity = nullptr; // of the dialog, also when it is gone; to compare with only
    bool seen = false;
    QString title;
    QString layout;
    QList<int> range; // minimum, maximum and first value
    bool modal = false;
    int interval = 0; // ms
    QList<Step> steps;

private:
    void look()
    {
        auto *const bar = window.findChild<QProgressBar *>();
        if (!bar || !bar->isVisible())
            return;
        timer.stop();
        clock.start();
        seen = true;
        dialog = qobject_cast<QDialog *>(bar->window());
        identity = dialog;
        title = dialog->windowTitle();
        layout = QString::fromLatin1(dialog->layout()->metaObject()->className());
        range = {bar->minimum(), bar->maximum(), bar->value()};
        modal = dialog->isModal() && dialog->parentWidget() == &window;
        QObject::connect(bar, &QProgressBar::valueChanged, bar, [this](int value) {
            if (auto *const beat = dialog->findChild<QTimer *>({}, Qt::FindDirectChildrenOnly))
                interval = beat->interval();
            steps << Step{value, clock.elapsed(), QFileInfo::exists(folder)};
        });
    }

    QWidget &window;
    QString folder;
    QTimer timer;
    QElapsedTimer clock;
};
