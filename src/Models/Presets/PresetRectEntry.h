// One shape of a preset.
#pragma once

#include <QPointF>
#include <QSizeF>

#include "Models/LayerEnums.h"
#include "Models/RGBAColor.h"

namespace tessara {

struct PresetRectEntry
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QPointF position MEMBER position FINAL)
    Q_PROPERTY(QSizeF size MEMBER size FINAL)
    Q_PROPERTY(tessara::RGBAColor color MEMBER color FINAL)
    Q_PROPERTY(double cornerRadius MEMBER cornerRadius FINAL)
    Q_PROPERTY(double opacity MEMBER opacity FINAL)
    Q_PROPERTY(tessara::ShapeKind kind MEMBER kind FINAL)

public:
    QString name{};
    QPointF position{}; // canvas units
    QSizeF size{0, 0};  // canvas units
    RGBAColor color{};
    double cornerRadius = 0; // canvas units
    double opacity = 1;      // 0 to 1
    ShapeKind kind = ShapeKind::rectangle;

    /// To the last bit, geometry included.
    bool operator==(const PresetRectEntry &other) const;
};

} // namespace tessara
