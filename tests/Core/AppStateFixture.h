// The application on the manual clock, with the virtual card behind it.
#pragma once

#include <QCoreApplication>
#include <QTemporaryDir>

#include "Base/ManualClock.h"
#include "Core/AppState.h"
#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/VirtualCard.h"
#include "Rendering/ApplicationFonts.h"

#include <gtest/gtest.h>

#include <array>

namespace tessara {

class AppStateTest : public testing::Test
{
protected:
    static constexpr int first = 0; // can key externally
    static constexpr int second = 1;

    static void SetUpTestSuite()
    {
        static const bool isPrepared = [] {
            useDeckLinkLibrary(QStringLiteral(VIRTUAL_CARD_PATH));
            loadApplicationFonts();
            return true;
        }();
        ASSERT_TRUE(isPrepared);
    }

    static VirtualCard preparedCard()
    {
        const std::optional<VirtualCard> card = VirtualCard::find();
        if (!card)
            qFatal("No virtual card at %s", VIRTUAL_CARD_PATH);
        card->reset();
        card->setFreeRunning(true);
        const QString channel =
            QStringLiteral("tessara-test-%1").arg(QCoreApplication::applicationPid());
        EXPECT_TRUE(card->setChannel(channel));
        return *card;
    }

    ~AppStateTest() override { card.reset(); }

    DeckLinkManager &fill() { return *app.deckLinkManager(); }
    DeckLinkManager &key() { return *app.deckLinkKeyManager(); }
    CanvasDocument &document() { return *app.document(); }

    void selectMode(DeckLinkManager &manager, const QString &name)
    {
        for (const DeckLinkDisplayMode &mode : manager.modes()) {
            if (mode.name == name)
                return manager.setSelectedModeID(mode.modeID);
        }
        ADD_FAILURE() << "no mode " << name.toStdString();
    }

    void route(DeckLinkOutputRouting routing) { app.setDeckLinkOutputRouting(routing); }
    void start() { app.startDeckLinkOutput(); }
    qint64 sent(int device) const { return card.frames(device)->sent; }
    bool isEnabled(int device) const { return card.devices()[device].isOutputEnabled; }

    void limitFormats(int device, const QStringList &formats, int rowBytes = 0)
    {
        VirtualCardLimits limits;
        limits.formats = formats;
        limits.rowBytes = rowBytes;
        EXPECT_TRUE(card.limit(device, limits));
    }

    void limitModes(int device, const QStringList &modes)
    {
        VirtualCardLimits limits;
        limits.modes = modes;
        EXPECT_TRUE(card.limit(device, limits));
    }

    /// Four bytes as they were sent.
    std::array<int, 4> bytesAt(int device, int x, int y, int bytesPerPixel = 4) const
    {
        const VirtualCardFrame frame = card.newestFrame(device).value();
        const auto *pixel = reinterpret_cast<const uchar *>(frame.bytes.constData())
                            + qsizetype(y) * frame.rowBytes + qsizetype(x) * bytesPerPixel;
        return {pixel[0], pixel[1], pixel[2], pixel[3]};
    }

    ShapeLayer *addShape(QRectF box, RGBAColor color)
    {
        auto *shape = new ShapeLayer(QUuid::createUuid(), "Shape", ShapeKind::rectangle,
                                     box.topLeft(), box.size());
        shape->setColor(color);
        document().addLayer(CanvasLayerItem(shape));
        return shape;
    }

    void expectStopped(const QString &reason)
    {
        EXPECT_EQ(app.lastErrorMessage().value_or(QString()), reason);
        EXPECT_FALSE(app.isDeckLinkOutputRunning());
        EXPECT_EQ(app.outputLoop(), nullptr);
        EXPECT_FALSE(isEnabled(first));
        EXPECT_FALSE(isEnabled(second));
        const qint64 before = sent(first);
        clock.advance(Seconds{0.2});
        EXPECT_EQ(sent(first), before);
    }

    /// Whatever stopped it, the operator can start it again.
    void expectStartable()
    {
        start();
        EXPECT_TRUE(app.isDeckLinkOutputRunning());
        EXPECT_NE(app.outputLoop(), nullptr);
        EXPECT_EQ(sent(first), 1);
        clock.advance(Seconds{0.05});
        EXPECT_GT(sent(first), 2);
    }

    QTemporaryDir folder;
    VirtualCard card = preparedCard();
    ManualClock clock;
    AppState app{clock, ApplicationSupport(folder.path())};
};

} // namespace tessara
