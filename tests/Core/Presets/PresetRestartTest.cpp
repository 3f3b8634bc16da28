// A preset outlives the pictures that it was made of, and the program that made it.
#include "Base/ManualClock.h"
#include "Core/Presets/PresetLibrary.h"
#include "Models/CanvasDocument.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/RenderEngine.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessara {
namespace {

TEST(PresetRestartTest, ASnapshotDrawsTheSameFrameAfterARestartWithoutItsPictureFile)
{
    loadApplicationFonts();
    const QTemporaryDir data;
    const ApplicationSupport support(data.path());
    const QString file = data.filePath(QStringLiteral("logo.png"));
    QImage logo(300, 200, QImage::Format_ARGB32);
    logo.fill(Qt::transparent);
    QPainter painter(&logo);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(20, 160, 90, 180));
    painter.drawEllipse(20, 10, 250, 170);
    painter.end();
    ASSERT_TRUE(logo.save(file));
    const ManualClock clock;
    QImage before;
    {
        ManualClock ownClock;
        CanvasDocument document(ownClock);
        document.addTemplateShapeLayer(ShapeKind::ellipse);
        const auto image = document.addImageLayer(QUrl::fromLocalFile(file));
        ASSERT_TRUE(image);
        (*image)->setMaskShape(ImageLayerMaskShape::hexagon);
        (*image)->setPosition({100.5, 700.25});
        (*image)->setOpacity(0.7);
        TextLayer *title = document.addTextLayer();
        title->setText(QStringLiteral("สวัสดี ที่นี่"));
        title->setOutlineWidth(3);
        title->setTextBoxSize(QSizeF(700, 200));
        before = RenderEngine().render(document, std::nullopt).value();
        PresetLibrary library(support, clock, BuiltInPresets(QString()));
        const auto preset = library.snapshot(document, QStringLiteral("Mine"), std::nullopt);
        ASSERT_TRUE(preset);
        ASSERT_TRUE(library.saveTemplatePreset(*preset));
    }
    ASSERT_TRUE(QFile::remove(file));

    ManualClock laterClock;
    CanvasDocument restarted(laterClock);
    const PresetLibrary library(support, clock, BuiltInPresets(QString()));
    ASSERT_EQ(library.userTextPresets().size(), 1);
    restarted.addTextPreset(library.userTextPresets().first());

    EXPECT_EQ(RenderEngine().render(restarted, std::nullopt).value(), before);
}

} // namespace
} // namespace tessara
