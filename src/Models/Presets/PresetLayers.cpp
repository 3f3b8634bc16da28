#include "Models/Presets/PresetLayers.h"

#include "Models/LayerGeometry.h"
#include "Models/LayerTakes.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

QString nameOr(const QString &name, const char *kind, qsizetype number)
{
    return name.isEmpty() ? QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(number) : name;
}

double pictureSide(double side)
{
    constexpr double least = 24; // canvas units
    return std::isfinite(side) ? std::max(side, least) : least;
}

double finiteOrZero(double number)
{
    return std::isfinite(number) ? number : 0;
}

double durationOf(LayerRunTransitionStyle style)
{
    switch (style) {
    case LayerRunTransitionStyle::cut:
        return 0;
    case LayerRunTransitionStyle::dissolve:
        return 0.35;
    case LayerRunTransitionStyle::presetReveal:
        return 0.48;
    }
    Q_UNREACHABLE();
}

bool isReplaceable(const PresetImageEntry &entry)
{
    return !entry.placeholderKey.value_or(QString()).trimmed().isEmpty();
}

} // namespace

ShapeLayer *makePresetLayer(const PresetRectEntry &entry, qsizetype number, const QUuid &groupID)
{
    auto *shape = new ShapeLayer(QUuid::createUuid(), nameOr(entry.name, "Shape", number),
                                 entry.kind, entry.position, entry.size);
    shape->setColor(entry.color);
    shape->setCornerRadius(entry.cornerRadius);
    shape->setOpacity(entry.opacity);
    shape->setIsAspectRatioLocked(true);
    shape->setLockedAspectRatio(aspectRatio(entry.size).value_or(standardAspectRatio));
    shape->setPresetGroupID(groupID);
    return shape;
}

TextLayer *makePresetLayer(const TextPresetEntry &entry, qsizetype number, const QUuid &groupID)
{
    auto *text = new TextLayer(QUuid::createUuid(), nameOr(entry.name, "Text", number), entry.text,
                               entry.position);
    text->setFontSize(entry.fontSize);
    text->setFontFamily(entry.fontFamily);
    text->setFontWeight(entry.fontWeight);
    text->setColor(entry.color);
    text->setOutlineColor(entry.outlineColor);
    text->setOutlineWidth(entry.outlineWidth);
    text->setTextBoxSize(entry.textBoxSize);
    text->setHorizontalAlignment(entry.horizontalAlignment);
    text->setFieldKey(entry.fieldKey);
    text->setFieldKind(entry.fieldKind);
    text->setPresetGroupID(groupID);
    return text;
}

ImageLayer *makePresetLayer(const PresetImageEntry &entry, const Picture &picture,
                            const QUuid &groupID)
{
    const QSizeF size(pictureSide(entry.size.width()), pictureSide(entry.size.height()));
    const QPointF position(finiteOrZero(entry.position.x()), finiteOrZero(entry.position.y()));
    const ImageLayerContentMode standardMode =
        isReplaceable(entry) ? ImageLayerContentMode::fitInside : ImageLayerContentMode::fillCrop;
    const ImageLayerOptions options{
        .opacity = std::max(std::min(entry.opacity, 1.0), 0.0),
        .isHidden = false,
        .isLocked = false,
        .isAspectRatioLocked = entry.isAspectRatioLocked,
        .cropRectNormalized = entry.cropRectNormalized.has_value() ? std::optional(
                                  sanitizedNormalizedRect(*entry.cropRectNormalized))
                                                                   : std::nullopt,
        .placeholderKey = entry.placeholderKey,
        .contentMode = entry.contentMode.value_or(standardMode),
        .maskShape = entry.maskShape.value_or(ImageLayerMaskShape::rectangle),
        .maskPadding = std::max(finiteOrZero(entry.maskPadding.value_or(0)), 0.0),
        .presetGroupID = groupID,
    };
    // No such file exists: its name stands for the picture where fields are listed.
    const QUrl label = QUrl::fromLocalFile(QStringLiteral("/template/%1.png").arg(entry.name));
    auto *image =
        new ImageLayer(QUuid::createUuid(), entry.name, picture, label, position, size, options);
    image->setLockedAspectRatio(
        aspectRatio(picture.size()).value_or(aspectRatio(size).value_or(standardAspectRatio)));
    return image;
}

QList<PresetImageEntry> inStackingOrder(const QList<PresetImageEntry> &images)
{
    QList<PresetImageEntry> ordered = images;
    std::stable_partition(ordered.begin(), ordered.end(), [](const PresetImageEntry &entry) {
        return !entry.placeholderKey.has_value();
    });
    return ordered;
}

LayerRunSettings defaultRunSettings(const TextPreset &preset)
{
    const LayerRunTransitionStyle style =
        preset.preferredRunTransitionStyle.value_or(LayerRunTransitionStyle::dissolve);
    const double duration = preset.preferredRunDuration.value_or(durationOf(style));
    const double limited =
        std::isfinite(duration) ? std::clamp(duration, 0.0, LayerTakes::longestDissolve) : 0;
    return {.transitionStyle = style, .dissolveDuration = limited};
}

} // namespace tessara
