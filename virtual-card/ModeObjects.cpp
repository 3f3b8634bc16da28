#include "virtual-card/ModeObjects.h"

#include "virtual-card/Card.h"

namespace tessara::virtualcard {

using namespace decklink;

ModeObject::ModeObject(int device, const Mode &mode)
    : m_device(device)
    , m_mode(mode)
{
}

HRESULT ModeObject::GetName(const char **name)
{
    return Card::instance().refuses(m_device, "GetName") ? E_FAIL : giveText(m_mode.name, name);
}

BMDDisplayMode ModeObject::GetDisplayMode()
{
    return m_mode.code;
}

long ModeObject::GetWidth()
{
    return m_mode.width;
}

long ModeObject::GetHeight()
{
    return m_mode.height;
}

HRESULT ModeObject::GetFrameRate(BMDTimeValue *frameDuration, BMDTimeScale *timeScale)
{
    if (Card::instance().refuses(m_device, "GetFrameRate"))
        return E_FAIL;
    *frameDuration = m_mode.frameDuration;
    *timeScale = m_mode.timeScale;
    return S_OK;
}

BMDFieldDominance ModeObject::GetFieldDominance()
{
    return m_mode.isInterlaced ? bmdUpperFieldFirst : bmdProgressiveFrame;
}

BMDDisplayModeFlags ModeObject::GetFlags()
{
    return m_mode.height > 1080 ? bmdDisplayModeColorspaceRec709 | bmdDisplayModeColorspaceRec2020
                                : bmdDisplayModeColorspaceRec709;
}

HRESULT ModeIterator::Next(IDeckLinkDisplayMode **mode)
{
    *mode = nullptr;
    Card &card = Card::instance();
    if (card.refuses(m_device, "DisplayModeIterator.Next"))
        return E_FAIL;
    while (m_next < allModes().size()) {
        const Mode &candidate = allModes()[m_next++];
        const bool isListed = card.withDevice(
            m_device, [&](const Device &device) { return device.lists(candidate); });
        if (isListed) {
            *mode = new ModeObject(m_device, candidate);
            return S_OK;
        }
    }
    return S_FALSE;
}

} // namespace tessara::virtualcard
