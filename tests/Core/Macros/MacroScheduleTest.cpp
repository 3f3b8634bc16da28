#include "Core/Macros/MacroFixture.h"

namespace tessara {
namespace {

class MacroScheduleTest : public MacroFixture
{
protected:
    /// A macro that takes as long as its pause.
    Macro schedule(const QString &time, const QString &name, double pause = 0)
    {
        const Macro macro = imported(macroOf({Pause{pause}}));
        macros.updateMacroSchedule(macro.id, true, time);
        macros.renameMacro(macro.id, name);
        return macros.macros().last();
    }

    /// Notes each start with its name and its time of day.
    void noteFirings()
    {
        QObject::connect(&macros, &MacroManager::isRunningChanged, &macros, [this] {
            if (!macros.isRunning())
                return;
            for (const Macro &macro : macros.macros()) {
                if (macro.id == macros.runningMacroID())
                    firings.append(macro.name + QLatin1Char(' ')
                                   + clock.wallClock().toString(QStringLiteral("dd HH:mm:ss")));
            }
        });
    }

    void SetUp() override { noteFirings(); }

    /// What the log says of firings that did not come about.
    QStringList misses() const
    {
        QStringList texts;
        for (const MacroLogEntry &entry : macros.log()) {
            EXPECT_FALSE(entry.isRecorded);
            texts.append(entry.label + QStringLiteral(" | ") + entry.detail);
        }
        return texts;
    }

    QStringList firings;
};

TEST_F(MacroScheduleTest, AMacroFiresInItsSecondEveryDay)
{
    setTimeOfDay(20, 29, 58);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));

    clock.advance(seconds{2});
    EXPECT_EQ(firings, QStringList{QStringLiteral("A 20 20:30:00")});

    clock.advance(hours{48});
    EXPECT_EQ(firings,
              (QStringList{QStringLiteral("A 20 20:30:00"), QStringLiteral("A 21 20:30:00"),
                           QStringLiteral("A 22 20:30:00")}));
}

TEST_F(MacroScheduleTest, TwoDaysAcrossMidnight)
{
    setTimeOfDay(12, 0, 0);
    schedule(QStringLiteral("23:59:59"), QStringLiteral("Last"));
    schedule(QStringLiteral("00:00:00"), QStringLiteral("First"));

    clock.advance(hours{48});

    EXPECT_EQ(
        firings,
        (QStringList{QStringLiteral("Last 20 23:59:59"), QStringLiteral("First 21 00:00:00"),
                     QStringLiteral("Last 21 23:59:59"), QStringLiteral("First 22 00:00:00")}));
}

TEST_F(MacroScheduleTest, AnyPhaseOfTheClockHitsEverySecond)
{
    schedule(QStringLiteral("12:00:01"), QStringLiteral("A"));
    for (int phase = 0; phase < 1000; phase += 7) {
        firings.clear();
        clock.setWallClock(QDateTime(QDate(2026, 11, 20), QTime(11, 59, 57, phase)));
        clock.advance(seconds{6});
        EXPECT_EQ(firings.size(), 1) << phase;
    }
}

TEST_F(MacroScheduleTest, AClockThatJumpsForwardPassesOver)
{
    setTimeOfDay(20, 0, 0);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    clock.advance(seconds{10});

    setTimeOfDay(21, 0, 10);
    clock.advance(hours{1});

    EXPECT_TRUE(firings.isEmpty());
}

TEST_F(MacroScheduleTest, AClockThatJumpsBackFiresAgain)
{
    setTimeOfDay(20, 29, 59);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    clock.advance(seconds{10});
    ASSERT_EQ(firings.size(), 1);

    setTimeOfDay(19, 30, 10);
    clock.advance(hours{1});

    EXPECT_EQ(firings.size(), 2);
}

TEST_F(MacroScheduleTest, OfTwoInOneSecondTheFirstWins)
{
    setTimeOfDay(20, 29, 59);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("First"), 0.1);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("Second"), 0.1);

    clock.advance(seconds{5});

    EXPECT_EQ(firings, QStringList{QStringLiteral("First 20 20:30:00")});
}

TEST_F(MacroScheduleTest, AMacroThatIsDueWhileAnotherRunsIsPassedOver)
{
    setTimeOfDay(20, 29, 59);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("Long"), 10);
    schedule(QStringLiteral("20:30:05"), QStringLiteral("Missed"));

    clock.advance(seconds{60});

    EXPECT_EQ(firings, QStringList{QStringLiteral("Long 20 20:30:00")});
}

TEST_F(MacroScheduleTest, TheLogTellsWhatAnotherMacroHasKeptFromPlaying)
{
    setTimeOfDay(20, 29, 58);
    clock.advance(seconds{1});
    schedule(QStringLiteral("20:30:00"), QStringLiteral("Long"), 10);
    schedule(QStringLiteral("20:30:05"), QStringLiteral("Missed"));

    clock.advance(seconds{60});

    ASSERT_EQ(misses(),
              QStringList{QStringLiteral(
                  "Missed  \"Missed\" | Not played at 20:30:05: another macro was running.")});
    EXPECT_EQ(macros.log().first().icon, QStringLiteral("clock"));
    EXPECT_EQ(macros.log().first().date.time(), QTime(20, 30, 5));
}

TEST_F(MacroScheduleTest, TheLogTellsWhatARecordingHasKeptFromPlaying)
{
    setTimeOfDay(20, 29, 58);
    clock.advance(seconds{1});
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    startRecording();

    clock.advance(seconds{5});

    EXPECT_EQ(misses(), QStringList{QStringLiteral(
                            "Missed  \"A\" | Not played at 20:30:00: a recording was under way.")});
}

TEST_F(MacroScheduleTest, TheLogTellsWhatABusyOrSleepingMachineHasPassedOver)
{
    setTimeOfDay(20, 29, 58);
    clock.advance(seconds{1});
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    schedule(QStringLiteral("20:30:03"), QStringLiteral("B"));
    schedule(QStringLiteral("20:30:04"), QStringLiteral("C"));
    schedule(QStringLiteral(" 20:30:1"), QStringLiteral("Never due"));
    const Macro off = schedule(QStringLiteral("20:30:01"), QStringLiteral("Off"));
    macros.updateMacroSchedule(off.id, false, off.scheduleTime);

    clock.stall(Seconds{4.5}); // from 20:29:59 into 20:30:03
    clock.advance(seconds{5});

    EXPECT_EQ(firings,
              (QStringList{QStringLiteral("B 20 20:30:03"), QStringLiteral("C 20 20:30:04")}));
    EXPECT_EQ(misses(), QStringList{QStringLiteral(
                            "Missed  \"A\" | Not played at 20:30:00: the program was busy or the "
                            "machine asleep, or its clock was set.")});
}

TEST_F(MacroScheduleTest, TheLogTellsWhatANightAsleepHasPassedOver)
{
    setTimeOfDay(23, 0, 0);
    clock.advance(seconds{1});
    schedule(QStringLiteral("23:30:00"), QStringLiteral("Last"));
    schedule(QStringLiteral("06:30:00"), QStringLiteral("First"));
    schedule(QStringLiteral("12:00:00"), QStringLiteral("Noon"));

    setTimeOfDay(7, 0, 0, 21); // its other clock stood still meanwhile
    clock.advance(seconds{1});

    ASSERT_EQ(misses().size(), 2);
    EXPECT_TRUE(misses()[0].startsWith(QStringLiteral("Missed  \"Last\"")));
    EXPECT_TRUE(misses()[1].startsWith(QStringLiteral("Missed  \"First\"")));
}

TEST_F(MacroScheduleTest, WhatFiresInTimeLeavesNoWordInTheLog)
{
    setTimeOfDay(20, 29, 58);
    clock.advance(seconds{1});
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));

    clock.advance(hours{48});
    setTimeOfDay(20, 29, 50, 22); // set back: it fires again
    clock.advance(seconds{20});

    EXPECT_EQ(firings.size(), 3);
    EXPECT_TRUE(misses().isEmpty());
}

TEST_F(MacroScheduleTest, AFiringDuringARecordingIsLost)
{
    setTimeOfDay(20, 29, 59);
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    startRecording();
    clock.advance(milliseconds{1500});
    macros.stopRecording(QString());
    clock.advance(seconds{10});
    EXPECT_TRUE(firings.isEmpty());

    clock.advance(hours{24});
    EXPECT_EQ(firings, QStringList{QStringLiteral("A 21 20:30:00")});
}

TEST_F(MacroScheduleTest, ATimeIsComparedLetterByLetter)
{
    setTimeOfDay(7, 59, 0);
    for (const char *time : {"8:00:00", "08:00", "", " 08:00:00", "24:00:00", "eight"})
        schedule(QLatin1String(time), QLatin1String(time));

    clock.advance(hours{24});

    EXPECT_TRUE(firings.isEmpty());
}

TEST_F(MacroScheduleTest, AScheduleThatIsOffFiresNothing)
{
    setTimeOfDay(20, 29, 59);
    const Macro macro = schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    macros.updateMacroSchedule(macro.id, false, macro.scheduleTime);

    clock.advance(seconds{5});

    EXPECT_TRUE(firings.isEmpty());
}

TEST_F(MacroScheduleTest, WithoutADocumentNothingFires)
{
    schedule(QStringLiteral("20:30:00"), QStringLiteral("A"));
    MacroManager withoutDocument(clock, settings, nullptr);
    int starts = 0;
    QObject::connect(&withoutDocument, &MacroManager::isRunningChanged, &macros, [&] { ++starts; });
    setTimeOfDay(20, 29, 59);
    clock.advance(seconds{5});

    EXPECT_EQ(starts, 0);
}

TEST(MacroScheduleTimeTest, ATimeIsEightCharactersOfThreeNumbers)
{
    for (const char *time : {"00:00:00", "23:59:59", "08:00:00"})
        EXPECT_TRUE(isValidScheduleTime(QLatin1String(time))) << time;
    for (const char *time :
         {"8:00:00", "24:00:00", "12:60:00", "12:00:60", "12:00", "ab:cd:ef", "12-00-00",
          "-1:00:00", "", "12:00:000", "12:0:0:0", " 8:00:00", "08:00: 0", "+8:00:00", "08:+0:00",
          "1:000:00", "08:00:0\n", "0x:00:00"})
        EXPECT_FALSE(isValidScheduleTime(QLatin1String(time))) << time;
}

} // namespace
} // namespace tessara
