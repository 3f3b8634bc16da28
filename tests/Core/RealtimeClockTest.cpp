#include "Core/AppStateFixture.h"

#include <QLocale>

namespace tessara {
namespace {

class RealtimeClockTest : public AppStateTest
{
protected:
    RealtimeClockTest() { clock.setWallClock(QDateTime(QDate(2026, 11, 20), QTime(20, 29, 58))); }

    QString formatted(QTime time) const
    {
        return QLocale().toString(time, timeOfDayFormat(QLocale()));
    }
};

TEST(TimeOfDayFormatTest, HoursRunToTwentyThreeInEveryLocale)
{
    const QTime time(15, 4, 5);
    const auto inLocale = [&](const QString &name) {
        const QLocale locale(name);
        return locale.toString(time, timeOfDayFormat(locale));
    };

    EXPECT_EQ(inLocale("C"), "15:04:05");
    EXPECT_EQ(inLocale("en_US"), "15:04:05");
    EXPECT_EQ(inLocale("en_GB"), "15:04:05");
    EXPECT_EQ(inLocale("de_DE"), "15:04:05");
    EXPECT_EQ(inLocale("ko_KR").left(2), "15");
    EXPECT_EQ(inLocale("fi_FI"), "15.04.05");
}

TEST(TimeOfDayFormatTest, EveryLocaleHasHourMinuteAndSecondAndNothingElse)
{
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    ASSERT_GT(locales.size(), 300);
    for (const QLocale &locale : locales) {
        const QLocale latin(QLocale::C);
        const QString text = latin.toString(QTime(15, 4, 5), timeOfDayFormat(locale));
        EXPECT_TRUE(text.startsWith("15"))
            << locale.name().toStdString() << " " << text.toStdString();
        EXPECT_FALSE(text.contains("pm", Qt::CaseInsensitive)) << text.toStdString();
        EXPECT_FALSE(text.contains("UTC")) << text.toStdString();
    }
}

TEST_F(RealtimeClockTest, ATimerLayerStartsWithTheTimeAndItsValues)
{
    app.setLastErrorMessage("old");
    app.setLastExportURL(QUrl("file:///tmp/x"));

    const TextLayer *layer = app.addTimerLayer();

    EXPECT_EQ(layer->name(), "Timer 1");
    EXPECT_EQ(layer->text(), formatted({20, 29, 58}));
    EXPECT_EQ(layer->fontSize(), 96);
    EXPECT_FALSE(layer->fontFamily().has_value());
    EXPECT_FALSE(layer->fontWeight().has_value());
    EXPECT_EQ(layer->color(), RGBAColor::white);
    EXPECT_EQ(layer->outlineColor(), (RGBAColor{0, 0, 0, 1}));
    EXPECT_EQ(layer->outlineWidth(), 0);
    EXPECT_EQ(layer->position(), QPointF(555, 123));
    EXPECT_FALSE(layer->textBoxSize().has_value());
    EXPECT_EQ(layer->horizontalAlignment(), TextLayerHorizontalAlignment::leading);
    EXPECT_EQ(layer->fieldKey(), QStringLiteral("realtime_timer_1"));
    EXPECT_EQ(layer->fieldKind(), TemplateFieldKind::timer);
    EXPECT_FALSE(layer->isHidden());
    EXPECT_FALSE(layer->isLocked());
    EXPECT_FALSE(layer->presetGroupID().has_value());
    EXPECT_EQ(document().selectedLayerIDs(), QSet<QUuid>{layer->id()});
    EXPECT_FALSE(app.lastErrorMessage().has_value());
    EXPECT_FALSE(app.lastExportURL().has_value());
}

TEST_F(RealtimeClockTest, TimerLayersAreNumberedByTheirCount)
{
    document().addTextLayer();
    app.addTimerLayer();

    EXPECT_EQ(app.addTimerLayer()->name(), "Timer 2");
    EXPECT_EQ(document().layersOf<TextLayer>().last()->fieldKey(),
              QStringLiteral("realtime_timer_2"));
}

TEST_F(RealtimeClockTest, EverySecondTheTimeIsWrittenIntoEveryClockLayer)
{
    const TextLayer *one = app.addTimerLayer();
    const TextLayer *two = app.addTimerLayer();

    clock.advance(Seconds{1});
    EXPECT_EQ(one->text(), formatted({20, 29, 59}));
    clock.advance(Seconds{1});

    EXPECT_EQ(one->text(), formatted({20, 30, 0}));
    EXPECT_EQ(two->text(), one->text());
}

TEST_F(RealtimeClockTest, ATextWrittenByHandLastsUntilTheNextFiring)
{
    TextLayer *layer = app.addTimerLayer();
    layer->setText("by hand");
    clock.advance(Seconds{0.9});
    EXPECT_EQ(layer->text(), "by hand");

    clock.advance(Seconds{0.1});

    EXPECT_EQ(layer->text(), formatted({20, 29, 59}));
}

TEST_F(RealtimeClockTest, ItsTicksLeaveTheHistoryAlone)
{
    UndoStack &undo = *app.undoStack();
    TextLayer *title = document().addTextLayer();
    app.addTimerLayer();
    clock.advance(Seconds{1});
    title->setText("headline");
    clock.advance(Seconds{1});
    undo.undo();
    const int entries = undo.count();

    clock.advance(Seconds{100});

    EXPECT_EQ(undo.count(), entries);
    undo.redo();
    EXPECT_EQ(title->text(), "headline");
}

TEST_F(RealtimeClockTest, ItsTicksAreNoStepsOfAMacro)
{
    MacroManager &macros = *app.macros();
    TextLayer *layer = app.addTimerLayer();
    clock.advance(Seconds{1});
    macros.clearLog();
    macros.setIsRecording(true);

    clock.advance(Seconds{10});
    EXPECT_TRUE(macros.recordingSteps().isEmpty());
    EXPECT_TRUE(macros.log().isEmpty());

    layer->setText("by hand");
    clock.advance(Seconds{2});
    EXPECT_EQ(macros.recordingSteps().size(), 1);
}

TEST_F(RealtimeClockTest, OtherTextLayersAreLeftAlone)
{
    TextLayer *other = document().addTextLayer();
    other->setText("title");
    other->setFieldKind(TemplateFieldKind::text);
    app.addTimerLayer();

    clock.advance(Seconds{3});

    EXPECT_EQ(other->text(), "title");
}

TEST_F(RealtimeClockTest, AnUnchangedTimeIsNotWrittenAgain)
{
    const TextLayer *layer = app.addTimerLayer();
    int writes = 0;
    const QObject listener;
    QObject::connect(layer, &TextLayer::textChanged, &listener, [&] { ++writes; });

    app.updateRealtimeTimerText();

    EXPECT_EQ(writes, 0);
}

TEST_F(RealtimeClockTest, WithoutAClockLayerTheTimeIsNeverFormatted)
{
    CanvasDocument bare(clock);
    const RealtimeClock realtime(clock, bare);
    bare.addTextLayer();
    clock.advance(Seconds{5});
    EXPECT_EQ(realtime.formattings(), 0u);

    bare.layersOf<TextLayer>().first()->setFieldKind(TemplateFieldKind::timer);
    clock.advance(Seconds{2});

    EXPECT_EQ(realtime.formattings(), 2u);
}

} // namespace
} // namespace tessara
