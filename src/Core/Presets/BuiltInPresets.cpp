#include "Core/Presets/BuiltInPresets.h"

#include "Models/Presets/PresetFormat.h"
#include "Models/Presets/PresetOrder.h"

#include <QFile>

#include <cstdio>

static void initialisePresetResource()
{
    Q_INIT_RESOURCE(presets);
}

namespace tessara {

const QString BuiltInPresets::resourceFile = QStringLiteral(":/BuiltInPresets.json");

namespace {

tl::expected<QList<TextPreset>, QString> presetsIn(QFile &file)
{
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected(file.errorString());
    return decodePresets(file.readAll());
}

} // namespace

QList<TextPreset> BuiltInPresets::bundlePresets() const
{
    initialisePresetResource();
    QFile file(m_file);
    if (!file.exists())
        return {};
    const auto presets = presetsIn(file);
    if (presets)
        return *presets;
    std::printf("Failed to decode BuiltInPresets.json: %s\n", qUtf8Printable(presets.error()));
    std::fflush(stdout);
    return {};
}

QList<TextPreset> BuiltInPresets::allBuiltIn() const
{
    QList<TextPreset> presets = bundlePresets();
    sortByName(presets);
    return presets;
}

} // namespace tessara
