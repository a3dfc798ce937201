// The view of the board, which paints from a kept picture.
#pragma once

#include "painting/canvasframe.h"

#include <QGraphicsView>
#include <QTimer>

/// A graphics view that shows its scene from a picture which it keeps up to date, see CanvasFrame.
/// Everything else is the toolkit's, its class name for style sheets and look-ups, too; but there is
/// neither a foreground nor a rubber band.
class CanvasView : public QGraphicsView
{
public:
    explicit CanvasView(QWidget *parent = nullptr);

    const CanvasFrame &frame() const { return canvas; }

    /// Shows what of the scene differs now that it has \a changed there. To be called with each
    /// changed() of the scene: the view itself takes no notice of them.
    void showChanges(const QList<QRectF> &changed);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void showPicture(QPaintEvent *event);
    void prepareLater();
    void prepare();

    CanvasFrame canvas{*this};
    QTimer preparing{this};
};
