#include "Models/Presets/TextPreset.h"

#include "Base/Base64Text.h"
#include "Base/Observable.h"
#include "Models/Presets/PresetFormat.h"

#include <tuple>

namespace tessara {

namespace {

// What compares without Qt's tolerance for geometry.

auto plainFields(const TextPresetEntry &entry)
{
    return std::tie(entry.name, entry.text, entry.fontSize, entry.fontFamily, entry.fontWeight,
                    entry.color, entry.outlineColor, entry.outlineWidth, entry.horizontalAlignment,
                    entry.fieldKey, entry.fieldKind);
}

auto plainFields(const PresetRectEntry &entry)
{
    return std::tie(entry.name, entry.color, entry.cornerRadius, entry.opacity, entry.kind);
}

auto plainFields(const PresetImageEntry &entry)
{
    return std::tie(entry.name, entry.opacity, entry.isAspectRatioLocked, entry.placeholderKey,
                    entry.contentMode, entry.maskShape, entry.maskPadding, entry.pngBase64);
}

} // namespace

bool TextPresetEntry::operator==(const TextPresetEntry &other) const
{
    return plainFields(*this) == plainFields(other) && isSame(position, other.position)
           && isSame(textBoxSize, other.textBoxSize);
}

bool PresetRectEntry::operator==(const PresetRectEntry &other) const
{
    return plainFields(*this) == plainFields(other) && isSame(position, other.position)
           && isSame(size, other.size);
}

bool PresetImageEntry::operator==(const PresetImageEntry &other) const
{
    return plainFields(*this) == plainFields(other) && isSame(position, other.position)
           && isSame(size, other.size) && isSame(cropRectNormalized, other.cropRectNormalized);
}

std::optional<QByteArray> PresetImageEntry::pngData() const
{
    return bytesFromBase64(pngBase64);
}

tl::expected<QByteArray, QString> TextPreset::exportData() const
{
    return encodePreset(*this);
}

} // namespace tessara
