#pragma once

#include <QApplication>
#include <QFont>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <utility>

/// How one line of a menu looked.
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
class MenuAnswer : public QObject
{
public:
    explicit MenuAnswer(QString choice = {}, std::function<void()> whileOpen = {})
        : label(std::move(choice))
        , interlude(std::move(whileOpen))
    {
        connect(&timer, &QTimer::timeout, this, &MenuAnswer::look);
        timer.start(pollInterval);
    }

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
    static constexpr int pollInterval = 5; // ms

    void look()
    {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || !menu->isVisible() || !menu->windowHandle())
            return;
        timer.stop();
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
    QTimer timer;
    QList<MenuEntry> shown;
    QPoint corner;
    bool answered = false;
};
