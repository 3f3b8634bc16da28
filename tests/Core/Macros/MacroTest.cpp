#include "Core/Macros/Macro.h"

#include <QMetaProperty>

#include <gtest/gtest.h>

#include <limits>

namespace tessara {
namespace {

const QUuid layer = QUuid::createUuid();
const QString title = QStringLiteral("Main \"Title\"");

MacroStep stepOf(const MacroStep::Kind &kind)
{
    return {QUuid::createUuid(), kind};
}

MacroStep setStep(const char *key, const char *value)
{
    return stepOf(SetLayerProperty{layer, title, QString::fromUtf8(key), QString::fromUtf8(value)});
}

MacroStep addStep(const char *type, const QMap<QString, QString> &props)
{
    return stepOf(AddLayer{layer, QString::fromUtf8(type), props});
}

TEST(MacroTest, AStepIsReadInOneLine)
{
    EXPECT_EQ(stepOf(ShowLayer{layer, title}).displayName(),
              QStringLiteral("Show  \"Main \"Title\"\""));
    EXPECT_EQ(stepOf(HideLayer{layer, {}}).displayName(), QStringLiteral("Hide  \"\""));
    EXPECT_EQ(stepOf(Pause{1.5}).displayName(), QStringLiteral("Pause  1.500 s"));
    EXPECT_EQ(setStep("opacity", "0.5000").displayName(),
              QStringLiteral("Opacity  \"Main \"Title\"\"  →  50%"));
    EXPECT_EQ(setStep("glow", "%1 %2").displayName(),
              QStringLiteral("glow  \"Main \"Title\"\"  →  %1 %2"));
    EXPECT_EQ(addStep("model", {{QStringLiteral("name"), QStringLiteral("Car")}}).displayName(),
              QStringLiteral("Add 3D Model  \"Car\""));
    EXPECT_EQ(addStep("text", {{QStringLiteral("name"), {}}}).displayName(),
              QStringLiteral("Add Text  \"\""));
    EXPECT_EQ(addStep("windowCapture", {}).displayName(),
              QStringLiteral("Add Window Capture  \"windowCapture\""));
    EXPECT_EQ(addStep("hologram", {}).displayName(), QStringLiteral("Add hologram  \"hologram\""));
}

TEST(MacroTest, AStepHasTheIconOfWhatItDoes)
{
    EXPECT_EQ(stepOf(ShowLayer{}).systemImage(), QStringLiteral("eye.fill"));
    EXPECT_EQ(stepOf(HideLayer{}).systemImage(), QStringLiteral("eye.slash"));
    EXPECT_EQ(stepOf(Pause{}).systemImage(), QStringLiteral("clock"));
    EXPECT_EQ(setStep("fontWeight", "").systemImage(), QStringLiteral("bold"));
    EXPECT_EQ(setStep("glow", "").systemImage(), QStringLiteral("slider.horizontal.3"));
    EXPECT_EQ(addStep("countdown", {}).systemImage(), QStringLiteral("timer"));
    EXPECT_EQ(addStep("hologram", {}).systemImage(), QStringLiteral("plus.square"));
}

TEST(MacroTest, APauseIsReadInMillisecondsOrSeconds)
{
    const std::pair<double, const char *> pauses[] = {
        {0, "0 ms"},      {0.25, "250 ms"},  {0.9996, "1000 ms"}, {1, "1 s"},
        {2, "2 s"},       {1.5, "1.500 s"},  {1.0001, "1.000 s"}, {90.0625, "90.062 s"},
        {3600, "3600 s"}, {-0.5, "-500 ms"}, {-2, "-2000 ms"},    {1e15, "1000000000000000 s"}};
    for (const auto &[seconds, text] : pauses)
        EXPECT_EQ(formatPause(seconds), QString::fromLatin1(text)) << seconds;
}

TEST(MacroTest, EveryNumberOfSecondsHasAText)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();

    EXPECT_EQ(formatPause(infinity), QStringLiteral("inf s"));
    EXPECT_EQ(formatPause(-infinity), QStringLiteral("-inf ms"));
    EXPECT_EQ(formatPause(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("nan s"));
    EXPECT_EQ(formatPause(std::numeric_limits<double>::max()).size(), 309 + 2);
}

TEST(MacroTest, APauseTotalCountsPausesAlone)
{
    Macro macro;
    EXPECT_EQ(macro.pauseTotal(), 0);

    macro.steps = {stepOf(Pause{1.5}), stepOf(ShowLayer{layer, title}), stepOf(Pause{0.25}),
                   setStep("clock", "9")};

    EXPECT_EQ(macro.pauseTotal(), 1.75);
}

TEST(MacroTest, ANewMacroPlaysOnceAndUnscheduled)
{
    const Macro macro;

    EXPECT_FALSE(macro.loopEnabled);
    EXPECT_EQ(macro.loopCount, 0);
    EXPECT_FALSE(macro.scheduleEnabled);
    EXPECT_EQ(macro.scheduleTime, QString());
}

TEST(MacroTest, AMacroIsEqualOnlyInAllItsFields)
{
    const Macro macro{.id = layer, .name = title, .steps = {stepOf(Pause{1})}, .scheduleTime = {}};
    const auto changed = [&macro](auto &&change) {
        Macro copy = macro;
        change(copy);
        return copy;
    };

    EXPECT_EQ(changed([](Macro &) {}), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.id = QUuid(); }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.name.clear(); }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.steps.clear(); }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.steps[0].id = QUuid(); }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.steps[0].kind = Pause{2}; }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.steps[0].kind = ShowLayer{}; }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.loopEnabled = true; }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.loopCount = 1; }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.scheduleEnabled = true; }), macro);
    EXPECT_NE(changed([](Macro &copy) { copy.scheduleTime = title; }), macro);
    EXPECT_NE(stepOf(ShowLayer{layer, title}).kind, stepOf(HideLayer{layer, title}).kind);
}

TEST(MacroTest, AViewReadsItsFieldsByName)
{
    const Macro macro{.id = layer,
                      .name = title,
                      .steps = {stepOf(Pause{2})},
                      .loopCount = 3,
                      .scheduleTime = QStringLiteral("08:00:00")};
    const auto read = [](const auto &gadget, const char *name) {
        const QMetaObject &description = gadget.staticMetaObject;
        return description.property(description.indexOfProperty(name)).readOnGadget(&gadget);
    };

    EXPECT_EQ(read(macro, "name"), QVariant(title));
    EXPECT_EQ(read(macro, "loopCount"), QVariant(qint64(3)));
    EXPECT_EQ(read(macro, "scheduleTime"), QVariant(QStringLiteral("08:00:00")));
    EXPECT_EQ(read(macro, "pauseTotal"), QVariant(2.0));
    EXPECT_EQ(read(macro, "steps").value<QList<MacroStep>>(), macro.steps);
    EXPECT_EQ(read(macro.steps[0], "displayName"), QVariant(QStringLiteral("Pause  2 s")));
    EXPECT_EQ(read(macro.steps[0], "systemImage"), QVariant(QStringLiteral("clock")));
}

} // namespace
} // namespace tessara
