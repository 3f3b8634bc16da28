// A document whose operator is recorded, on a clock that stands still.
#pragma once

#include <QTemporaryDir>

#include "Base/ManualClock.h"
#include "Core/Macros/MacroFormat.h"
#include "Core/Macros/MacroManager.h"
#include "Core/Macros/MacroRecorder.h"
#include "Models/DocumentHistory.h"

#include <gtest/gtest.h>

namespace tessara {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

class MacroFixture : public testing::Test
{
protected:
    /// A title whose watches stand.
    TextLayer *addTitle()
    {
        TextLayer *title = document.addTextLayer();
        settle();
        return title;
    }

    /// Long enough for any property to count as changed.
    void settle() { clock.advance(milliseconds{600}); }

    void startRecording() { macros.setIsRecording(true); }

    QStringList recordedTexts() const { return textsOf(macros.recordingSteps()); }

    static QStringList textsOf(const QList<MacroStep> &steps)
    {
        QStringList texts;
        for (const MacroStep &step : steps)
            texts.append(step.displayName());
        return texts;
    }

    /// A macro of the steps, in no list.
    static Macro macroOf(const QList<MacroStep::Kind> &kinds)
    {
        Macro macro{.id = QUuid::createUuid(), .name = QStringLiteral("Macro"), .steps = {}};
        for (const MacroStep::Kind &kind : kinds)
            macro.steps.append({QUuid::createUuid(), kind});
        return macro;
    }

    static SetLayerProperty setText(const QUuid &id, const QString &text)
    {
        return {id, QString(), QStringLiteral("text"), text};
    }

    /// Adds the macro to the list, as a file of it would.
    Macro imported(const Macro &macro)
    {
        EXPECT_EQ(macros.importMacros(*encodeMacros({macro})), 1);
        return macros.macros().last();
    }

    /// "2026-11-20" at that time of day.
    void setTimeOfDay(int hour, int minute, int second, int day = 20)
    {
        clock.setWallClock(QDateTime(QDate(2026, 11, day), QTime(hour, minute, second)));
    }

    QTemporaryDir data;
    ManualClock clock;
    Settings settings{data.filePath(QStringLiteral("settings.json"))};
    CanvasDocument document{clock};
    MacroManager macros{clock, settings, &document};
    MacroRecorder recorder{macros, document, clock};
    DocumentHistory history{document, clock, [this] { return macros.isRunning(); }};
};

} // namespace tessara
