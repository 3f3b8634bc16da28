// One text line of a preset.
#pragma once

#include <QPointF>
#include <QSizeF>

#include "Models/LayerEnums.h"
#include "Models/RGBAColor.h"

#include <optional>

namespace tessara {

struct TextPresetEntry
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(double fontSize MEMBER fontSize FINAL)
    Q_PROPERTY(std::optional<QString> fontFamily MEMBER fontFamily FINAL)
    Q_PROPERTY(std::optional<double> fontWeight MEMBER fontWeight FINAL)
    Q_PROPERTY(tessara::RGBAColor color MEMBER color FINAL)
    Q_PROPERTY(tessara::RGBAColor outlineColor MEMBER outlineColor FINAL)
    Q_PROPERTY(double outlineWidth MEMBER outlineWidth FINAL)
    Q_PROPERTY(QPointF position MEMBER position FINAL)
    Q_PROPERTY(std::optional<QSizeF> textBoxSize MEMBER textBoxSize FINAL)
    Q_PROPERTY(
        tessara::TextLayerHorizontalAlignment horizontalAlignment MEMBER horizontalAlignment FINAL)
    Q_PROPERTY(std::optional<QString> fieldKey MEMBER fieldKey FINAL)
    Q_PROPERTY(std::optional<tessara::TemplateFieldKind> fieldKind MEMBER fieldKind FINAL)

public:
    QString name{};
    QString text{};
    double fontSize = 0; // canvas units
    std::optional<QString> fontFamily{};
    std::optional<double> fontWeight{}; // 100 to 900
    RGBAColor color{};
    RGBAColor outlineColor{0, 0, 0, 1};
    double outlineWidth = 0;             // percent of the font size
    QPointF position{};                  // canvas units
    std::optional<QSizeF> textBoxSize{}; // canvas units; none means the text sizes itself
    TextLayerHorizontalAlignment horizontalAlignment = TextLayerHorizontalAlignment::leading;
    std::optional<QString> fieldKey{};
    std::optional<TemplateFieldKind> fieldKind{};

    /// To the last bit, geometry included.
    bool operator==(const TextPresetEntry &other) const;
};

} // namespace tessara
