#include "Core/Presets/PresetFolder.h"
#include "Core/Presets/SavedVersions.h"

#include <QProcess>

#include <chrono>
#include <random>
#include <set>
#include <thread>

namespace tessara {
namespace {

class PresetKillTest : public PresetFolder
{
protected:
    /// Lets the program save for a moment and kills it, wherever it is.
    void saveAndKill(std::chrono::microseconds moment)
    {
        QProcess saver;
        saver.start(QStringLiteral(PRESET_SAVER_PATH), {support.directory()});
        ASSERT_TRUE(saver.waitForReadyRead());
        std::this_thread::sleep_for(moment);
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());
        ASSERT_EQ(saver.exitStatus(), QProcess::CrashExit); // it was still at it
    }
};

// The one test that waits in earnest: a kill has no other clock.
TEST_F(PresetKillTest, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne)
{
    constexpr int kills = 200;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> moment(0, 10'000); // µs; several saves
    const TemplatePresetStore store(support, clock);
    std::set<QString> seen;

    for (int kill = 0; kill < kills; ++kill) {
        saveAndKill(std::chrono::microseconds(moment(random)));

        const QList<TextPreset> presets = store.loadAll().value();
        ASSERT_EQ(presets.size(), 1) << "kill " << kill;
        seen.insert(presets[0].images.at(0).pngBase64);
    }

    EXPECT_EQ(seen, (std::set<QString>{pictureOf(0), pictureOf(1)}));
}

} // namespace
} // namespace tessara
