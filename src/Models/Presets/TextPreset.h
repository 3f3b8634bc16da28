// A reusable group of layers, by value.
#pragma once

#include <QList>
#include <QStringList>

#include "Models/Presets/PresetImageEntry.h"
#include "Models/Presets/PresetRectEntry.h"
#include "Models/Presets/TextPresetEntry.h"

#include <tl/expected.hpp>

namespace tessara {

struct TextPreset
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(std::optional<QString> templateType MEMBER templateType FINAL)
    Q_PROPERTY(std::optional<QString> templateCategory MEMBER templateCategory FINAL)
    Q_PROPERTY(QStringList templateTags MEMBER templateTags FINAL)
    Q_PROPERTY(std::optional<bool> hasLogoPlaceholder MEMBER hasLogoPlaceholder FINAL)
    Q_PROPERTY(std::optional<QString> language MEMBER language FINAL)
    Q_PROPERTY(QStringList styleKeywords MEMBER styleKeywords FINAL)
    Q_PROPERTY(std::optional<tessara::LayerRunTransitionStyle> preferredRunTransitionStyle MEMBER
                   preferredRunTransitionStyle FINAL)
    Q_PROPERTY(std::optional<double> preferredRunDuration MEMBER preferredRunDuration FINAL)
    Q_PROPERTY(QList<tessara::PresetRectEntry> rects MEMBER rects FINAL)
    Q_PROPERTY(QList<tessara::PresetImageEntry> images MEMBER images FINAL)
    Q_PROPERTY(QList<tessara::TextPresetEntry> entries MEMBER entries FINAL)

public:
    QString id{};
    QString name{};
    // What a catalogue knows of it; carried, and acted on by nobody.
    std::optional<QString> templateType{};
    std::optional<QString> templateCategory{};
    QStringList templateTags{};
    std::optional<bool> hasLogoPlaceholder{};
    std::optional<QString> language{};
    QStringList styleKeywords{};
    // How its layers go on air, unless the operator says otherwise.
    std::optional<LayerRunTransitionStyle> preferredRunTransitionStyle{};
    std::optional<double> preferredRunDuration{}; // s, any number that a file holds
    // Each back to front; shapes lie below pictures, pictures below text.
    QList<PresetRectEntry> rects{};
    QList<PresetImageEntry> images{};
    QList<TextPresetEntry> entries{};

    /// The preset's file. An error names the number that isn't finite, for JSON has none.
    tl::expected<QByteArray, QString> exportData() const;

    bool operator==(const TextPreset &) const = default;
};

} // namespace tessara
