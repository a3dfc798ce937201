// What the view paints beyond the changes that the scene tells of.
#include "board/boardwindow.h"

#include "items/arrowlineitem.h"

#include "ui_boardwindow.h"

#include <algorithm>
#include <utility>

void BoardWindow::repaintArrowHeads(const QList<QRectF> &changed)
{
    // The heads that are to vanish were there at the last change.
    const qreal reachBefore = std::exchange(arrowReach, 0);
    const auto items = scene->items();
    for (const auto *item : items) {
        if (const auto *const arrow = dynamic_cast<const ArrowLineItem *>(item))
            arrowReach = std::max(arrowReach, arrow->headReach());
    }
    const qreal reach = std::max(arrowReach, reachBefore);
    if (reach == 0)
        return;
    QList<QRectF> grown;
    grown.reserve(changed.size());
    for (const auto &region : changed)
        grown.append(region.adjusted(-reach, -reach, reach, reach));
    ui->PizarraMain->updateScene(grown);
}
