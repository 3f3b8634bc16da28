#include "Core/Macros/MacroFixture.h"

namespace tessara {
namespace {

/// The list of macros, edited and exchanged as files.
class MacroListTest : public MacroFixture
{
protected:
    Macro addMacro()
    {
        return imported(macroOf({Pause{1}, ShowLayer{QUuid::createUuid(), QStringLiteral("T")}}));
    }

    /// As a restart would find it.
    QList<Macro> saved() const
    {
        Settings reread(settings.file());
        return decodeMacros(reread.value(MacroManager::saveKey).toString().toUtf8())
            .value_or(QList<Macro>());
    }
};

TEST_F(MacroListTest, EveryEditIsSaved)
{
    const Macro macro = addMacro();
    EXPECT_EQ(saved(), macros.macros());

    macros.updateMacroLoop(macro.id, true, 7);
    macros.updateMacroSchedule(macro.id, true, QStringLiteral("20:30:00"));
    macros.renameMacro(macro.id, QStringLiteral("  Evening\n"));
    macros.updateStep(macro.id, macro.steps[0].id, Pause{2.5});
    macros.deleteStep(macro.id, macro.steps[1].id);

    const Macro edited = macros.macros().first();
    EXPECT_TRUE(edited.loopEnabled);
    EXPECT_EQ(edited.loopCount, 7);
    EXPECT_TRUE(edited.scheduleEnabled);
    EXPECT_EQ(edited.scheduleTime, QStringLiteral("20:30:00"));
    EXPECT_EQ(edited.name, QStringLiteral("Evening"));
    ASSERT_EQ(edited.steps.size(), 1);
    EXPECT_EQ(edited.steps[0].id, macro.steps[0].id);
    EXPECT_EQ(edited.steps[0].kind, MacroStep::Kind(Pause{2.5}));
    EXPECT_EQ(saved(), macros.macros());

    macros.deleteMacro(macro.id);
    EXPECT_TRUE(macros.macros().isEmpty());
    EXPECT_TRUE(saved().isEmpty());
}

TEST_F(MacroListTest, AnUnknownIdOrABadValueChangesAndSavesNothing)
{
    const Macro macro = addMacro();
    int notices = 0;
    QObject::connect(&macros, &MacroManager::macrosChanged, &macros, [&] { ++notices; });
    const QUuid unknown = QUuid::createUuid();

    macros.updateMacroLoop(unknown, true, 1);
    macros.updateMacroSchedule(unknown, true, QString());
    macros.renameMacro(unknown, QStringLiteral("Name"));
    macros.renameMacro(macro.id, QStringLiteral(" \n"));
    macros.updateStep(macro.id, unknown, Pause{1});
    macros.updateStep(unknown, macro.steps[0].id, Pause{1});
    macros.updateStep(macro.id, macro.steps[0].id, Pause{std::numeric_limits<double>::infinity()});
    macros.deleteStep(macro.id, unknown);
    macros.deleteStep(unknown, macro.steps[0].id);
    macros.deleteMacro(unknown);

    EXPECT_EQ(notices, 0);
    EXPECT_EQ(macros.macros(), QList<Macro>{macro});
}

TEST_F(MacroListTest, AnExportedFileIsImportedUnderNewIds)
{
    const Macro macro = addMacro();
    macros.updateMacroSchedule(macro.id, true, QStringLiteral("20:30:00"));
    const QByteArray file = *macros.exportJSON();

    EXPECT_EQ(macros.importMacros(file), 1);
    EXPECT_EQ(macros.importMacros(file), 1);

    ASSERT_EQ(macros.macros().size(), 3);
    QSet<QUuid> ids;
    for (Macro each : macros.macros()) {
        ids.insert(each.id);
        each.id = macro.id;
        EXPECT_EQ(each, macros.macros().first());
    }
    EXPECT_EQ(ids.size(), 3);
}

TEST_F(MacroListTest, AFileThatCannotBeReadAddsNothing)
{
    addMacro();
    const QList<Macro> before = macros.macros();
    const QByteArray good = *macros.exportJSON();
    for (const QByteArray &file : {QByteArray(), QByteArray("{}"), good.chopped(1),
                                   QByteArray("[7]"), QByteArray("null"), QByteArray(200'000, '[')})
        EXPECT_EQ(macros.importMacros(file), 0) << file.left(40).constData();

    EXPECT_EQ(macros.macros(), before);
    EXPECT_EQ(saved(), before);
}

} // namespace
} // namespace tessara
