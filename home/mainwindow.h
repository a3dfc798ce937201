// The home window.
#pragma once

#include "home/quietmoment.h"

#include <QLocale>
#include <QMainWindow>
#include <QNetworkAccessManager>
#include <QPointer>

#include <memory>

class BoardWindow;
class QListWidgetItem;
class QNetworkReply;
class QPropertyAnimation;

namespace Ui {
class MainWindow;
}

/// The home window, the start screen of the program: a window of fixed size (1200 × 700 pixels)
/// with a side menu and three pages, one shown at a time.
///
/// It owns the one board window of the program and hides itself while a board is open; the board
/// window shows it again when the board is closed. Closing the home window ends the program.
///
/// mainwindow.cpp builds and wires the window; each other concern has a file of its own:
/// recentboards.cpp, arrivingboards.cpp, cacheeffect.cpp, datafolder.cpp, updatecheck.cpp.
class MainWindow : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MainWindow)

public:
    class ProjectDelegate;

    /// Builds the window, sends the request for the newest version, creates the data folder when
    /// it is missing and lists the boards in it.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Flashes the caption and the task-bar button three times. Returns what Windows reports:
    /// whether the window was active before the call. On other systems it asks for the person's
    /// attention as the desktop does, and returns false.
    bool flashTaskbarIcon();

    /// Answers another start of the program: brings the window that is shown, this one or the board, to
    /// the front, has it flash, and opens the board file \a boardPath as openWhenQuiet() does.
    void answerStart(const QString &boardPath);
    /// Opens the board file \a boardPath as soon as nobody is in the middle of something, the last one
    /// of those that come until then. An open board is asked for first, as at its closing, unless it is
    /// that very one; a file that is no board leaves it as it is. An empty path names no board.
    void openWhenQuiet(const QString &boardPath);

public slots:
    // In the order of their meta-object indices, which callers by index rely on.
    /// Shows the page of the boards, and no other, and checks its navigation button.
    void NavMain();
    /// The same for the page of the settings.
    void NavSettings();
    /// The same for the help page.
    void NavHelp();

    /// Shows the board window as its last close left it: with an empty board.
    void startProject();
    /// Asks for a board file and opens it; does nothing when the dialog is cancelled.
    void openProject();
    /// Brings the window back from the task bar and to the front.
    void restoreWindow();
    /// Lists the boards of the data folder, newest first; creates the folder when it is missing.
    void showProjects();
    /// Opens the board of the row \a item and rebuilds the list, which deletes \a item. A null
    /// item and a row without a path are ignored.
    void onProjectDoubleClicked(QListWidgetItem *item);

    /// Plays the "data cleaned" effect on its button, which stays disabled. Deletes nothing.
    void animateCacheClear();
    /// Creates the data folder when it is missing and says what happened.
    void redoFolder();
    /// After a confirmation, deletes the data folder and all it holds, and closes the window.
    void deleteAll();

    /// Asks the update server for the newest version; a newer one shows the update advisor. An
    /// answer that is no version document is passed over in silence, and so is one of 64 KiB or
    /// more and one that is not whole after 30 s.
    void checkVersion();
    /// Opens the product's web page, closes the window and ends the program.
    void launchUpdater();
    /// Gives the update advisor the opacity effect that its fades need, and hides it.
    void initializeUpdateAdvisorEffect();
    /// Fades the update advisor in within 150 ms and gives it the keyboard; does nothing without
    /// the opacity effect.
    void showUpdateMessage();
    /// Fades the update advisor out within 150 ms, then hides it and gives the keyboard back; does
    /// nothing without the opacity effect.
    void closeUpdateMessage();

protected:
    /// Keeps the keyboard in the update advisor while it is shown.
    bool focusNextPrevChild(bool next) override;

private:
    // mainwindow.cpp
    void showPage(const QWidget *page);

    // recentboards.cpp
    void openBoardsByEnter();
    BoardWindow *board();
    void openBoard(const QString &path);

    // arrivingboards.cpp
    QWidget &shownWindow();
    void openArrivedBoard();

    // updatecheck.cpp
    void readVersion(QNetworkReply *reply);
    void hideUpdateAdvisor();
    QPropertyAnimation *fadeUpdateAdvisor(qreal from, qreal to);

    std::unique_ptr<Ui::MainWindow> ui;
    QLocale locale{QLocale::Spanish, QLocale::Mexico};
    bool updating = false; // set by launchUpdater(), read by nothing
    BoardWindow *boardWindow = nullptr; // null until first needed; a child of this window
    QNetworkAccessManager network;
    QString dataPath; // the data folder, absolute
    std::unique_ptr<ProjectDelegate> projectDelegate;
    bool clickServed = false; // whether the current click on the list has opened its board
    QString arrivedBoard; // the path of the one that waits; empty when none does
    QuietMoment quietMoment{[this] { openArrivedBoard(); }};
    QPointer<QWidget> focusBeforeAdvisor; // what had the keyboard when the advisor took it
};
