#include "Models/Presets/PresetFormat.h"

#include "Base/RawString.h"
#include "Models/Presets/PresetFields.h"
#include "Models/Presets/PresetGeometry.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace tessara {

namespace {

/// What is wrong, and at which key.
struct Problem
{
    QString path;
    QString what;
};

using Outcome = tl::expected<void, Problem>;

tl::unexpected<Problem> problem(const QString &what)
{
    return tl::unexpected(Problem{{}, what});
}

tl::unexpected<Problem> problemAt(const QString &place, const Problem &inner)
{
    const bool isDotted = !inner.path.isEmpty() && !inner.path.startsWith(QLatin1Char('['));
    const QString separator = isDotted ? QStringLiteral(".") : QString();
    return tl::unexpected(Problem{place + separator + inner.path, inner.what});
}

tl::unexpected<Problem> problemAt(qsizetype index, const Problem &inner)
{
    return problemAt(QStringLiteral("[%1]").arg(index), inner);
}

QString text(const Problem &problem)
{
    return problem.path.isEmpty() ? problem.what
                                  : problem.path + QStringLiteral(": ") + problem.what;
}

// Reading a value. A wrong one leaves the field as it was.

template <typename Record>
Outcome readRecord(const QJsonValue &json, Record &record);

Outcome read(const QJsonValue &json, QString &field)
{
    if (!json.isString())
        return problem(QStringLiteral("wanted a text"));
    field = json.toString();
    return {};
}

Outcome read(const QJsonValue &json, double &field)
{
    if (!json.isDouble())
        return problem(QStringLiteral("wanted a number"));
    field = json.toDouble();
    return {};
}

Outcome read(const QJsonValue &json, bool &field)
{
    if (!json.isBool())
        return problem(QStringLiteral("wanted true or false"));
    field = json.toBool();
    return {};
}

template <typename Value>
Outcome take(const tl::expected<Value, QString> &value, Value &field)
{
    if (!value)
        return problem(value.error());
    field = *value;
    return {};
}

Outcome read(const QJsonValue &json, QPointF &field)
{
    return take(pointFromJson(json), field);
}

Outcome read(const QJsonValue &json, QSizeF &field)
{
    return take(sizeFromJson(json), field);
}

Outcome read(const QJsonValue &json, QRectF &field)
{
    return take(rectFromJson(json), field);
}

template <typename Enum>
requires std::is_enum_v<Enum> Outcome read(const QJsonValue &json, Enum &field)
{
    const std::optional<Enum> value = fromRawString<Enum>(json.toString());
    if (json.isString() && value) {
        field = *value;
        return {};
    }
    QStringList names;
    for (const Enum each : allCases<Enum>())
        names.append(rawString(each));
    return problem(QStringLiteral("wanted one of ") + names.join(QStringLiteral(", ")));
}

template <typename Record>
Outcome read(const QJsonValue &json, Record &field)
{
    return readRecord(json, field);
}

template <typename Item>
Outcome read(const QJsonValue &json, QList<Item> &field)
{
    if (!json.isArray())
        return problem(QStringLiteral("wanted an array"));
    const QJsonArray array = json.toArray();
    QList<Item> items(array.size());
    for (qsizetype index = 0; index < array.size(); ++index) {
        if (const Outcome outcome = read(array.at(index), items[index]); !outcome)
            return problemAt(index, outcome.error());
    }
    field = items;
    return {};
}

/// Takes the fields of one object until one is wrong.
class FieldReader
{
public:
    explicit FieldReader(const QJsonObject &object)
        : m_object(object)
    {
    }

    template <typename Value>
    void required(const char *key, Value &field)
    {
        if (isAbsent(key))
            m_outcome = m_outcome ? problemAt(QLatin1String(key), {{}, QStringLiteral("missing")})
                                  : m_outcome;
        else
            readAt(key, field);
    }

    template <typename Value>
    void defaulted(const char *key, Value &field)
    {
        if (!isAbsent(key))
            readAt(key, field);
    }

    template <typename Value>
    void optional(const char *key, std::optional<Value> &field)
    {
        if (!isAbsent(key))
            readAt(key, field.emplace());
    }

    const Outcome &outcome() const { return m_outcome; }

private:
    bool isAbsent(const char *key) const
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        return value.isUndefined() || value.isNull();
    }

    template <typename Value>
    void readAt(const char *key, Value &field)
    {
        if (!m_outcome)
            return;
        if (const Outcome value = read(m_object.value(QLatin1String(key)), field); !value)
            m_outcome = problemAt(QLatin1String(key), value.error());
    }

    QJsonObject m_object;
    Outcome m_outcome;
};

template <typename Record>
Outcome readRecord(const QJsonValue &json, Record &record)
{
    if (!json.isObject())
        return problem(QStringLiteral("wanted an object"));
    FieldReader fields(json.toObject());
    visitFields(fields, record);
    return fields.outcome();
}

// Writing a value.

using Written = tl::expected<QJsonValue, Problem>;

template <typename Record>
Written writeRecord(const Record &record);

Written write(const QString &value)
{
    return QJsonValue(value);
}

Written write(bool value)
{
    return QJsonValue(value);
}

Written write(double value)
{
    if (!std::isfinite(value))
        return problem(QStringLiteral("a number that isn't finite can't be written"));
    return QJsonValue(value);
}

template <typename Value>
Written writeNumbers(const Value &value, std::initializer_list<double> numbers)
{
    for (const double number : numbers) {
        if (Written written = write(number); !written)
            return written;
    }
    return QJsonValue(geometryToJson(value));
}

Written write(const QPointF &value)
{
    return writeNumbers(value, {value.x(), value.y()});
}

Written write(const QSizeF &value)
{
    return writeNumbers(value, {value.width(), value.height()});
}

Written write(const QRectF &value)
{
    return writeNumbers(value, {value.x(), value.y(), value.width(), value.height()});
}

template <typename Enum>
requires std::is_enum_v<Enum> Written write(Enum value)
{
    return QJsonValue(rawString(value));
}

template <typename Record>
requires std::is_class_v<Record> Written write(const Record &record)
{
    return writeRecord(record);
}

template <typename Item>
Written write(const QList<Item> &items)
{
    QJsonArray array;
    for (qsizetype index = 0; index < items.size(); ++index) {
        const Written item = write(items[index]);
        if (!item)
            return problemAt(index, item.error());
        array.append(*item);
    }
    return QJsonValue(array);
}

/// Puts fields into one object until one can't be written.
class FieldWriter
{
public:
    template <typename Value>
    void required(const char *key, const Value &field)
    {
        if (!m_outcome)
            return;
        if (const Written value = write(field))
            m_object.insert(QLatin1String(key), *value);
        else
            m_outcome = problemAt(QLatin1String(key), value.error());
    }

    template <typename Value>
    void defaulted(const char *key, const Value &field)
    {
        required(key, field);
    }

    template <typename Value>
    void optional(const char *key, const std::optional<Value> &field)
    {
        if (field)
            required(key, *field);
    }

    Written object() const
    {
        return m_outcome.map([this] { return QJsonValue(m_object); });
    }

private:
    QJsonObject m_object;
    Outcome m_outcome;
};

template <typename Record>
Written writeRecord(const Record &record)
{
    FieldWriter fields;
    visitFields(fields, record);
    return fields.object();
}

// Files.

template <typename Value>
tl::expected<Value, QString> valueFrom(const QJsonValue &json)
{
    Value value;
    if (const Outcome outcome = read(json, value); !outcome)
        return tl::unexpected(text(outcome.error()));
    return value;
}

tl::expected<QJsonValue, QString> parsed(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return tl::unexpected(
            QStringLiteral("no JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

} // namespace

tl::expected<QJsonObject, QString> presetToJson(const TextPreset &preset)
{
    return write(preset).map_error(text).map(
        [](const QJsonValue &json) { return json.toObject(); });
}

tl::expected<QByteArray, QString> encodePreset(const TextPreset &preset)
{
    return presetToJson(preset).map([](const QJsonObject &json) {
        return QJsonDocument(json).toJson(QJsonDocument::Indented);
    });
}

tl::expected<TextPreset, QString> presetFromJson(const QJsonValue &json)
{
    return valueFrom<TextPreset>(json);
}

tl::expected<TextPreset, QString> decodePreset(const QByteArray &json)
{
    return parsed(json).and_then(presetFromJson);
}

tl::expected<QList<TextPreset>, QString> decodePresets(const QByteArray &json)
{
    return parsed(json).and_then(valueFrom<QList<TextPreset>>);
}

} // namespace tessara
