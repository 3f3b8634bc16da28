// What a codec of one type is made of.
#pragma once

#include <QJsonValue>
#include <QVariant>

#include <tl/expected.hpp>

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

} // namespace tessara
