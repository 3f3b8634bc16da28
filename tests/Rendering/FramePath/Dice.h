// Chance that can be told again: the same seed throws the same numbers on every machine.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <initializer_list>
#include <random>

namespace tessara {

class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_engine(seed)
    {
    }

    quint32 word() { return quint32(m_engine()); }
    /// 0 to below `count`.
    int below(int count) { return int(word() % quint32(count)); }
    bool chance(double share) { return fraction() < share; }
    /// 0 to below 1.
    double fraction() { return word() / 4294967296.0; }
    double between(double low, double high) { return low + (high - low) * fraction(); }

    template <typename Value>
    Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(int(values.size()))];
    }
    template <typename List>
    const auto &anyOf(const List &list)
    {
        return list[typename List::size_type(below(int(list.size())))];
    }

private:
    // Its numbers are fixed by the language; those of the library's distributions are not.
    std::mt19937 m_engine;
};

} // namespace tessara
