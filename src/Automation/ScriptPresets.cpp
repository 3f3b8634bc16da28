#include "Automation/ScriptPresets.h"

#include "Core/AppState.h"

namespace tessara {

namespace {

ScriptResult answer(const tl::expected<void, QString> &outcome)
{
    return outcome.map([] { return QJsonValue(); });
}

} // namespace

QList<TextPreset> ScriptPresets::userTextPresets() const
{
    return m_app.userTextPresets();
}

QList<TextPreset> ScriptPresets::systemPresets() const
{
    return m_app.systemPresets();
}

QList<TextPreset> ScriptPresets::visibleUserTextPresets() const
{
    return m_app.visibleUserTextPresets();
}

QString ScriptPresets::directory() const
{
    return m_app.templatePresetStore().directory();
}

ScriptResult ScriptPresets::loadAll()
{
    return m_app.templatePresetStore().loadAll().and_then(
        [](const QList<TextPreset> &presets) { return encodeValue(QVariant::fromValue(presets)); });
}

ScriptResult ScriptPresets::save(const TextPreset &preset)
{
    return answer(m_app.templatePresetStore().save(preset));
}

ScriptResult ScriptPresets::remove(const TextPreset &preset)
{
    return answer(m_app.templatePresetStore().remove(preset));
}

} // namespace tessara
