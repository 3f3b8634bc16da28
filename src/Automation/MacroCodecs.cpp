#include "Automation/MacroCodecs.h"

#include "Core/Macros/MacroFormat.h"
#include "Core/Macros/MacroLogEntry.h"

namespace tessara {

namespace {

template <typename Value>
Codec recordCodec(const char *what, QJsonObject (*toJson)(const Value &),
                  std::optional<Value> (*fromJson)(const QJsonObject &))
{
    return {[=](const QVariant &value) { return Encoded(toJson(value.value<Value>())); },
            [=](const QJsonValue &json) -> Decoded {
                const std::optional<Value> record = fromJson(json.toObject());
                return record ? decoded(*record) : wanted(what);
            }};
}

Codec kindCodec()
{
    return {[](const QVariant &value) {
                const MacroStep step{{}, value.value<MacroStep::Kind>()};
                return Encoded(stepJson(step).value(QLatin1String("kind")));
            },
            [](const QJsonValue &json) -> Decoded {
                const std::optional<MacroStep::Kind> kind = kindFromJson(json.toObject());
                return kind ? decoded(*kind) : wanted("the kind of a macro step");
            }};
}

} // namespace

std::map<int, Codec> macroCodecs()
{
    return {
        entry<Macro>(recordCodec<Macro>("a macro", macroJson, macroFromJson)),
        entry<MacroStep>(recordCodec<MacroStep>("a macro step", stepJson, stepFromJson)),
        entry<MacroStep::Kind>(kindCodec()),
        entry<QList<Macro>>(listCodec<Macro>()),
        entry<QList<MacroStep>>(listCodec<MacroStep>()),
        entry<QList<MacroLogEntry>>(listCodec<MacroLogEntry>()),
    };
}

} // namespace tessara
