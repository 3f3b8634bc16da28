#include "Automation/ValueCodec.h"

#include "Automation/Codec.h"
#include "Automation/MacroCodecs.h"
#include "Automation/PresetCodecs.h"
#include "Base/WholeFile.h"
#include "Core/Macros/MacroFormat.h"
#include "DeckLink/DeckLinkModels.h"
#include "Models/CanvasDocument.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QMetaEnum>

#include <algorithm>
#include <cmath>
#include <functional>

namespace tessara {

namespace {

// Numbers and texts

bool isWhole(const QJsonValue &json, double least, double most)
{
    const double number = json.toDouble();
    return json.isDouble() && number == std::floor(number) && number >= least && number <= most;
}

template <typename Integer>
Codec integerCodec()
{
    return {[](const QVariant &value) { return Encoded(qint64(value.value<Integer>())); },
            [](const QJsonValue &json) -> Decoded {
                // Up to here a double counts every whole number.
                constexpr double exact = 9007199254740992.0;
                const double least = std::max(double(std::numeric_limits<Integer>::min()), -exact);
                const double most = std::min(double(std::numeric_limits<Integer>::max()), exact);
                if (!isWhole(json, least, most))
                    return wanted("a whole number");
                return decoded(Integer(json.toDouble()));
            }};
}

Codec boolCodec()
{
    return {[](const QVariant &value) { return Encoded(value.toBool()); },
            [](const QJsonValue &json) -> Decoded {
                return json.isBool() ? decoded(json.toBool()) : wanted("true or false");
            }};
}

Codec doubleCodec()
{
    return {[](const QVariant &value) { return Encoded(value.toDouble()); },
            [](const QJsonValue &json) -> Decoded {
                return json.isDouble() ? decoded(json.toDouble()) : wanted("a number");
            }};
}

Codec stringCodec()
{
    return {[](const QVariant &value) { return Encoded(value.toString()); },
            [](const QJsonValue &json) -> Decoded {
                return json.isString() ? decoded(json.toString()) : wanted("a text");
            }};
}

Codec uuidCodec()
{
    return {[](const QVariant &value) { return Encoded(uuidText(value.toUuid())); },
            [](const QJsonValue &json) -> Decoded {
                const QUuid id(json.toString());
                return id.isNull() ? wanted("a UUID") : decoded(id);
            }};
}

Codec urlCodec()
{
    return {[](const QVariant &value) {
                const QUrl url = value.toUrl();
                return Encoded(url.isLocalFile() ? url.toLocalFile() : url.toString());
            },
            [](const QJsonValue &json) -> Decoded {
                if (!json.isString())
                    return wanted("a path");
                const QString text = json.toString();
                if (text.contains(QStringLiteral("://")))
                    return decoded(QUrl(text));
                return decoded(QUrl::fromLocalFile(QDir().absoluteFilePath(text)));
            }};
}

// As bytes come from a file, so they are given: by its path.
Codec bytesCodec()
{
    return {[](const QVariant &) -> Encoded {
                return tl::unexpected(
                    QStringLiteral("bytes want the path of a file as a further argument"));
            },
            [](const QJsonValue &json) -> Decoded {
                if (!json.isString())
                    return wanted("the path of a file");
                const auto bytes = readFile(json.toString(), largestMacroFile);
                if (!bytes)
                    return tl::unexpected(QStringLiteral("can't be read: ") + bytes.error());
                return decoded(*bytes);
            }};
}

Codec dateCodec()
{
    return {[](const QVariant &value) {
                return Encoded(value.toDateTime().toString(Qt::ISODateWithMs));
            },
            notReadable};
}

// Geometry

std::optional<std::pair<double, double>> pairOf(const QJsonValue &json)
{
    constexpr double farthest = 1e15; // beyond it no pixel is told from its neighbour
    const QJsonArray array = json.toArray();
    if (array.size() != 2 || !array[0].isDouble() || !array[1].isDouble())
        return std::nullopt;
    const std::pair numbers(array[0].toDouble(), array[1].toDouble());
    if (std::abs(numbers.first) > farthest || std::abs(numbers.second) > farthest)
        return std::nullopt;
    return numbers;
}

template <typename Pair>
Codec pairCodec(const char *what, double (*first)(const Pair &), double (*second)(const Pair &))
{
    return {[=](const QVariant &value) {
                const auto pair = value.value<Pair>();
                return Encoded(QJsonArray{first(pair), second(pair)});
            },
            [=](const QJsonValue &json) -> Decoded {
                const auto numbers = pairOf(json);
                return numbers ? decoded(Pair(numbers->first, numbers->second)) : wanted(what);
            }};
}

Codec rectCodec()
{
    return {[](const QVariant &value) {
                const QRectF rect = value.toRectF();
                return Encoded(QJsonArray{QJsonArray{rect.x(), rect.y()},
                                          QJsonArray{rect.width(), rect.height()}});
            },
            [](const QJsonValue &json) -> Decoded {
                const auto origin = pairOf(json.toArray().at(0));
                const auto size = pairOf(json.toArray().at(1));
                if (json.toArray().size() != 2 || !origin || !size)
                    return wanted("a rectangle [[x, y], [width, height]]");
                return decoded(QRectF(origin->first, origin->second, size->first, size->second));
            }};
}

// Containers

template <typename Value>
Codec optionalCodec()
{
    return {
        [](const QVariant &value) -> Encoded {
            const auto optional = value.value<std::optional<Value>>();
            return optional ? encodeValue(QVariant::fromValue(*optional)) : Encoded(QJsonValue());
        },
        [](const QJsonValue &json) -> Decoded {
            if (json.isNull())
                return decoded(std::optional<Value>());
            return decodeValue(json, QMetaType::fromType<Value>()).map([](const QVariant &value) {
                return QVariant::fromValue(std::optional<Value>(value.value<Value>()));
            });
        }};
}

Codec uuidSetCodec()
{
    return {[](const QVariant &value) {
                QStringList texts;
                for (const QUuid &id : value.value<QSet<QUuid>>())
                    texts.append(uuidText(id));
                texts.sort();
                return Encoded(QJsonArray::fromStringList(texts));
            },
            [](const QJsonValue &json) -> Decoded {
                return decodeArray<QUuid>(json).map([](const QList<QUuid> &ids) {
                    return QVariant::fromValue(QSet<QUuid>(ids.begin(), ids.end()));
                });
            }};
}

template <typename Value>
Codec uuidMapCodec()
{
    return {[](const QVariant &value) -> Encoded {
                const auto map = value.value<QMap<QUuid, Value>>();
                QJsonObject object;
                for (auto entry = map.begin(); entry != map.end(); ++entry) {
                    const Encoded element = encodeValue(QVariant::fromValue(entry.value()));
                    if (!element)
                        return element;
                    object.insert(uuidText(entry.key()), *element);
                }
                return QJsonValue(object);
            },
            [](const QJsonValue &json) -> Decoded {
                if (!json.isObject())
                    return wanted("an object keyed by UUID");
                const QJsonObject object = json.toObject();
                QMap<QUuid, Value> map;
                for (auto entry = object.begin(); entry != object.end(); ++entry) {
                    const Decoded value = decodeValue(entry.value(), QMetaType::fromType<Value>());
                    const QUuid id(entry.key());
                    if (!value || id.isNull())
                        return value ? wanted("an object keyed by UUID") : value;
                    map.insert(id, value->template value<Value>());
                }
                return decoded(map);
            }};
}

// What operations answer

Codec addImageResultCodec()
{
    return {[](const QVariant &value) -> Encoded {
                const auto result = value.value<CanvasDocument::AddImageResult>();
                if (!result)
                    return tl::unexpected(text(result.error()));
                return QJsonValue(uuidText((*result)->id()));
            },
            notReadable};
}

/// Of an operation that answers nothing but its errors.
template <typename Result>
Codec outcomeCodec()
{
    return {[](const QVariant &value) -> Encoded {
                const auto result = value.value<Result>();
                return result ? Encoded(QJsonValue()) : tl::unexpected(text(result.error()));
            },
            notReadable};
}

Codec scriptResultCodec()
{
    return {[](const QVariant &value) { return value.value<ScriptResult>(); }, notReadable};
}

Codec jsonCodec()
{
    return {[](const QVariant &value) { return Encoded(value.toJsonValue()); },
            [](const QJsonValue &json) { return decoded(json); }};
}

Codec pictureCodec()
{
    return {[](const QVariant &value) {
                const QSize size = value.value<Picture>().size();
                return Encoded(QJsonObject{{QStringLiteral("width"), size.width()},
                                           {QStringLiteral("height"), size.height()}});
            },
            [](const QJsonValue &json) -> Decoded {
                const auto picture = Picture::load(json.toString());
                return picture ? decoded(*picture) : tl::unexpected(text(picture.error()));
            }};
}

Codec colorCodec()
{
    return {[](const QVariant &value) { return Encoded(value.value<RGBAColor>().toJson()); },
            [](const QJsonValue &json) -> Decoded {
                return RGBAColor::fromJson(json).map(
                    [](const RGBAColor &color) { return QVariant::fromValue(color); });
            }};
}

const std::map<int, Codec> &codecs()
{
    static const std::map<int, Codec> table = [] {
        std::map<int, Codec> all{
            entry<bool>(boolCodec()),
            entry<int>(integerCodec<int>()),
            entry<quint32>(integerCodec<quint32>()),
            entry<qint64>(integerCodec<qint64>()),
            entry<quint64>(integerCodec<quint64>()),
            entry<double>(doubleCodec()),
            entry<QString>(stringCodec()),
            entry<QByteArray>(bytesCodec()),
            entry<QDateTime>(dateCodec()),
            entry<QUuid>(uuidCodec()),
            entry<QUrl>(urlCodec()),
            entry<QPointF>(pairCodec<QPointF>(
                "a point [x, y]", [](const QPointF &point) { return point.x(); },
                [](const QPointF &point) { return point.y(); })),
            entry<QSizeF>(pairCodec<QSizeF>(
                "a size [width, height]", [](const QSizeF &size) { return size.width(); },
                [](const QSizeF &size) { return size.height(); })),
            entry<QRectF>(rectCodec()),
            entry<RGBAColor>(colorCodec()),
            entry<Picture>(pictureCodec()),
            entry<std::optional<QString>>(optionalCodec<QString>()),
            entry<std::optional<double>>(optionalCodec<double>()),
            entry<std::optional<bool>>(optionalCodec<bool>()),
            entry<std::optional<int>>(optionalCodec<int>()),
            entry<std::optional<qint64>>(optionalCodec<qint64>()),
            entry<std::optional<quint32>>(optionalCodec<quint32>()),
            entry<std::optional<QUuid>>(optionalCodec<QUuid>()),
            entry<std::optional<QUrl>>(optionalCodec<QUrl>()),
            entry<std::optional<QSizeF>>(optionalCodec<QSizeF>()),
            entry<std::optional<QRectF>>(optionalCodec<QRectF>()),
            entry<std::optional<RGBAColor>>(optionalCodec<RGBAColor>()),
            entry<std::optional<TemplateFieldKind>>(optionalCodec<TemplateFieldKind>()),
            entry<std::optional<ScorePalette>>(optionalCodec<ScorePalette>()),
            entry<std::optional<DeckLinkDisplayMode>>(optionalCodec<DeckLinkDisplayMode>()),
            entry<QList<QUuid>>(listCodec<QUuid>()),
            entry<QList<QPointF>>(listCodec<QPointF>()),
            entry<QList<DeckLinkDevice>>(listCodec<DeckLinkDevice>()),
            entry<QList<DeckLinkDisplayMode>>(listCodec<DeckLinkDisplayMode>()),
            entry<QSet<QUuid>>(uuidSetCodec()),
            entry<QMap<QUuid, bool>>(uuidMapCodec<bool>()),
            entry<QMap<QUuid, double>>(uuidMapCodec<double>()),
            entry<QMap<QUuid, QString>>(uuidMapCodec<QString>()),
            entry<QMap<QUuid, LayerRunSettings>>(uuidMapCodec<LayerRunSettings>()),
            entry<CanvasDocument::AddImageResult>(addImageResultCodec()),
            entry<CanvasDocument::AddPresetResult>(outcomeCodec<CanvasDocument::AddPresetResult>()),
            entry<CanvasDocument::FieldResult>(outcomeCodec<CanvasDocument::FieldResult>()),
            entry<QList<DynamicTemplateField>>(listCodec<DynamicTemplateField>()),
            entry<ScriptResult>(scriptResultCodec()),
            entry<QJsonValue>(jsonCodec()),
        };
        all.merge(macroCodecs());
        all.merge(presetCodecs());
        return all;
    }();
    return table;
}

// Types that describe themselves

QMetaEnum enumerationOf(QMetaType type)
{
    const QMetaObject *scope = type.metaObject();
    if (!scope)
        return {};
    const QByteArray name = QByteArray(type.name());
    const qsizetype colon = name.lastIndexOf(':');
    return scope->enumerator(scope->indexOfEnumerator(name.mid(colon + 1).constData()));
}

Encoded encodeEnumeration(const QVariant &value)
{
    return QJsonValue(
        QString::fromLatin1(enumerationOf(value.metaType()).valueToKey(value.toInt())));
}

Decoded decodeEnumeration(const QJsonValue &json, QMetaType type)
{
    const QMetaEnum cases = enumerationOf(type);
    bool isKnown = false;
    const int number = cases.keyToValue(json.toString().toLatin1().constData(), &isKnown);
    if (isKnown && json.isString() && json.toString() == QLatin1String(cases.valueToKey(number))) {
        QVariant value(type);
        std::memcpy(value.data(), &number, std::size_t(std::min<qsizetype>(type.sizeOf(), 4)));
        return value;
    }
    QStringList names;
    for (int index = 0; index < cases.keyCount(); ++index)
        names.append(QLatin1String(cases.key(index)));
    return tl::unexpected(QStringLiteral("wanted one of %1").arg(names.join(QStringLiteral(", "))));
}

Encoded encodeRecord(const QVariant &value)
{
    const QMetaObject *record = value.metaType().metaObject();
    QJsonObject object;
    for (int index = 0; index < record->propertyCount(); ++index) {
        const QMetaProperty property = record->property(index);
        const Encoded field = encodeValue(property.readOnGadget(value.constData()));
        if (!field)
            return field;
        object.insert(QLatin1String(property.name()), *field);
    }
    return QJsonValue(object);
}

Decoded decodeRecord(const QJsonValue &json, QMetaType type)
{
    if (!json.isObject())
        return wanted("an object");
    const QMetaObject *record = type.metaObject();
    const QJsonObject object = json.toObject();
    QVariant value(type);
    for (auto field = object.begin(); field != object.end(); ++field) {
        const int index = record->indexOfProperty(field.key().toLatin1().constData());
        if (index < 0)
            return tl::unexpected(QStringLiteral("no field '%1'").arg(field.key()));
        const QMetaProperty property = record->property(index);
        const Decoded part = decodeValue(field.value(), property.metaType());
        if (!part)
            return tl::unexpected(QStringLiteral("field '%1': %2").arg(field.key(), part.error()));
        if (!property.writeOnGadget(value.data(), *part))
            return tl::unexpected(QStringLiteral("field '%1' is read-only").arg(field.key()));
    }
    return value;
}

Encoded encodeObject(const QVariant &value)
{
    const auto *object = value.value<QObject *>();
    if (const auto *layer = qobject_cast<const Layer *>(object))
        return QJsonValue(uuidText(layer->id()));
    return QJsonValue(); // reached by a target of its own
}

} // namespace

tl::expected<QJsonValue, QString> encodeValue(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (!type.isValid() || type.id() == QMetaType::Void)
        return QJsonValue();
    if (const auto codec = codecs().find(type.id()); codec != codecs().end())
        return codec->second.encode(value);
    if (type.flags() & QMetaType::IsEnumeration)
        return encodeEnumeration(value);
    if (type.flags() & QMetaType::PointerToQObject)
        return encodeObject(value);
    if (type.flags() & QMetaType::IsGadget)
        return encodeRecord(value);
    return tl::unexpected(
        QStringLiteral("values of type %1 have no JSON form").arg(QLatin1String(type.name())));
}

tl::expected<QVariant, QString> decodeValue(const QJsonValue &json, QMetaType wanted)
{
    if (const auto codec = codecs().find(wanted.id()); codec != codecs().end())
        return codec->second.decode(json);
    if (wanted.flags() & QMetaType::IsEnumeration)
        return decodeEnumeration(json, wanted);
    if (wanted.flags() & QMetaType::IsGadget)
        return decodeRecord(json, wanted);
    return notReadable(json);
}

} // namespace tessara
