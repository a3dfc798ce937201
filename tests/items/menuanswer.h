// Answers the next context menu and keeps what it showed.
#pragma once

#include "tests/support/dialogs/poll.h"

#include <QApplication>
#include <QFont>
#include <QMenu>
#include <QTest>
#include <QWindow>

#include <functional>
#include <utility>

/// One line of a menu, as it was shown.
struct MenuEntry
{
    QString text;
    bool separator = false;
    bool bold = false;
    bool checkable = false;
    bool checked = false;

    bool operator==(const MenuEntry &other) const = default;
};

/// Answers the next context menu while the code under test sits in its exec(): clicks the entry
/// whose text is \c choice, or presses Escape when \c choice is empty, and keeps what it showed.
/// Before that it does \c whileOpen.
///
/// The test must check seen() afterwards: a menu that never came is a failure.
class MenuAnswer
{
public:
    explicit MenuAnswer(QString choice = {}, std::function<void()> whileOpen = {})
        : label(std::move(choice))
        , interlude(std::move(whileOpen))
        , poll([this](Poll &) { answerShown(); })
    { }

    /// Whether the menu came and was answered.
    bool seen() const { return answered; }
    const QList<MenuEntry> &entries() const { return shown; }
    /// Where the menu opened (global position).
    QPoint place() const { return corner; }

    QStringList texts() const
    {
        QStringList all;
        for (const auto &entry : shown)
            all << (entry.separator ? QStringLiteral("---") : entry.text);
        return all;
    }

private:
    void answerShown()
    {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || !menu->isVisible() || !menu->windowHandle())
            return;
        poll.stop();
        answered = true;
        corner = menu->pos();
        if (interlude)
            interlude();

        QAction *chosen = nullptr;
        const auto actions = menu->actions();
        for (auto *const action : actions) {
            shown << MenuEntry{action->text(), action->isSeparator(), action->font().bold(),
                               action->isCheckable(), action->isChecked()};
            if (!label.isEmpty() && action->text() == label)
                chosen = action;
        }
        if (chosen) {
            QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {},
                              menu->actionGeometry(chosen).center());
        } else {
            QTest::keyClick(menu->windowHandle(), Qt::Key_Escape);
        }
    }

    QString label;
    std::function<void()> interlude;
    QList<MenuEntry> shown;
    QPoint corner;
    bool answered = false;
    Poll poll;
};
