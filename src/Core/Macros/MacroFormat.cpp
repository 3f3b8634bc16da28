#include "Core/Macros/MacroFormat.h"

#include "Base/Overloaded.h"
#include "Base/UuidText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

using Kind = MacroStep::Kind;

constexpr QLatin1String idKey("id");
constexpr QLatin1String nameKey("name");
constexpr QLatin1String stepsKey("steps");
constexpr QLatin1String loopEnabledKey("loopEnabled");
constexpr QLatin1String loopCountKey("loopCount");
constexpr QLatin1String scheduleEnabledKey("scheduleEnabled");
constexpr QLatin1String scheduleTimeKey("scheduleTime");
constexpr QLatin1String kindKey("kind");

constexpr QLatin1String typeKey("type");
constexpr QLatin1String layerIDKey("layerID");
constexpr QLatin1String layerNameKey("layerName");
constexpr QLatin1String secondsKey("seconds");
constexpr QLatin1String keyKey("key");
constexpr QLatin1String valueKey("value");
constexpr QLatin1String layerTypeKey("layerType");
constexpr QLatin1String propsKey("props");

constexpr QLatin1String showType("show");
constexpr QLatin1String hideType("hide");
constexpr QLatin1String pauseType("pause");
constexpr QLatin1String setType("setProp");
constexpr QLatin1String addType("add");

// Writing.

// The props of a layer are a text that holds JSON: files have been written that way.
QString propsText(const QMap<QString, QString> &props)
{
    QJsonObject object;
    for (auto prop = props.begin(); prop != props.end(); ++prop)
        object[prop.key()] = prop.value();
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QJsonObject kindToJson(const Kind &kind)
{
    return std::visit(
        Overloaded{[](const ShowLayer &show) {
                       return QJsonObject{{typeKey, showType},
                                          {layerIDKey, uuidText(show.layerID)},
                                          {layerNameKey, show.layerName}};
                   },
                   [](const HideLayer &hide) {
                       return QJsonObject{{typeKey, hideType},
                                          {layerIDKey, uuidText(hide.layerID)},
                                          {layerNameKey, hide.layerName}};
                   },
                   [](const Pause &pause) {
                       return QJsonObject{{typeKey, pauseType}, {secondsKey, pause.seconds}};
                   },
                   [](const SetLayerProperty &set) {
                       return QJsonObject{{typeKey, setType},
                                          {layerIDKey, uuidText(set.layerID)},
                                          {layerNameKey, set.layerName},
                                          {keyKey, set.key},
                                          {valueKey, set.value}};
                   },
                   [](const AddLayer &add) {
                       return QJsonObject{{typeKey, addType},
                                          {layerIDKey, uuidText(add.layerID)},
                                          {layerTypeKey, add.layerType},
                                          {propsKey, propsText(add.props)}};
                   }},
        kind);
}

bool isFinite(const MacroStep &step)
{
    const auto *pause = std::get_if<Pause>(&step.kind);
    return !pause || std::isfinite(pause->seconds);
}

bool isFinite(const Macro &macro)
{
    return std::all_of(macro.steps.begin(), macro.steps.end(),
                       [](const MacroStep &step) { return isFinite(step); });
}

// Reading: nothing for what is missing or of the wrong type.

std::optional<QString> textAt(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<double> numberAt(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<QJsonObject> objectAt(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

std::optional<QJsonArray> arrayAt(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isArray() ? std::optional(value.toArray()) : std::nullopt;
}

std::optional<QUuid> uuidAt(const QJsonObject &object, QLatin1String key)
{
    const std::optional<QString> text = textAt(object, key);
    if (!text)
        return std::nullopt;
    // Written back, for QUuid would also take braces and pass over what follows.
    const QUuid id = QUuid::fromString(*text);
    const bool isExact = text->compare(uuidText(id), Qt::CaseInsensitive) == 0;
    return isExact ? std::optional(id) : std::nullopt;
}

// Broken props never fail a macro: the layer is made with its values at the start.
QMap<QString, QString> propsAt(const QJsonObject &object)
{
    const QString text = textAt(object, propsKey).value_or(QString());
    const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
    QMap<QString, QString> props;
    for (auto prop = json.begin(); prop != json.end(); ++prop) {
        if (!prop->isString())
            return {};
        props[prop.key()] = prop->toString();
    }
    return props;
}

template <typename Take>
std::optional<Kind> takeFrom(const QJsonObject &json)
{
    const std::optional<QUuid> layerID = uuidAt(json, layerIDKey);
    const std::optional<QString> layerName = textAt(json, layerNameKey);
    if (!layerID || !layerName)
        return std::nullopt;
    return Take{*layerID, *layerName};
}

std::optional<Kind> setFrom(const QJsonObject &json)
{
    const std::optional<QUuid> layerID = uuidAt(json, layerIDKey);
    const std::optional<QString> layerName = textAt(json, layerNameKey);
    const std::optional<QString> key = textAt(json, keyKey);
    const std::optional<QString> value = textAt(json, valueKey);
    if (!layerID || !layerName || !key || !value)
        return std::nullopt;
    return SetLayerProperty{*layerID, *layerName, *key, *value};
}

std::optional<Kind> addFrom(const QJsonObject &json)
{
    const std::optional<QUuid> layerID = uuidAt(json, layerIDKey);
    const std::optional<QString> layerType = textAt(json, layerTypeKey);
    if (!layerID || !layerType)
        return std::nullopt;
    return AddLayer{*layerID, *layerType, propsAt(json)};
}

std::optional<Kind> pauseFrom(const QJsonObject &json)
{
    const std::optional<double> seconds = numberAt(json, secondsKey);
    if (!seconds || !std::isfinite(*seconds))
        return std::nullopt;
    return Pause{*seconds};
}

/// All items of an array of objects or, when one can't be read, nothing.
template <typename Item>
std::optional<QList<Item>> listFrom(const QJsonArray &array,
                                    std::optional<Item> (*itemFrom)(const QJsonObject &))
{
    QList<Item> items;
    items.reserve(array.size());
    for (const QJsonValue json : array) {
        if (!json.isObject())
            return std::nullopt;
        std::optional<Item> item = itemFrom(json.toObject());
        if (!item)
            return std::nullopt;
        items.append(std::move(*item));
    }
    return items;
}

} // namespace

QJsonObject macroJson(const Macro &macro)
{
    QJsonArray steps;
    for (const MacroStep &step : macro.steps)
        steps.append(stepJson(step));
    return {{idKey, uuidText(macro.id)},
            {nameKey, macro.name},
            {stepsKey, steps},
            {loopEnabledKey, macro.loopEnabled},
            {loopCountKey, macro.loopCount},
            {scheduleEnabledKey, macro.scheduleEnabled},
            {scheduleTimeKey, macro.scheduleTime}};
}

QJsonObject stepJson(const MacroStep &step)
{
    return {{idKey, uuidText(step.id)}, {kindKey, kindToJson(step.kind)}};
}

std::optional<MacroStep> stepFromJson(const QJsonObject &json)
{
    const std::optional<QUuid> id = uuidAt(json, idKey);
    const std::optional<QJsonObject> kindObject = objectAt(json, kindKey);
    if (!id || !kindObject)
        return std::nullopt;
    const std::optional<Kind> kind = kindFromJson(*kindObject);
    return kind ? std::optional(MacroStep{*id, *kind}) : std::nullopt;
}

std::optional<Macro> macroFromJson(const QJsonObject &json)
{
    const std::optional<QUuid> id = uuidAt(json, idKey);
    const std::optional<QString> name = textAt(json, nameKey);
    const std::optional<QJsonArray> stepArray = arrayAt(json, stepsKey);
    if (!id || !name || !stepArray)
        return std::nullopt;
    const std::optional<QList<MacroStep>> steps = listFrom(*stepArray, stepFromJson);
    if (!steps)
        return std::nullopt;
    return Macro{.id = *id,
                 .name = *name,
                 .steps = *steps,
                 .loopEnabled = json.value(loopEnabledKey).toBool(false),
                 .loopCount = json.value(loopCountKey).toInteger(0),
                 .scheduleEnabled = json.value(scheduleEnabledKey).toBool(false),
                 .scheduleTime = json.value(scheduleTimeKey).toString()};
}

std::optional<Kind> kindFromJson(const QJsonObject &json)
{
    const std::optional<QString> type = textAt(json, typeKey);
    if (!type)
        return std::nullopt;
    if (*type == showType)
        return takeFrom<ShowLayer>(json);
    if (*type == hideType)
        return takeFrom<HideLayer>(json);
    if (*type == setType)
        return setFrom(json);
    if (*type == addType)
        return addFrom(json);
    return pauseFrom(json); // by any other name, too: that is how the format is read
}

std::optional<QByteArray> encodeMacros(const QList<Macro> &macros)
{
    QJsonArray array;
    for (const Macro &macro : macros) {
        if (!isFinite(macro))
            return std::nullopt;
        array.append(macroJson(macro));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<Macro>> decodeMacros(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    return listFrom(document.array(), macroFromJson);
}

ReadMacros readMacros(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    ReadMacros read{.macros = {}, .isList = document.isArray()};
    for (const QJsonValue each : document.array()) {
        const auto macro = each.isObject() ? macroFromJson(each.toObject()) : std::nullopt;
        if (macro)
            read.macros.append(*macro);
        else
            ++read.unreadable;
    }
    return read;
}

} // namespace tessara
