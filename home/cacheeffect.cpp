// The effect on the cache button: two covers that say "Datos limpiados" pass over it.
#include "home/mainwindow.h"

#include "ui_mainwindow.h"

#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QSequentialAnimationGroup>

#include <utility>

namespace {

constexpr int coverWidth = 175; // pixels, the width of the cache button
constexpr int coverParkingY = 30; // pixels, just below the container of the button
constexpr int coverGrowTime = 250; // ms
constexpr int coverStayTime = 3000; // ms
constexpr int coverShrinkTime = 200; // ms

/// The rectangles that a cover of the cache button passes through.
struct CoverPath
{
    explicit CoverPath(const QWidget *cover)
        : folded(cover->x(), cover->y(), 0, cover->height())
        , spread(cover->x(), cover->y(), coverWidth, cover->height())
        , foldedRight(cover->x() + coverWidth, cover->y(), 0, cover->height())
        , parked(0, coverParkingY, 0, cover->height())
    { }

    QRect folded;
    QRect spread;
    QRect foldedRight;
    QRect parked;
};

QPropertyAnimation *coverAnimation(QWidget *cover, const QRect &from, const QRect &to, int duration)
{
    auto *const animation = new QPropertyAnimation(cover, "geometry");
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(duration);
    animation->setEasingCurve(QEasingCurve::OutQuad);
    return animation;
}

} // namespace

void MainWindow::animateCacheClear()
{
    QWidget *const strip = ui->CleanedCacheW;
    QWidget *const label = ui->CleanedCacheS;
    const CoverPath stripPath(strip);
    const CoverPath labelPath(label);

    auto *const effect = new QSequentialAnimationGroup(this);

    auto *const in = new QParallelAnimationGroup;
    in->addAnimation(coverAnimation(strip, stripPath.folded, stripPath.spread, coverGrowTime));
    in->addAnimation(coverAnimation(label, labelPath.folded, labelPath.spread, coverGrowTime));
    effect->addAnimation(in);

    effect->addPause(coverStayTime);

    // Quirk: "Eliminar datos caché" deletes nothing and works once a run, because the program keeps
    // no cache; the button only shows this effect, and nothing enables it again.
    ui->ClearCacheBtn->setEnabled(false);

    auto *const out = new QSequentialAnimationGroup(this);
    for (const auto &[cover, path] : {std::pair(strip, stripPath), std::pair(label, labelPath)}) {
        out->addAnimation(coverAnimation(cover, path.spread, path.foldedRight, coverShrinkTime));
        out->addAnimation(coverAnimation(cover, path.foldedRight, path.parked, coverShrinkTime));
    }
    effect->addAnimation(out);

    effect->start();
}
