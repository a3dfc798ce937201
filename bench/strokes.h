// Strokes that fill a board, the same ones at every call.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QPainterPath>
#include <QRectF>

class QGraphicsScene;

/// Strokes as a hand draws them, in scene units: random walks, each brought to a random width and
/// height between \c smallest and \c largest, and to a random place inside \c area.
struct Strokes
{
    int count = 0;
    int points = 0; // of each
    QSizeF smallest;
    QSizeF largest;
    QRectF area{0, 0, 1920, 1080};

    QList<QPainterPath> paths() const;
};

/// What a lesson leaves on the board: words and drawings everywhere.
constexpr Strokes lesson(int count = 600, int points = 120)
{
    return {.count = count, .points = points, .smallest = {40, 20}, .largest = {280, 120}};
}

/// Letters and ticks.
constexpr Strokes shortStrokes(int count)
{
    return {.count = count, .points = 20, .smallest = {8, 8}, .largest = {40, 40}};
}

/// Adds the program's items to \a scene.
void addStrokes(QGraphicsScene &scene, const QList<QPainterPath> &paths);

/// Adds the toolkit's own items, which look the same, to \a scene.
void addBareStrokes(QGraphicsScene &scene, const QList<QPainterPath> &paths);

/// The document of a board file that holds the strokes.
QJsonObject documentOf(const QList<QPainterPath> &paths);

/// Adds the toolkit's own items for the strokes of \a document to \a scene.
void addBareStrokes(QGraphicsScene &scene, const QJsonObject &document);
