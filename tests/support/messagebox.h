#pragma once

#include "tests/support/modalanswer.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTest>

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

/// The button of \a box whose text is \a text, without its mnemonic; null when it has none.
inline QAbstractButton *buttonOf(const QMessageBox &box, const QString &text)
{
    const auto buttons = box.buttons();
    for (auto *button : buttons) {
        if (plainText(*button) == text)
            return button;
    }
    return nullptr;
}

/// Answers the next message box by clicking the button whose text is \c button (without
/// mnemonics), or by pressing Escape when it has none, and keeps what it said.
class BoxAnswer
{
public:
    explicit BoxAnswer(const QString &button)
        : answer([this, button](QMessageBox &box) { reply(box, button); })
    { }

    bool seen() const { return answer.seen(); }
    const BoxContents &box() const { return contents; }

private:
    void reply(QMessageBox &box, const QString &button)
    {
        contents = contentsOf(box);
        if (auto *const chosen = buttonOf(box, button)) {
            chosen->click();
        } else {
            // In case the box knows no Escape, it must not stay open for ever.
            QTimer::singleShot(0, &box, &QDialog::reject);
            QTest::keyClick(&box, Qt::Key_Escape);
        }
    }

    BoxContents contents;
    ModalAnswer<QMessageBox> answer;
};
