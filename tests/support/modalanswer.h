#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <utility>

/// Answers the next modal dialog of the given class while the code under test sits in its exec().
///
/// A timer looks for the dialog; once it is shown, \c action runs with it, exactly once. The test
/// must check seen() afterwards: a dialog that never came is a failure.
template <typename Dialog> class ModalAnswer : public QObject
{
public:
    explicit ModalAnswer(std::function<void(Dialog &)> answer)
        : action(std::move(answer))
    {
        // Where the platform has a dialog of its own for this, nobody here could answer it.
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        connect(&timer, &QTimer::timeout, this, &ModalAnswer::look);
        timer.start(pollInterval);
    }

    /// Whether the dialog came and was answered.
    bool seen() const { return answered; }

private:
    static constexpr int pollInterval = 5; // ms

    void look()
    {
        auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        timer.stop();
        answered = true;
        action(*dialog);
    }

    std::function<void(Dialog &)> action;
    QTimer timer;
    bool answered = false;
};
