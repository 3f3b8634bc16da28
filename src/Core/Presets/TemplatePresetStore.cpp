#include "Core/Presets/TemplatePresetStore.h"

#include "Base/WholeFile.h"
#include "Models/Presets/PresetFormat.h"
#include "Models/Presets/PresetOrder.h"

#include <QDir>
#include <QFile>

namespace tessara {

namespace {

const QLatin1String safeCharacters("abcdefghijklmnopqrstuvwxyz0123456789-_");

tl::unexpected<QString> failure(const char *what, const QString &name, const QString &reason = {})
{
    QString sentence = QLatin1String(what).arg(name);
    if (!reason.isEmpty())
        sentence += QStringLiteral(": ") + reason;
    return tl::unexpected(sentence);
}

/// Nothing for a file that holds no preset.
std::optional<TextPreset> presetIn(const QString &file)
{
    const auto bytes = readFile(file, TemplatePresetStore::largestFile);
    if (!bytes)
        return std::nullopt;
    const auto preset = decodePreset(*bytes);
    return preset ? std::optional(*preset) : std::nullopt;
}

} // namespace

TemplatePresetStore::TemplatePresetStore(const ApplicationSupport &support, const Clock &clock)
    : m_support(support)
    , m_clock(clock)
    , m_directory(support.templateDirectory())
{
}

tl::expected<void, QString> TemplatePresetStore::makeDirectory() const
{
    m_support.directory(); // for the user's eyes only
    if (QDir().mkpath(m_directory))
        return {};
    return failure("The folder \"%1\" could not be created", m_directory);
}

tl::expected<QList<TextPreset>, QString> TemplatePresetStore::loadAll() const
{
    if (const auto made = makeDirectory(); !made)
        return tl::unexpected(made.error());
    const QDir directory(m_directory);
    if (!directory.isReadable())
        return failure("The folder \"%1\" could not be read", m_directory);
    QList<TextPreset> presets;
    for (const QFileInfo &entry : directory.entryInfoList(QDir::Files, QDir::Name)) {
        if (entry.suffix().toLower() != QLatin1String("json"))
            continue;
        if (const std::optional<TextPreset> preset = presetIn(entry.filePath()))
            presets.append(*preset);
    }
    sortByName(presets);
    return presets;
}

tl::expected<void, QString> TemplatePresetStore::save(const TextPreset &preset) const
{
    if (auto made = makeDirectory(); !made)
        return made;
    const auto bytes = encodePreset(preset);
    if (!bytes)
        return failure("The preset \"%1\" could not be saved", preset.name, bytes.error());
    if (bytes->size() > largestFile)
        return failure("The preset \"%1\" could not be saved", preset.name,
                       QStringLiteral("its pictures are too large"));
    const QString file = fileOf(preset);
    if (const auto written = writeFile(file, *bytes); !written)
        return failure("The file \"%1\" could not be written", file, written.error());
    return {};
}

tl::expected<void, QString> TemplatePresetStore::remove(const TextPreset &preset) const
{
    QFile file(fileOf(preset));
    if (!file.exists() || file.remove())
        return {};
    return failure("The file \"%1\" could not be removed", file.fileName(), file.errorString());
}

QString TemplatePresetStore::fileOf(const TextPreset &preset) const
{
    const QString &text = preset.id.isEmpty() ? preset.name : preset.id;
    return m_directory + QLatin1Char('/') + sanitizeFileName(text) + QStringLiteral(".json");
}

QString TemplatePresetStore::sanitizeFileName(const QString &text) const
{
    QString name;
    for (const QChar character : text.toLower()) {
        if (QStringLiteral(" /\\").contains(character))
            name += QLatin1Char('-');
        else if (safeCharacters.contains(character))
            name += character;
    }
    if (!name.isEmpty())
        return name;
    // A file that no later save or removal finds again.
    return QStringLiteral("template-%1").arg(m_clock.wallClock().toMSecsSinceEpoch() / 1000);
}

} // namespace tessara
