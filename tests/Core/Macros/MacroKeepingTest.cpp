// Macros on a disk that fails, and in settings that somebody has damaged.
#include "Base/HostileDisk.h"
#include "Core/AppStateFixture.h"
#include "Core/Macros/MacroFormat.h"

#include <QJsonArray>

namespace tessara {
namespace {

/// An application that is started on a folder, as often as the test likes.
class MacroKeepingTest : public AppStateTest
{
protected:
    std::unique_ptr<AppState> started() { return startedIn(folder.path()); }

    std::unique_ptr<AppState> startedIn(const QString &path)
    {
        return std::make_unique<AppState>(clock, ApplicationSupport(path));
    }

    void store(const QString &key, const QJsonValue &value) const
    {
        ASSERT_TRUE(Settings(file()).setValue(key, value));
    }

    QJsonValue stored(const QString &key) const { return Settings(file()).value(key); }
    QString file() const { return folder.filePath(QStringLiteral("settings.json")); }

    static QByteArray macroText(const QString &name)
    {
        const Macro macro{
            .id = QUuid::createUuid(), .name = name, .steps = {{QUuid::createUuid(), Pause{1}}}};
        return encodeMacros({macro})->mid(1).chopped(1);
    }

    static QStringList namesOf(AppState &application)
    {
        QStringList names;
        for (const Macro &macro : application.macros()->macros())
            names.append(macro.name);
        return names;
    }

    static QString messageOf(const AppState &application)
    {
        return application.lastErrorMessage().value_or(QString());
    }

    /// Five macros, the third of which has a step of no kind. Spelled as no writer of ours would.
    const QString damaged =
        QString::fromUtf8("[ " + macroText("A") + ", " + macroText("B")
                          + R"(, {"id": "7", "name": "C", "steps": [{"x": 1e400}]}, )"
                          + macroText("D") + ",\n" + macroText("E") + "]");
    const QString saveKey = MacroManager::saveKey;
    const QString asideKey = saveKey + QStringLiteral("_unreadable");
};

TEST_F(MacroKeepingTest, TheReadableMacrosLoadAndTheUnreadableTextIsKeptAndTold)
{
    const QString text = QString(damaged).replace(QStringLiteral("1e400"), QStringLiteral("7.0"));
    store(saveKey, text);

    const auto application = started();

    EXPECT_EQ(namesOf(*application), QStringList({"A", "B", "D", "E"}));
    EXPECT_EQ(messageOf(*application),
              "1 of 5 macros could not be read. It is kept in the settings under "
              "\"tessara_macros_v2_unreadable\".");
    EXPECT_EQ(stored(asideKey), QJsonArray{text});
    application->macros()->renameMacro(application->macros()->macros()[0].id, "Z");
    EXPECT_EQ(stored(asideKey), QJsonArray{text});
    const auto again = started();
    EXPECT_EQ(namesOf(*again), QStringList({"Z", "B", "D", "E"}));
    EXPECT_EQ(messageOf(*again), "");
}

TEST_F(MacroKeepingTest, ATextThatIsNoListIsKeptAndTold)
{
    store(saveKey, damaged); // a number beyond all numbers spoils the whole text

    const auto application = started();

    EXPECT_EQ(namesOf(*application), QStringList());
    EXPECT_EQ(messageOf(*application),
              "The macros could not be read. They are kept in the settings under "
              "\"tessara_macros_v2_unreadable\".");
    EXPECT_EQ(stored(asideKey), QJsonArray{damaged});
}

TEST_F(MacroKeepingTest, AValueThatIsNoTextIsKeptAndTold)
{
    store(saveKey, QJsonArray{1, 2});

    EXPECT_NE(messageOf(*started()), "");

    EXPECT_EQ(stored(asideKey), QJsonArray({QJsonArray{1, 2}}));
}

TEST_F(MacroKeepingTest, WhatWasSetAsideStaysWhenMoreIs)
{
    for (const char *text : {"first", "second", "second", "[third]"}) {
        store(saveKey, QLatin1String(text));
        started();
    }

    EXPECT_EQ(stored(asideKey), (QJsonArray{"first", "second", "[third]"}));
}

TEST_F(MacroKeepingTest, NothingStoredAndAnEmptyListAreNoErrors)
{
    EXPECT_EQ(messageOf(*started()), "");
    store(saveKey, QStringLiteral("[]"));
    EXPECT_EQ(messageOf(*started()), "");

    EXPECT_TRUE(stored(asideKey).isUndefined());
}

TEST_F(MacroKeepingTest, ASaveThatFailsIsToldUntilOneSucceeds)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    const auto application = startedIn(disk.path());
    MacroManager &macros = *application->macros();
    ASSERT_EQ(macros.importMacros('[' + macroText("Old") + ']'), 1);
    disk.fill();

    macros.renameMacro(macros.macros()[0].id, "New");

    EXPECT_EQ(messageOf(*application), "The macros could not be saved: No space left on device");
    EXPECT_EQ(namesOf(*application), QStringList("New"));
    EXPECT_EQ(namesOf(*startedIn(disk.path())), QStringList("Old"));
    application->setLastErrorMessage(std::nullopt);
    macros.updateMacroLoop(macros.macros()[0].id, true, 2);
    EXPECT_NE(messageOf(*application), ""); // told again
    disk.makeRoom();
    macros.updateMacroLoop(macros.macros()[0].id, true, 3);
    EXPECT_EQ(messageOf(*application), "");
    EXPECT_EQ(namesOf(*startedIn(disk.path())), QStringList("New"));
}

TEST_F(MacroKeepingTest, ASaveThatSucceedsLeavesTheMessageOfSomebodyElse)
{
    const auto application = started();
    application->setLastErrorMessage("The card is gone");

    application->macros()->importMacros('[' + macroText("A") + ']');

    EXPECT_EQ(messageOf(*application), "The card is gone");
}

TEST_F(MacroKeepingTest, NothingIsWrittenOverTheUnreadableUntilItCouldBeSetAside)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    const QString path = disk.path() + QStringLiteral("/settings.json");
    const QString text = QString(damaged).replace(QStringLiteral("1e400"), QStringLiteral("7.0"));
    ASSERT_TRUE(Settings(path).setValue(saveKey, text));
    disk.fill();

    const auto application = startedIn(disk.path());
    MacroManager &macros = *application->macros();
    EXPECT_EQ(namesOf(*application), QStringList({"A", "B", "D", "E"}));
    EXPECT_EQ(messageOf(*application), "1 of 5 macros could not be read, and could not be set "
                                       "aside: No space left on device");
    macros.renameMacro(macros.macros()[0].id, "Z");
    EXPECT_EQ(Settings(path).value(saveKey), text);

    disk.makeRoom();
    macros.renameMacro(macros.macros()[0].id, "Y");
    EXPECT_EQ(Settings(path).value(asideKey), QJsonArray{text});
    EXPECT_EQ(namesOf(*startedIn(disk.path())), QStringList({"Y", "B", "D", "E"}));
}

TEST_F(MacroKeepingTest, SettingsThatCannotBeReadAreTold)
{
    QFile torn(file());
    ASSERT_TRUE(torn.open(QIODevice::WriteOnly));
    torn.write("{ torn");
    torn.close();

    EXPECT_EQ(messageOf(*started()),
              "The settings could not be read. They are kept as \"" + file() + ".unreadable\".");
    EXPECT_EQ(messageOf(*started()), "");
}

} // namespace
} // namespace tessara
