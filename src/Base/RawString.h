// The case names of an enumeration, as preset, macro and settings files spell them.
#pragma once

#include <QMetaEnum>
#include <QString>

#include <optional>
#include <vector>

namespace tessara {

/// The case's own name, as preset, macro and settings files spell it.
template <typename Enum>
QString rawString(Enum value)
{
    return QString::fromLatin1(QMetaEnum::fromType<Enum>().valueToKey(int(value)));
}

/// Nothing for a name that is no case.
template <typename Enum>
std::optional<Enum> fromRawString(QStringView text)
{
    bool known = false;
    const int value = QMetaEnum::fromType<Enum>().keyToValue(text.toLatin1().constData(), &known);
    // keyToValue() would also take a scoped name, which no file spells.
    if (!known || rawString(Enum(value)) != text)
        return std::nullopt;
    return Enum(value);
}

/// Every case, in the order of its declaration.
template <typename Enum>
std::vector<Enum> allCases()
{
    const QMetaEnum description = QMetaEnum::fromType<Enum>();
    std::vector<Enum> cases;
    for (int index = 0; index < description.keyCount(); ++index)
        cases.push_back(Enum(description.value(index)));
    return cases;
}

} // namespace tessara
