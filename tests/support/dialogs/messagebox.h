// Answers message boxes and keeps what they said.
#pragma once

#include "tests/support/dialogs/modalanswer.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

#include <utility>

/// What a message box said before it was answered.
struct BoxContents
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;
    QWidget *parent = nullptr;
};

/// The text of \a button without its mnemonic.
inline QString plainText(const QAbstractButton &button)
{
    return button.text().remove(QLatin1Char('&'));
}

inline BoxContents contentsOf(const QMessageBox &box)
{
    BoxContents contents{box.windowTitle(), box.text(), box.icon(), {}, box.parentWidget()};
    const auto buttons = box.buttons();
    for (const auto *button : buttons)
        contents.buttons << plainText(*button);
    return contents;
}

/// Clicks the button of \a box whose text is \a text, without its mnemonic, or presses Escape when
/// it has none.
inline void answerBox(QMessageBox &box, const QString &text)
{
    const auto buttons = box.buttons();
    for (auto *button : buttons) {
        if (plainText(*button) == text) {
            button->click();
            return;
        }
    }
    // In case the box knows no Escape, it must not stay open for ever.
    QTimer::singleShot(0, &box, &QDialog::reject);
    QTest::keyClick(&box, Qt::Key_Escape);
}

/// Answers the next message box by clicking the button whose text is \c button (without
/// mnemonics), or by pressing Escape when it has none, and keeps what it said.
class BoxAnswer
{
public:
    explicit BoxAnswer(const QString &button)
        : answer([this, button](QMessageBox &box) {
            contents = contentsOf(box);
            answerBox(box, button);
        })
    { }

    bool seen() const { return answer.seen(); }
    const BoxContents &box() const { return contents; }

private:
    BoxContents contents;
    ModalAnswer<QMessageBox> answer;
};

/// Answers the message boxes that come while it lives, one after the other, by clicking the buttons
/// with the given texts, and keeps what they said. An empty text presses Escape, and so does every
/// box beyond the expected ones.
class BoxSequence
{
public:
    explicit BoxSequence(QStringList buttonTexts)
        : answers(std::move(buttonTexts))
        , poll([this](Poll &) { answerShown(); })
    { }

    const QList<BoxContents> &boxes() const { return seen; }

private:
    void answerShown()
    {
        auto *const box = shownModal<QMessageBox>();
        if (!box || box == last)
            return;
        last = box;
        const QString answer = answers.value(seen.size());
        seen << contentsOf(*box);
        answerBox(*box, answer);
    }

    QStringList answers;
    QList<BoxContents> seen;
    QPointer<QMessageBox> last;
    Poll poll;
};
