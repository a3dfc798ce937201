// The board file as a JSON document; docs/board-file-format.md describes it.
#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <memory>
#include <vector>

class QGraphicsItem;
class QGraphicsScene;

/// Makes the document that holds the items of \a scene, topmost first, as the text of its file.
/// Strokes without a path are left out, and so are items that are neither notes nor of the
/// toolkit's type of a path, a line or a picture. Throws \c std::bad_alloc when there is not the
/// memory for it.
QByteArray buildBoardDocument(const QGraphicsScene &scene);

/// About how many bytes the document of \a scene will have, at a small part of the cost of making
/// it. Of pictures it counts the pixels.
qint64 expectedSize(const QGraphicsScene &scene);

/// Makes the items that \a document describes, in its order; they are for the caller to place on a
/// scene. Elements of unknown kind make no item; missing and mistyped values read as 0 or empty. A
/// document without a list of elements makes none. A document that is moved in goes as its items
/// come, so that memory does not hold both. Throws \c std::bad_alloc when there is not the memory
/// for it.
std::vector<std::unique_ptr<QGraphicsItem>> itemsOf(QJsonObject document);

/// Makes the item that one \a element of a document describes; null when it is of unknown kind.
std::unique_ptr<QGraphicsItem> itemFromElement(const QJsonObject &element);
