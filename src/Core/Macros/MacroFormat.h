// Macros as JSON: an array of objects, the same in the settings and in an exported file.
#pragma once

#include "Core/Macros/Macro.h"

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace tessara {

constexpr qint64 largestMacroFile = 64LL << 20; // bytes; some hundred thousand steps

/// Compact. Nothing when a pause is not finite, which JSON has no number for.
std::optional<QByteArray> encodeMacros(const QList<Macro> &macros);

/// All macros or, when one can't be read, nothing. Keys that are unknown are passed over.
/// A pause is read as it stands, be it below 0 or longer than a year: what to wait for is the
/// player's decision.
std::optional<QList<Macro>> decodeMacros(const QByteArray &json);

/// What can be read of an array of macros, each one whole or not at all.
struct ReadMacros
{
    QList<Macro> macros;
    qsizetype unreadable = 0; // objects of the array
    bool isList = false;      // else nothing could be read

    bool isWhole() const { return isList && unreadable == 0; }
};
ReadMacros readMacros(const QByteArray &json);

/// One macro, step or kind of step, as the array holds it. Reading gives nothing for what can't be
/// read.
QJsonObject macroJson(const Macro &macro);
QJsonObject stepJson(const MacroStep &step);
std::optional<Macro> macroFromJson(const QJsonObject &json);
std::optional<MacroStep> stepFromJson(const QJsonObject &json);
std::optional<MacroStep::Kind> kindFromJson(const QJsonObject &json);

} // namespace tessara
