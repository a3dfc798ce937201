// What every board item has in common, checked once for each of them.
#pragma once

#include <QGraphicsItem>
#include <QMetaMethod>
#include <QMetaObject>
#include <QObject>
#include <QSignalSpy>
#include <QTest>
#include <QTransform>

/// The item's own meta-object has the given name, derives from \a base and has one signal,
/// itemModified(), at index 0 of its own methods.
inline void verifyOneSignal(const QMetaObject &meta, const char *name, const QMetaObject &base)
{
    QCOMPARE(meta.className(), name);
    QCOMPARE(meta.superClass(), &base);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodSignature(), QByteArray("itemModified()"));
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
}

/// An \a item made of a QObject and the graphics class \c Base can be found by all three names.
template <typename Base, typename Item>
void verifyCasts(Item &item, const char *name, const char *baseName)
{
    QCOMPARE(item.qt_metacast(name), static_cast<void *>(&item));
    QCOMPARE(item.qt_metacast(baseName), static_cast<void *>(static_cast<Base *>(&item)));
    QCOMPARE(item.qt_metacast("QObject"), static_cast<void *>(&item));
    QCOMPARE(item.qt_metacast("QGraphicsEllipseItem"), nullptr);
    QCOMPARE(static_cast<void *>(static_cast<QObject *>(&item)), static_cast<void *>(&item));
}

/// Changes the position, transform, rotation and scale of \a item, each once.
inline void changeGeometry(QGraphicsItem &item)
{
    item.setPos(30, 40);
    item.setTransform(QTransform::fromTranslate(1, 2));
    item.setRotation(15);
    item.setScale(1.5);
}

/// Changes what is neither the place nor the shape of \a item.
inline void changeAllButGeometry(QGraphicsItem &item)
{
    const auto flags = item.flags();
    item.setFlag(QGraphicsItem::ItemIsSelectable);
    item.setSelected(true);
    item.setVisible(false);
    item.setVisible(true);
    item.setZValue(7);
    item.setOpacity(0.5);
    item.setEnabled(false);
    item.setFlags(flags);
}

/// \a item, which asks for no geometry notifications, emits its signal once for each that it is sent.
template <typename Item> void verifyGeometryIsReportedWithItsFlag(Item &item)
{
    item.setFlag(QGraphicsItem::ItemSendsGeometryChanges);
    const QSignalSpy modified(&item, &Item::itemModified);
    changeGeometry(item);
    QCOMPARE(modified.count(), 4);
    QCOMPARE(item.pos(), QPointF(30, 40));
}
