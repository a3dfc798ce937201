// What a teacher does with the program in a lesson, over and over.
#pragma once

#include "tests/support/home/boardshome.h"

#include <QPointF>
#include <QRandomGenerator>

class BoardPointer;

/// Ten minutes at the program, from the home window back to it.
class Lesson
{
public:
    static constexpr int minutes = 10;

    /// The lesson \a number of a day at \a theHome. Those with the same rest by \a kinds are alike.
    Lesson(BoardsHome &theHome, int number);

    void give();

    static constexpr int kinds = 4;
    static constexpr int strokes = 60; // that are drawn in a lesson

private:
    void prepareNewBoard();
    void explain();
    void present();
    void saveAndClose();
    void lookAtAnOldBoard();
    void readHelpAndSettings();
    /// Closes the board with a change on it; \a answer is the button that is clicked then.
    void changeAndClose(const QString &answer);

    void drawStrokes(int count);
    void writeNotes(int count);
    void drawArrows(int count);
    void insertPicture();
    void choose(const char *tool) const;
    QPointF somewhere();
    /// Where the pen does not take hold of a selected text: Windows would wait for a real hand to drop it.
    QPointF besideTexts();
    /// A person looks and thinks for so long.
    void pass(int milliseconds);

    BoardsHome &home;
    const QString boardName;
    QRandomGenerator random;
    qint64 passed = 0; // ms of the lesson
};
