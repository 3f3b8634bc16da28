#include "Automation/PresetCodecs.h"

#include "Models/Presets/PresetFormat.h"

#include <QJsonArray>

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

Codec presetListCodec()
{
    return {[](const QVariant &value) -> Encoded {
                QJsonArray array;
                for (const TextPreset &preset : value.value<QList<TextPreset>>()) {
                    Encoded element = encode(preset);
                    if (!element)
                        return element;
                    array.append(*element);
                }
                return QJsonValue(array);
            },
            notReadable};
}

} // namespace

std::map<int, Codec> presetCodecs()
{
    return {
        entry<TextPreset>(presetCodec()),
        entry<QList<TextPreset>>(presetListCodec()),
    };
}

} // namespace tessara
