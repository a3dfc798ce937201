// Keeps what an item paints, in numbers.
#pragma once

#include <QBrush>
#include <QGraphicsItem>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QStyleOptionGraphicsItem>

/// One shape that was painted.
struct PaintedShape
{
    enum Kind { Polygon, Rectangle, Line, Path, Pixmap };

    Kind kind = Polygon;
    QPolygonF points;
    QRectF rect;
    QPaintEngine::PolygonDrawMode fillRule = QPaintEngine::OddEvenMode;
    QPen pen;
    QBrush brush;
};

/// A paint device that keeps what is painted on it in the painter's own numbers, where an image
/// would only have pixels.
class PaintRecorder : public QPaintDevice
{
public:
    QList<PaintedShape> shapes;

    QPaintEngine *paintEngine() const override { return &engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 4000;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        explicit Engine(PaintRecorder *owner)
            : QPaintEngine(QPaintEngine::AllFeatures)
            , recorder(owner)
        { }

        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        Type type() const override { return QPaintEngine::User; }
        void updateState(const QPaintEngineState &) override { }

        void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
        {
            QPolygonF polygon;
            for (int i = 0; i < count; ++i)
                polygon << points[i];
            record(PaintedShape::Polygon, polygon, polygon.boundingRect(), mode);
        }
        void drawLines(const QLineF *lines, int count) override
        {
            for (int i = 0; i < count; ++i) {
                const QPolygonF ends{{lines[i].p1(), lines[i].p2()}};
                record(PaintedShape::Line, ends, ends.boundingRect());
            }
        }
        void drawRects(const QRectF *rects, int count) override
        {
            for (int i = 0; i < count; ++i)
                record(PaintedShape::Rectangle, QPolygonF(rects[i]), rects[i]);
        }
        void drawPath(const QPainterPath &path) override
        {
            record(PaintedShape::Path, path.toFillPolygon(), path.boundingRect());
        }
        void drawPixmap(const QRectF &target, const QPixmap &, const QRectF &) override
        {
            record(PaintedShape::Pixmap, QPolygonF(target), target);
        }

    private:
        void record(PaintedShape::Kind kind, const QPolygonF &points, const QRectF &rect,
                    PolygonDrawMode mode = OddEvenMode)
        {
            recorder->shapes.append(
                {kind, points, rect, mode, painter()->pen(), painter()->brush()});
        }

        PaintRecorder *recorder;
    };

    mutable Engine engine{this};
};

/// What \a item paints of itself, selected or not as it is.
inline QList<PaintedShape> paintedBy(QGraphicsItem &item)
{
    PaintRecorder recorder;
    QPainter painter(&recorder);
    QStyleOptionGraphicsItem option;
    option.state.setFlag(QStyle::State_Selected, item.isSelected());
    item.paint(&painter, &option);
    painter.end();
    return recorder.shapes;
}
