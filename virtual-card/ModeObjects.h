// Display modes as the driver hands them out.
#pragma once

#include "virtual-card/DriverObject.h"
#include "virtual-card/Modes.h"

namespace tessara::virtualcard {

class ModeObject final : public DriverObject<decklink::IDeckLinkDisplayMode>
{
public:
    ModeObject(int device, const Mode &mode);

    decklink::HRESULT GetName(const char **name) override;
    decklink::BMDDisplayMode GetDisplayMode() override;
    long GetWidth() override;
    long GetHeight() override;
    decklink::HRESULT GetFrameRate(decklink::BMDTimeValue *frameDuration,
                                   decklink::BMDTimeScale *timeScale) override;
    decklink::BMDFieldDominance GetFieldDominance() override;
    decklink::BMDDisplayModeFlags GetFlags() override;

private:
    int m_device;
    const Mode &m_mode;
};

class ModeIterator final : public DriverObject<decklink::IDeckLinkDisplayModeIterator>
{
public:
    explicit ModeIterator(int device)
        : m_device(device)
    {
    }

    decklink::HRESULT Next(decklink::IDeckLinkDisplayMode **mode) override;

private:
    int m_device;
    std::size_t m_next = 0;
};

} // namespace tessara::virtualcard
