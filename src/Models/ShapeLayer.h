// A filled outline on the canvas.
#pragma once

#include <QList>
#include <QPainterPath>

#include "Models/Layer.h"
#include "Models/LayerEnums.h"
#include "Models/RGBAColor.h"

namespace tessara {

/// The outline of a shape, in a space with y downward.
struct ShapeKindPath
{
    ShapeKind kind = ShapeKind::rectangle;
    double cornerRadius = 0;       // canvas units
    QList<QPointF> customPoints{}; // fractions of the box, y downward

    /// Filled by the winding rule. A star's tip and a triangle's apex stand at the top of `rect`.
    QPainterPath path(QRectF rect) const;

    bool operator==(const ShapeKindPath &) const = default;
};

class ShapeLayer : public AspectLockedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(tessara::ShapeKind, kind, setKind, ShapeKind::rectangle)
    TESSARA_OBSERVABLE(tessara::RGBAColor, color, setColor, 0.15, 0.15, 0.18, 0.85)
    TESSARA_OBSERVABLE(double, cornerRadius, setCornerRadius, 0) // canvas units
    TESSARA_OBSERVABLE(QList<QPointF>, customPoints, setCustomPoints)
    Q_PROPERTY(std::optional<QUuid> presetGroupID READ presetGroupID WRITE setPresetGroupID FINAL)

public:
    ShapeLayer(const QUuid &id, const QString &name, ShapeKind kind, QPointF position, QSizeF size);

    std::optional<QUuid> presetGroupID() const { return m_presetGroupID; }
    void setPresetGroupID(const std::optional<QUuid> &group) { m_presetGroupID = group; }

    ShapeKindPath outline() const { return {m_kind, m_cornerRadius, m_customPoints}; }

private:
    std::optional<QUuid> m_presetGroupID;
};

} // namespace tessara
