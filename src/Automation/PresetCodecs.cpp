#include "Automation/PresetCodecs.h"

#include "Models/Presets/PresetFormat.h"

namespace tessara {

namespace {

Encoded encode(const TextPreset &preset)
{
    return presetToJson(preset).map([](const QJsonObject &json) { return QJsonValue(json); });
}

Codec presetCodec()
{
    return {[](const QVariant &value) { return encode(value.value<TextPreset>()); },
            [](const QJsonValue &json) -> Decoded {
                return presetFromJson(json).map(
                    [](const TextPreset &preset) { return QVariant::fromValue(preset); });
            }};
}

} // namespace

std::map<int, Codec> presetCodecs()
{
    return {
        entry<TextPreset>(presetCodec()),
        entry<QList<TextPreset>>(listCodec<TextPreset>()),
    };
}

} // namespace tessara
