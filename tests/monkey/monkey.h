// Does with the program whatever a person could do, at random.
#pragma once

#include "tests/monkey/dice.h"
#include "tests/monkey/hand.h"
#include "tests/monkey/litter.h"

#include <QObject>
#include <QPointer>

class BoardWindow;
class MainWindow;
class QAbstractButton;
class QDialog;
class QFileDialog;
class QMessageBox;

/// Plays with one start of the program after the other, step by step, until the last step. After each, what
/// the program promises is looked at.
///
/// A step comes from a timer, in whatever event loop the program waits: so a dialog that opens in a step is
/// answered by those that follow.
class Monkey : public QObject
{
public:
    struct Plan
    {
        quint32 seed = 1;
        quint32 first = 0;
        quint32 count = 500; // the steps before the first are left out
        bool realTime = false;
    };

    Monkey(const Plan &whatToDo, Litter &files, QString homePath, QString dataPath);

    /// Plays with the program whose home window is \a window, from within its event loop.
    void begin(MainWindow &window);
    /// The program has ended.
    void finish();

    bool isDone() const { return step >= plan.first + plan.count; }
    quint32 steps() const { return step - plan.first; }

private:
    // monkey.cpp
    void comeLater();
    void come();
    void takeStep();
    void look();
    bool isEnding();
    bool comesBack(QWidget &window);
    void act(Dice &dice);
    void say(const QString &what);

    // deeds.cpp
    void useBoard(Dice &dice);
    void useHome(Dice &dice);
    void useAnyWindow(QWidget &window, Dice &dice);
    void usePopup(QWidget &popup, Dice &dice);
    void useDialog(QWidget &dialog, Dice &dice);
    void waitForWork(Dice &dice);
    void waitFor(QWidget &dialog, Dice &dice);
    void answer(QFileDialog &dialog, Dice &dice);
    void answer(QMessageBox &box, Dice &dice);
    void startAgain(Dice &dice);
    void moveAbout(QWidget &window, Dice &dice);
    void draw(Dice &dice);
    void drag(QPoint place, const QRect &reach, Dice &dice);
    void edit(Dice &dice);
    void chooseTool(Dice &dice);
    void callSlot(QObject &object, const char *name);
    void goThroughHistory();
    void saveBoard(Dice &dice);
    QString lossOf(const QString &name) const;
    void present(Dice &dice);
    void clickAny(QWidget &window, Dice &dice);
    void clickButton(QWidget &window, const QString &name);
    void changeState(QWidget &window, Dice &dice);
    static void closeByFrame(QWidget &window);
    void typeAnything(QWidget &window, Dice &dice);
    void dragAnything(QWidget &window, Dice &dice);
    void letTimePass(Dice &dice);
    void pass(int milliseconds) const;
    BoardWindow *board() const;

    const Plan plan;
    Litter &litter;
    const QString homeFolder;
    const QString dataFolder;
    Hand hand;
    QPointer<MainWindow> home;
    quint32 step;
    int actingLevel = 0; // of event loops, in which a step is being done; 0 when none is
    bool isOver = false; // this start of the program
    int patience = 0; // steps until the dialog that is open is cancelled
};
