// Makes boards large enough to measure with.
#include "bench/largeboard.h"

#include "items/freedrawitem.h"

#include <QGraphicsScene>
#include <QRandomGenerator>

void addStrokes(QGraphicsScene &scene, int count, int points)
{
    constexpr quint32 seed = 2026;
    constexpr int longestStep = 12; // scene units
    QRandomGenerator random(seed);
    const auto step = [&] { return random.bounded(2 * longestStep + 1) - longestStep; };
    for (int i = 0; i < count; ++i) {
        QPointF point(random.bounded(1920), random.bounded(1080));
        QPainterPath path(point);
        for (int j = 1; j < points; ++j) {
            point += QPointF(step(), step());
            path.lineTo(point);
        }
        auto *const stroke = new FreeDrawItem;
        stroke->setPath(path);
        scene.addItem(stroke);
    }
}
