#pragma once

#include <QObject>

/// Ends the program when a window is closed and none is left to be seen.
///
/// The toolkit does so by itself, except when the closed window has a parent window, as the board
/// has the hidden home window. An invisible process would hold the single-instance guard and keep
/// the person from ever starting the program again.
///
/// Obeys QGuiApplication::quitOnLastWindowClosed. Watches for as long as it lives.
class LastWindowWatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LastWindowWatcher)

public:
    explicit LastWindowWatcher(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static void quitIfNoWindowIsLeft();
};
