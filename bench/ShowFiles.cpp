#include "bench/ShowFiles.h"

#include "Core/Macros/MacroFormat.h"
#include "Models/Presets/PresetFormat.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace tessara {

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(QStringLiteral("%1: %2").arg(path, file.errorString()));
    return file.readAll();
}

QList<Macro> macrosOf(const QString &path)
{
    if (path.isEmpty())
        return {};
    const std::optional<QList<Macro>> macros = decodeMacros(bytesOf(path));
    if (!macros)
        refuse(path + QStringLiteral(": no macros"));
    return *macros;
}

void addLayersOf(const Macro &macro, CanvasDocument &document, double scale)
{
    for (const MacroStep &step : macro.steps) {
        const auto *add = std::get_if<AddLayer>(&step.kind);
        if (!add)
            continue;
        document.createLayerFromMacro(add->layerID, add->layerType, add->props);
        Layer *layer = document.layer(add->layerID);
        if (!layer)
            continue;
        layer->setPosition(layer->position() * scale);
        if (auto *sized = qobject_cast<SizedLayer *>(layer))
            sized->setSize(sized->size() * scale);
        if (auto *countdown = qobject_cast<CountdownLayer *>(layer))
            countdown->setFontSize(countdown->fontSize() * scale);
        if (auto *text = qobject_cast<TextLayer *>(layer))
            text->setFontSize(text->fontSize() * scale);
    }
}

} // namespace

void refuse(const QString &reason)
{
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    std::exit(2);
}

std::optional<TextPreset> presetOf(const QString &path)
{
    if (path.isEmpty())
        return std::nullopt;
    const auto preset = decodePreset(bytesOf(path));
    if (!preset)
        refuse(QStringLiteral("%1: no preset: %2").arg(path, preset.error()));
    return *preset;
}

TextPreset scaledPreset(TextPreset preset, double scale)
{
    for (PresetRectEntry &rect : preset.rects) {
        rect.position *= scale;
        rect.size *= scale;
        rect.cornerRadius *= scale;
    }
    for (PresetImageEntry &image : preset.images) {
        image.position *= scale;
        image.size *= scale;
        image.maskPadding = image.maskPadding.value_or(0) * scale;
    }
    for (TextPresetEntry &text : preset.entries) {
        text.position *= scale;
        text.fontSize *= scale;
        if (text.textBoxSize)
            *text.textBoxSize *= scale;
    }
    return preset;
}

ShowFiles ShowFiles::read(const QString &presetPath, const QString &macrosPath)
{
    return {presetOf(presetPath), macrosOf(macrosPath)};
}

void ShowFiles::addTo(CanvasDocument &document, double scale) const
{
    if (preset)
        document.addTextPreset(scaledPreset(*preset, scale));
    for (const Macro &macro : macros)
        addLayersOf(macro, document, scale);
}

} // namespace tessara
