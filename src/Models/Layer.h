// What all kinds of layers have in common.
#pragma once

#include "Base/Observable.h"

#include <QUuid>

namespace tessara {

constexpr double standardAspectRatio = 1.7777777777777777; // 16 : 9

/// One object on the canvas. Document, views, undo and the take engine hold the same one.
class Layer : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QUuid id READ id CONSTANT FINAL)
    TESSARA_OBSERVABLE(QString, name, setName)
    /// Top left corner in canvas units, y downward. A text without a box is anchored here.
    TESSARA_OBSERVABLE(QPointF, position, setPosition)
    /// Set once a layer has been taken out; see `LayerTakes` for what is on air.
    TESSARA_OBSERVABLE(bool, isHidden, setIsHidden, false)
    TESSARA_OBSERVABLE(bool, isLocked, setIsLocked, false)

public:
    Layer(const QUuid &id, const QString &name, QPointF position);

    QUuid id() const { return m_id; }

private:
    QUuid m_id;
};

/// A layer whose box has a size of its own.
class SizedLayer : public Layer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(QSizeF, size, setSize)          // canvas units
    TESSARA_OBSERVABLE(double, opacity, setOpacity, 1) // 0 to 1

public:
    SizedLayer(const QUuid &id, const QString &name, QPointF position, QSizeF size);

    QRectF frame() const { return {position(), size()}; }
};

/// A sized layer that can be held to an aspect ratio.
class AspectLockedLayer : public SizedLayer
{
    Q_OBJECT
    Q_PROPERTY(bool isAspectRatioLocked READ isAspectRatioLocked WRITE setIsAspectRatioLocked NOTIFY
                   isAspectRatioLockedChanged FINAL)
    /// Width through height, as it was when the lock was last closed.
    Q_PROPERTY(double lockedAspectRatio READ lockedAspectRatio FINAL)

public:
    using SizedLayer::SizedLayer;

    bool isAspectRatioLocked() const { return m_isAspectRatioLocked; }
    double lockedAspectRatio() const { return m_lockedAspectRatio; }

    /// Closing an open lock takes the ratio of the present size.
    Q_INVOKABLE void setAspectRatioLocked(bool locked);

    /// Stored as they are, for copies and files.
    void setIsAspectRatioLocked(bool locked);
    void setLockedAspectRatio(double ratio) { m_lockedAspectRatio = ratio; }

    Q_SIGNAL void isAspectRatioLockedChanged();

private:
    bool m_isAspectRatioLocked = true;
    double m_lockedAspectRatio = standardAspectRatio;
};

} // namespace tessara
