#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

class QGraphicsItem;
class QGraphicsScene;

// The board file as a JSON document; docs/board-file-format.md describes it.

/// Makes the document that holds the items of \a scene, topmost first. Strokes without a path
/// and items that are no board items are left out.
QJsonObject buildBoardDocument(const QGraphicsScene &scene);

/// The elements of \a document, one for each item; none when it has no such list.
QJsonArray elementsOf(const QJsonObject &document);

/// Makes the item that \a element, one of elementsOf() a document, describes. Missing and
/// mistyped values read as 0 or empty; an element of unknown kind gives null.
std::unique_ptr<QGraphicsItem> itemFromElement(const QJsonObject &element);
