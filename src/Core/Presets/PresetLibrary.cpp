#include "Core/Presets/PresetLibrary.h"

#include "Base/Observable.h"
#include "Models/Presets/DocumentSnapshot.h"

#include <QSet>

#include <algorithm>

namespace tessara {

namespace {

/// Line ends count as content.
QString trimmedOfBlanks(const QString &text)
{
    const auto isBlank = [](QChar character) {
        return character == QLatin1Char('\t') || character.category() == QChar::Separator_Space;
    };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
    return first < last ? QString(first, last - first) : QString();
}

} // namespace

PresetLibrary::PresetLibrary(const ApplicationSupport &support, const Clock &clock,
                             const BuiltInPresets &builtIn)
    : m_clock(clock)
    , m_store(support, clock)
    , m_builtIn(builtIn)
    , m_userTextPresets(m_store.loadAll().value_or(QList<TextPreset>()))
{
}

void PresetLibrary::setUserTextPresets(const QList<TextPreset> &presets)
{
    if (replaceValue(m_userTextPresets, presets))
        emit userTextPresetsChanged();
}

QList<TextPreset> PresetLibrary::systemPresets() const
{
    QList<TextPreset> presets = m_builtIn.allBuiltIn();
    for (TextPreset &preset : presets) {
        const auto own = std::find_if(m_userTextPresets.begin(), m_userTextPresets.end(),
                                      [&](const TextPreset &each) { return each.id == preset.id; });
        if (own != m_userTextPresets.end())
            preset = *own;
    }
    return presets;
}

QList<TextPreset> PresetLibrary::visibleUserTextPresets() const
{
    QSet<QString> builtInIDs;
    for (const TextPreset &preset : m_builtIn.allBuiltIn())
        builtInIDs.insert(preset.id);
    QList<TextPreset> presets;
    for (const TextPreset &preset : m_userTextPresets) {
        if (!builtInIDs.contains(preset.id))
            presets.append(preset);
    }
    return presets;
}

tl::expected<void, QString> PresetLibrary::saveTemplatePreset(const TextPreset &preset)
{
    if (auto saved = m_store.save(preset); !saved)
        return saved;
    const auto presets = m_store.loadAll();
    if (!presets)
        return tl::unexpected(presets.error());
    setUserTextPresets(*presets);
    return {};
}

tl::expected<void, QString> PresetLibrary::deleteUserPreset(const TextPreset &preset)
{
    if (auto removed = m_store.remove(preset); !removed)
        return removed;
    setUserTextPresets(m_store.loadAll().value_or(QList<TextPreset>()));
    return {};
}

std::optional<TextPreset> PresetLibrary::snapshot(const CanvasDocument &document,
                                                  const QString &name,
                                                  const std::optional<QString> &existingID) const
{
    const QString trimmed = trimmedOfBlanks(name);
    if (trimmed.isEmpty())
        return std::nullopt;
    const qint64 seconds = m_clock.wallClock().toMSecsSinceEpoch() / 1000;
    return presetOf(document, existingID.value_or(QStringLiteral("user-%1").arg(seconds)), trimmed);
}

} // namespace tessara
