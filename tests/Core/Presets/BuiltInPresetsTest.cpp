// The presets that ship: each of them comes alive whole.
#include "Core/Presets/BuiltInPresets.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QRegularExpression>

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"
#include "Models/Presets/DocumentSnapshot.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/RenderEngine.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class BuiltInPresetsTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }

    QImage render() { return RenderEngine().render(document, std::nullopt).value(); }

    /// The one that bears the field.
    TextPreset presetWithField(const QString &key) const
    {
        for (const TextPreset &preset : presets) {
            for (const TextPresetEntry &entry : preset.entries) {
                if (entry.fieldKey == key)
                    return preset;
            }
        }
        return {};
    }

    const QList<TextPreset> presets = BuiltInPresets().allBuiltIn();
    ManualClock clock;
    CanvasDocument document{clock};
};

TEST_F(BuiltInPresetsTest, ThereAreEnoughAndEachHasAnIdOfItsOwn)
{
    QSet<QString> ids;
    for (const TextPreset &preset : presets) {
        ids.insert(preset.id);
        EXPECT_FALSE(preset.name.isEmpty());
    }

    EXPECT_GE(presets.size(), 24);
    EXPECT_EQ(ids.size(), presets.size());
}

TEST_F(BuiltInPresetsTest, EachComesAliveWholeInsideTheCanvasAndIsToBeSeen)
{
    const QRectF canvas(0, 0, 1920, 1080);
    for (const TextPreset &preset : presets) {
        SCOPED_TRACE(preset.name.toStdString());
        document.addTextPreset(preset);
        const QList<CanvasLayerItem> layers = document.orderedLayers();
        EXPECT_EQ(layers.size(),
                  preset.rects.size() + preset.images.size() + preset.entries.size());
        for (const CanvasLayerItem &item : layers) {
            const Layer *layer = layerOf(item);
            const auto *sized = qobject_cast<const SizedLayer *>(layer);
            const QRectF place = sized ? sized->frame() : QRectF(layer->position(), QSizeF(1, 1));
            EXPECT_TRUE(canvas.contains(place)) << layer->name().toStdString();
        }
        QImage empty(1920, 1080, QImage::Format_RGBA8888_Premultiplied);
        empty.fill(Qt::transparent);
        EXPECT_NE(render(), empty);
        document.removeSelectedLayers();
        ASSERT_TRUE(document.layerOrder().isEmpty());
    }
}

TEST_F(BuiltInPresetsTest, NoPictureIsMadeLargerThanItWasDrawn)
{
    for (const TextPreset &preset : presets) {
        for (const PresetImageEntry &image : preset.images)
            EXPECT_GE(std::min(image.size.width(), image.size.height()), 24)
                << preset.name.toStdString() << ": " << image.name.toStdString();
    }
}

TEST_F(BuiltInPresetsTest, EveryFontIsInstalled)
{
    for (const TextPreset &preset : presets) {
        for (const TextPresetEntry &entry : preset.entries) {
            const QString family = entry.fontFamily.value_or(QStringLiteral("Inter"));
            EXPECT_TRUE(QFontDatabase::hasFamily(family)) << family.toStdString();
        }
    }
}

TEST_F(BuiltInPresetsTest, TheCardsThatLiveServicesFillHaveTheirFields)
{
    for (const char *key :
         {"title", "subtitle", "button_text", "facebook_comment", "youtube_comment"})
        EXPECT_FALSE(presetWithField(QLatin1String(key)).id.isEmpty()) << key;
    const TextPreset subscribe = presetWithField(QStringLiteral("button_text"));
    EXPECT_TRUE(std::any_of(subscribe.images.begin(), subscribe.images.end(),
                            [](const PresetImageEntry &image) {
                                return image.placeholderKey == QStringLiteral("profile_image")
                                       && image.maskShape == ImageLayerMaskShape::circle;
                            }));
}

TEST_F(BuiltInPresetsTest, ASnapshotOfOneDrawsTheSameFrame)
{
    for (const TextPreset &preset : presets) {
        SCOPED_TRACE(preset.name.toStdString());
        document.addTextPreset(preset);
        const QImage before = render();
        const TextPreset snapshot =
            presetOf(document, QStringLiteral("copy"), QStringLiteral("Copy"));
        document.removeSelectedLayers();

        document.addTextPreset(snapshot);

        EXPECT_EQ(render(), before);
        document.removeSelectedLayers();
    }
}

} // namespace
} // namespace tessara
