// The board file as a JSON document; docs/board-file-format.md describes it.
#pragma once

#include <QJsonObject>

#include <memory>
#include <vector>

class QGraphicsItem;
class QGraphicsScene;

/// Makes the document that holds the items of \a scene, topmost first. Strokes without a path are
/// left out, and so are items that are neither notes nor of the toolkit's type of a path, a line or
/// a picture.
QJsonObject buildBoardDocument(const QGraphicsScene &scene);

/// Makes the items that \a document describes, in its order; they are for the caller to place on a
/// scene. Elements of unknown kind make no item; missing and mistyped values read as 0 or empty. A
/// document without a list of elements makes none.
std::vector<std::unique_ptr<QGraphicsItem>> itemsOf(const QJsonObject &document);

/// Makes the item that one \a element of a document describes; null when it is of unknown kind.
std::unique_ptr<QGraphicsItem> itemFromElement(const QJsonObject &element);
