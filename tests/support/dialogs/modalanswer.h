// Answers the next modal dialog of a class.
#pragma once

#include "tests/support/dialogs/poll.h"

#include <QApplication>

#include <functional>
#include <utility>

/// The modal dialog of that class that is shown now; null when there is none.
template <typename Dialog> Dialog *shownModal()
{
    auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
    return dialog && dialog->isVisible() ? dialog : nullptr;
}

/// Answers the next modal dialog of the given class while the code under test sits in its exec():
/// once it is shown, \c action runs with it, exactly once. The test must check seen() afterwards: a
/// dialog that never came is a failure.
template <typename Dialog> class ModalAnswer
{
public:
    explicit ModalAnswer(std::function<void(Dialog &)> answer)
        : action(std::move(answer))
        , poll([this](Poll &) { answerShown(); })
    {
        // Where the platform has a dialog of its own for this, nobody here could answer it.
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    /// Whether the dialog came and was answered.
    bool seen() const { return answered; }

private:
    void answerShown()
    {
        auto *const dialog = shownModal<Dialog>();
        if (!dialog)
            return;
        poll.stop(); // before the action, in which other dialogs may come
        answered = true;
        action(*dialog);
    }

    std::function<void(Dialog &)> action;
    bool answered = false;
    Poll poll;
};
