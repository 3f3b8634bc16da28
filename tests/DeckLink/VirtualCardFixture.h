// The stage of every test that plays with a card: the virtual one, plugged in and unhurried.
#pragma once

#include "DeckLink/DeckLinkBridge.h"
#include "DeckLink/DeckLinkFrameBuffer.h"
#include "DeckLink/VirtualCard.h"

#include <gtest/gtest.h>

namespace tessara {

/// Where the tests of this process leave their frames.
QString testChannel();

/// Every byte differs from its neighbours, and every pixel from those around it.
FrameBytes patternOfBytes(qsizetype size);

class VirtualCardFixture : public testing::Test
{
protected:
    static constexpr int keyingDevice = 0;
    static constexpr int plainDevice = 1;
    static constexpr int noDevice = -1;

    VirtualCardFixture();
    ~VirtualCardFixture() override;

    qint64 modeID(int device, const QString &name) const;
    void expectClosed(int device) const;
    void expectOpen(int device) const;

    VirtualCard card;
};

/// A frame of the size that the house default takes.
DeckLinkFrameBuffer frame1080();

} // namespace tessara
