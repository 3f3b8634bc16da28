#include "Core/Macros/Macro.h"

#include "Base/Overloaded.h"
#include "Models/LayerPropertyLabels.h"
#include "Models/PropertyText.h"

#include <cmath>

namespace tessara {

namespace {

// Two blanks stand between the parts of a line.
QString quoted(const QString &name)
{
    return QStringLiteral("  \"") + name + QLatin1Char('"');
}

} // namespace

QString MacroStep::displayName() const
{
    return std::visit(
        Overloaded{
            [](const ShowLayer &show) { return QStringLiteral("Show") + quoted(show.layerName); },
            [](const HideLayer &hide) { return QStringLiteral("Hide") + quoted(hide.layerName); },
            [](const Pause &pause) {
                return QStringLiteral("Pause  ") + formatPause(pause.seconds);
            },
            [](const SetLayerProperty &set) {
                return propKeyLabel(set.key) + quoted(set.layerName) + QStringLiteral("  →  ")
                       + propValueLabel(set.key, set.value);
            },
            [](const AddLayer &add) {
                return QStringLiteral("Add ") + layerTypeLabel(add.layerType)
                       + quoted(add.props.value(QStringLiteral("name"), add.layerType));
            }},
        kind);
}

QString MacroStep::systemImage() const
{
    return std::visit(Overloaded{[](const ShowLayer &) { return QStringLiteral("eye.fill"); },
                                 [](const HideLayer &) { return QStringLiteral("eye.slash"); },
                                 [](const Pause &) { return QStringLiteral("clock"); },
                                 [](const SetLayerProperty &set) { return propKeyIcon(set.key); },
                                 [](const AddLayer &add) { return layerTypeIcon(add.layerType); }},
                      kind);
}

double Macro::pauseTotal() const
{
    double total = 0; // s
    for (const MacroStep &step : steps) {
        if (const auto *pause = std::get_if<Pause>(&step.kind))
            total += pause->seconds;
    }
    return total;
}

QString formatPause(double seconds)
{
    if (seconds < 1)
        return encNumber(seconds * 1000, 0) + QStringLiteral(" ms");
    const bool isWhole = std::trunc(seconds) == seconds;
    return encNumber(seconds, isWhole ? 0 : 3) + QStringLiteral(" s");
}

} // namespace tessara
