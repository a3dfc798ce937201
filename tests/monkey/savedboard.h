// Whether what is saved is what was there.
#pragma once

#include <QByteArray>
#include <QString>

class QGraphicsScene;

/// How saving the board \a scene and opening what was saved loses anything that a file keeps; empty when
/// it does not.
QString lossOf(const QGraphicsScene &scene);

/// The same, when \a saved is what was saved of it.
QString lossOf(const QGraphicsScene &scene, const QByteArray &saved);
