#include "UI/WindowFixture.h"

#include "Core/VirtualCardChannel.h"

#include <QTest>

namespace tessara {
namespace {

class MonitorTest : public WindowFixture
{
protected:
    MonitorTest()
    {
        EXPECT_TRUE(monitorEngine.show(QStringLiteral("MonitorWindow"),
                                       {{QStringLiteral("channel"), virtualCardChannel(support)}}));
        monitor = monitorEngine.rootObjects().value(0)->findChild<QQuickItem *>(
            QStringLiteral("monitor"));
    }

    WindowEngine monitorEngine;
    QQuickItem *monitor = nullptr;
};

TEST_F(MonitorTest, ShowsNoSignalUntilTheOutputStartsAndAgainWhenItStops)
{
    EXPECT_FALSE(monitor->property("hasSignal").toBool());

    app->startDeckLinkOutput();
    EXPECT_TRUE(until([this] { return monitor->property("hasSignal").toBool(); }));

    app->stopDeckLinkOutput();
    EXPECT_TRUE(until([this] { return !monitor->property("hasSignal").toBool(); }));
}

TEST_F(MonitorTest, ShowsTheFillThatTheCardWasSent)
{
    ShapeLayer *shape = document->addTemplateShapeLayer(ShapeKind::rectangle);
    shape->setColor({0, 1, 0, 1});
    shape->setCornerRadius(0);
    shape->setPosition({0, 0});
    shape->setSize({1920, 1080});
    monitor->setProperty("mode", QStringLiteral("fill"));

    app->startDeckLinkOutput();

    EXPECT_TRUE(until([this] {
        const QImage picture = monitor->window()->grabWindow();
        return picture.pixelColor(picture.rect().center()) == QColor(0, 255, 0);
    }));
}

} // namespace
} // namespace tessara
