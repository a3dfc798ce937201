#pragma once

#include "tests/support/messagebox.h"

#include <QPointer>

#include <utility>

/// Answers the message boxes that come while it lives, one after the other, by clicking the button
/// with the given text, and keeps what they said. An empty text presses Escape, and so does every
/// box beyond the expected ones.
class BoxSequence
{
public:
    explicit BoxSequence(QStringList buttonTexts)
        : answers(std::move(buttonTexts))
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { look(); });
        timer.start(5);
    }

    const QList<BoxContents> &boxes() const { return seen; }

private:
    void look()
    {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible() || box == last)
            return;
        last = box;
        const QString answer = answers.value(seen.size());
        seen << contentsOf(*box);
        if (auto *const chosen = buttonOf(*box, answer))
            chosen->click();
        else
            box->reject();
    }

    QStringList answers;
    QList<BoxContents> seen;
    QPointer<QMessageBox> last;
    QTimer timer;
};
