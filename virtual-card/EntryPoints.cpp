// What the library exports.
#include "virtual-card/Card.h"
#include "virtual-card/DeviceObject.h"
#include "virtual-card/Instruments.h"

#define TESSARA_EXPORT extern "C" __attribute__((visibility("default")))

namespace tessara::virtualcard {

using namespace decklink;

extern const TessaraVirtualCardInstruments instrumentTable;

namespace {

class DeviceIterator final : public DriverObject<IDeckLinkIterator>
{
public:
    HRESULT Next(IDeckLink **device) override
    {
        *device = nullptr;
        Card &card = Card::instance();
        if (card.refuses(noDevice, "Iterator.Next"))
            return E_FAIL;
        const int index = card.pluggedDeviceFrom(m_next);
        if (index == noDevice)
            return S_FALSE;
        m_next = index + 1;
        *device = new DeviceObject(index);
        return S_OK;
    }

private:
    int m_next = 0;
};

class APIInformation final : public DriverObject<IDeckLinkAPIInformation>
{
public:
    HRESULT GetFlag(BMDDeckLinkAPIInformationID, bool *) override { return E_INVALIDARG; }
    HRESULT GetInt(BMDDeckLinkAPIInformationID item, std::int64_t *value) override
    {
        if (item != BMDDeckLinkAPIVersion)
            return E_INVALIDARG;
        *value = Card::instance().version();
        return S_OK;
    }
    HRESULT GetFloat(BMDDeckLinkAPIInformationID, double *) override { return E_INVALIDARG; }
    HRESULT GetString(BMDDeckLinkAPIInformationID item, const char **value) override
    {
        if (item != BMDDeckLinkAPIVersion)
            return E_INVALIDARG;
        const std::uint32_t version = Card::instance().version();
        const std::string text = std::to_string(version >> 24) + "."
                                 + std::to_string(version >> 16 & 0xFF) + "."
                                 + std::to_string(version >> 8 & 0xFF);
        return giveText(text.c_str(), value);
    }
};

} // namespace
} // namespace tessara::virtualcard

using namespace tessara;

TESSARA_EXPORT decklink::IDeckLinkIterator *CreateDeckLinkIteratorInstance_0004()
{
    using namespace virtualcard;
    if (Card::instance().refuses(noDevice, "CreateDeckLinkIteratorInstance"))
        return nullptr;
    return new DeviceIterator;
}

TESSARA_EXPORT decklink::IDeckLinkAPIInformation *CreateDeckLinkAPIInformationInstance_0001()
{
    using namespace virtualcard;
    if (Card::instance().refuses(noDevice, "CreateDeckLinkAPIInformationInstance"))
        return nullptr;
    return new APIInformation;
}

TESSARA_EXPORT const TessaraVirtualCardInstruments *TessaraVirtualCardInstruments_0001()
{
    return &virtualcard::instrumentTable;
}
