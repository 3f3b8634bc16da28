// A line or a box of text.
#pragma once

#include "Models/FontResolution.h"
#include "Models/Layer.h"
#include "Models/LayerEnums.h"
#include "Models/RGBAColor.h"

namespace tessara {

class TextLayer : public Layer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(QString, text, setText)
    TESSARA_OBSERVABLE(double, fontSize, setFontSize, 98) // canvas units
    /// None means the system face.
    TESSARA_OBSERVABLE(std::optional<QString>, fontFamily, setFontFamily)
    /// 100 to 900; none means the weight that the place of use asks for.
    TESSARA_OBSERVABLE(std::optional<double>, fontWeight, setFontWeight)
    TESSARA_OBSERVABLE(tessara::RGBAColor, color, setColor)
    TESSARA_OBSERVABLE(tessara::RGBAColor, outlineColor, setOutlineColor, 0, 0, 0, 1)
    /// Percent of the font size, 0 to 16 when drawn.
    TESSARA_OBSERVABLE(double, outlineWidth, setOutlineWidth, 0)
    /// None means that the text has no fixed box and never wraps.
    TESSARA_OBSERVABLE(std::optional<QSizeF>, textBoxSize, setTextBoxSize)
    TESSARA_OBSERVABLE(tessara::TextLayerHorizontalAlignment, horizontalAlignment,
                       setHorizontalAlignment, TextLayerHorizontalAlignment::leading)
    /// Makes the layer a template field.
    TESSARA_OBSERVABLE(std::optional<QString>, fieldKey, setFieldKey)
    /// `timer` makes the layer a realtime clock.
    TESSARA_OBSERVABLE(std::optional<tessara::TemplateFieldKind>, fieldKind, setFieldKind)
    Q_PROPERTY(std::optional<QUuid> presetGroupID READ presetGroupID WRITE setPresetGroupID FINAL)

public:
    static constexpr QPointF defaultPosition{555, 123};

    TextLayer(const QUuid &id, const QString &name, const QString &text,
              QPointF position = defaultPosition);

    std::optional<QUuid> presetGroupID() const { return m_presetGroupID; }
    void setPresetGroupID(const std::optional<QUuid> &group) { m_presetGroupID = group; }

    QFont::Weight resolvedFontWeight(QFont::Weight defaultWeight) const;
    /// The family's face if it is installed, else the system's.
    SizedFont resolvedFont(double size, QFont::Weight defaultWeight) const;

private:
    std::optional<QUuid> m_presetGroupID;
};

} // namespace tessara
