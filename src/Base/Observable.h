// Properties that views, scripts and watchers share.
#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <cmath>
#include <optional>

namespace tessara {

/// Equal to the last bit. Qt compares its geometry types with a tolerance, which would swallow the
/// small steps of a slow move.
template <typename Value>
bool isSame(const Value &left, const Value &right)
{
    return left == right;
}
inline bool isSame(const QPointF &left, const QPointF &right)
{
    return left.x() == right.x() && left.y() == right.y();
}
inline bool isSame(const QSizeF &left, const QSizeF &right)
{
    return left.width() == right.width() && left.height() == right.height();
}
inline bool isSame(const QRectF &left, const QRectF &right)
{
    return isSame(left.topLeft(), right.topLeft()) && isSame(left.size(), right.size());
}
template <typename Value>
bool isSame(const std::optional<Value> &left, const std::optional<Value> &right)
{
    return left.has_value() == right.has_value() && (!left || isSame(*left, *right));
}

/// What a property takes of `value`: of a place and a size that are no numbers, 0.
template <typename Value>
const Value &mended(const Value &value)
{
    return value;
}
inline QPointF mended(const QPointF &value)
{
    return {std::isfinite(value.x()) ? value.x() : 0, std::isfinite(value.y()) ? value.y() : 0};
}
inline QSizeF mended(const QSizeF &value)
{
    return {std::isfinite(value.width()) ? value.width() : 0,
            std::isfinite(value.height()) ? value.height() : 0};
}
inline std::optional<QSizeF> mended(const std::optional<QSizeF> &value)
{
    return value ? std::optional(mended(*value)) : std::nullopt;
}

/// Stores `value`; false when the field held it already.
template <typename Value>
bool replaceValue(Value &field, const Value &value)
{
    if (isSame(field, value))
        return false;
    field = value;
    return true;
}

} // namespace tessara

/// A property of a QObject with its getter, its setter and its notice `<name>Changed()`, which is
/// silent when nothing has changed. The last arguments are the value at the start.
#define TESSARA_OBSERVABLE(Type, name, setName, ...)                                               \
public:                                                                                            \
    Q_PROPERTY(Type name READ name WRITE setName NOTIFY name##Changed FINAL)                       \
    const Type &name() const                                                                       \
    {                                                                                              \
        return m_##name;                                                                           \
    }                                                                                              \
    void setName(const Type &value)                                                                \
    {                                                                                              \
        if (tessara::replaceValue(m_##name, tessara::mended(value)))                               \
            Q_EMIT name##Changed();                                                                \
    }                                                                                              \
    Q_SIGNAL void name##Changed();                                                                 \
                                                                                                   \
private:                                                                                           \
    Type m_##name{__VA_ARGS__};
