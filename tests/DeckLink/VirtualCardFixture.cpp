#include "DeckLink/VirtualCardFixture.h"

#include <QCoreApplication>

#include "DeckLink/DeckLinkAPIDispatch.h"

namespace tessara {
namespace {

VirtualCard loadedCard()
{
    static const bool isChosen = [] {
        useDeckLinkLibrary(QStringLiteral(VIRTUAL_CARD_PATH));
        return true;
    }();
    Q_UNUSED(isChosen)
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        qFatal("No virtual card at %s", VIRTUAL_CARD_PATH);
    return *card;
}

} // namespace

QString testChannel()
{
    return QStringLiteral("tessara-test-%1").arg(QCoreApplication::applicationPid());
}

FrameBytes patternOfBytes(qsizetype size)
{
    FrameBytes bytes = FrameBytes::allocate(size);
    quint32 state = 1;
    for (qsizetype index = 0; index < size; ++index) {
        state = state * 1664525 + 1013904223;
        bytes.writableData()[index] = quint8(state >> 24);
    }
    return bytes;
}

DeckLinkFrameBuffer frame1080()
{
    static const FrameBytes bytes = patternOfBytes(qsizetype(1920) * 1080 * 4);
    return {bytes, 1920, 1080, 1920 * 4};
}

VirtualCardFixture::VirtualCardFixture()
    : card(loadedCard())
{
    card.reset();
    card.setFreeRunning(true);
    EXPECT_TRUE(card.setChannel(testChannel()));
}

VirtualCardFixture::~VirtualCardFixture()
{
    card.reset();
}

qint64 VirtualCardFixture::modeID(int device, const QString &name) const
{
    for (const DeckLinkDisplayModeInfo &mode :
         DeckLinkBridge().displayModesForDeviceAtIndex(device))
        if (mode.name == name)
            return mode.modeID;
    ADD_FAILURE() << "no mode " << name.toStdString();
    return 0;
}

void VirtualCardFixture::expectClosed(int device) const
{
    EXPECT_FALSE(card.devices().at(device).isOutputEnabled);
    EXPECT_FALSE(card.devices().at(device).isKeyerEnabled);
}

void VirtualCardFixture::expectOpen(int device) const
{
    EXPECT_TRUE(card.devices().at(device).isOutputEnabled);
}

} // namespace tessara
