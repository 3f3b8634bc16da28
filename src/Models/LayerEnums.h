// The vocabulary of preset, macro and settings files: every enumeration that reaches one.
#pragma once

#include <QObject>
#include <QString>

namespace tessara {

Q_NAMESPACE // once a namespace, hence one header

enum class TemplateFieldKind { text, score, timer, image };
Q_ENUM_NS(TemplateFieldKind)

enum class TextLayerHorizontalAlignment { leading, center, trailing };
Q_ENUM_NS(TextLayerHorizontalAlignment)

enum class ImageLayerContentMode { fillCrop, fitInside };
Q_ENUM_NS(ImageLayerContentMode)

enum class ImageLayerMaskShape {
    rectangle,
    roundedRectangle,
    circle,
    hexagon,
    shield,
    customPolygon
};
Q_ENUM_NS(ImageLayerMaskShape)

enum class ShapeKind { rectangle, ellipse, triangle, diamond, star, line, custom };
Q_ENUM_NS(ShapeKind)

enum class ScoreTemplate { wideBroadcast, compactStrip, titleBar };
Q_ENUM_NS(ScoreTemplate)

enum class ScoreSportPreset { football, basketball, volleyball, badminton, futsal, baseball };
Q_ENUM_NS(ScoreSportPreset)

enum class LayerRunTransitionStyle { cut, dissolve, presetReveal };
Q_ENUM_NS(LayerRunTransitionStyle)

/// As the operator reads it; the start of a new layer's name.
QString displayName(ShapeKind kind);
/// The symbol that stands for it in lists and menus.
QString iconName(ShapeKind kind);

} // namespace tessara
