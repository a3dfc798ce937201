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
    static QString plain(QString text) { return text.remove(QLatin1Char('&')); }

    void reply(QMessageBox &box, const QString &button)
    {
        contents = {box.windowTitle(), box.text(), box.icon(), {}, box.parentWidget()};
        QAbstractButton *chosen = nullptr;
        const auto buttons = box.buttons();
        for (auto *candidate : buttons) {
            contents.buttons << plain(candidate->text());
            if (plain(candidate->text()) == button)
                chosen = candidate;
        }
        if (chosen) {
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
