// What a codec of one type is made of.
#pragma once

#include <QJsonArray>

#include "Automation/ValueCodec.h"

#include <functional>
#include <utility>

namespace tessara {

using Encoded = tl::expected<QJsonValue, QString>;
using Decoded = tl::expected<QVariant, QString>;

struct Codec
{
    std::function<Encoded(const QVariant &)> encode;
    std::function<Decoded(const QJsonValue &)> decode;
};

inline tl::unexpected<QString> wanted(const char *what)
{
    return tl::unexpected(QStringLiteral("wanted %1").arg(QLatin1String(what)));
}

template <typename Value>
Decoded decoded(const Value &value)
{
    return QVariant::fromValue(value);
}

inline Decoded notReadable(const QJsonValue &)
{
    return tl::unexpected(QStringLiteral("a value of this type can't be given"));
}

/// The line of a table that is keyed by the ids of types.
template <typename Value>
std::pair<const int, Codec> entry(Codec codec)
{
    return {QMetaType::fromType<Value>().id(), std::move(codec)};
}

// Lists, an element after the other

template <typename Container>
Encoded encodeArray(const Container &values)
{
    QJsonArray array;
    for (const auto &value : values) {
        const Encoded element = encodeValue(QVariant::fromValue(value));
        if (!element)
            return element;
        array.append(*element);
    }
    return QJsonValue(array);
}

template <typename Value>
tl::expected<QList<Value>, QString> decodeArray(const QJsonValue &json)
{
    if (!json.isArray())
        return wanted("an array");
    QList<Value> list;
    for (const QJsonValue &element : json.toArray()) {
        const Decoded value = decodeValue(element, QMetaType::fromType<Value>());
        if (!value)
            return tl::unexpected(value.error());
        list.append(value->template value<Value>());
    }
    return list;
}

template <typename Value>
Codec listCodec()
{
    return {[](const QVariant &value) { return encodeArray(value.value<QList<Value>>()); },
            [](const QJsonValue &json) -> Decoded {
                return decodeArray<Value>(json).map(
                    [](const QList<Value> &list) { return QVariant::fromValue(list); });
            }};
}

} // namespace tessara
