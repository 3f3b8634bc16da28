// The document's operations on presets, and the single layers that templates are made of.
#include "Models/CanvasDocument.h"

#include "Models/Presets/PresetLayers.h"

namespace tessara {

CanvasDocument::AddPresetResult CanvasDocument::addTextPreset(const TextPreset &preset)
{
    const QList<PresetImageEntry> images = inStackingOrder(preset.images);
    const auto pictures = m_presetPictures.pictures(images);
    if (!pictures)
        return tl::unexpected(pictures.error());
    const QUuid groupID = QUuid::createUuid();
    m_presetGroupNames.insert(groupID, preset.name);
    emit presetGroupsChanged();
    for (const PresetRectEntry &entry : preset.rects)
        added(makePresetLayer(entry, nextNumber<ShapeLayer>(), groupID));
    for (qsizetype index = 0; index < images.size(); ++index)
        addPresetImageLayer(images[index], pictures->at(index), groupID);
    for (const TextPresetEntry &entry : preset.entries)
        added(makePresetLayer(entry, nextNumber<TextLayer>(), groupID));
    applyDefaultRunSettings(groupID, preset);
    selectPresetGroup(groupID);
    return std::monostate();
}

// A picture that can't be decoded is left out, and the rest goes on.
void CanvasDocument::addPresetImageLayer(const PresetImageEntry &entry, const Picture &picture,
                                         const QUuid &groupID)
{
    if (!picture.isNull())
        added(makePresetLayer(entry, picture, groupID));
}

void CanvasDocument::applyDefaultRunSettings(const QUuid &groupID, const TextPreset &preset)
{
    LayerRunSettings settings = defaultRunSettings(preset);
    for (const QUuid &id : layerIDsInPresetGroup(groupID)) {
        settings.autoOutDuration = runSettings(id).autoOutDuration;
        m_takes.setRunSettings(id, settings);
    }
}

void CanvasDocument::prefetchPictures(const TextPreset &preset)
{
    m_presetPictures.prefetch(preset.images);
}

TextLayer *CanvasDocument::addScoreTextLayer()
{
    constexpr double fontSize = 120; // canvas units
    auto *score =
        new TextLayer(QUuid::createUuid(), QStringLiteral("Score %1").arg(nextNumber<TextLayer>()),
                      QStringLiteral("0"), {m_size.width() * 0.5, m_size.height() * 0.5});
    score->setFontSize(fontSize);
    score->setHorizontalAlignment(TextLayerHorizontalAlignment::center);
    score->setFieldKind(TemplateFieldKind::score);
    return added(score);
}

} // namespace tessara
