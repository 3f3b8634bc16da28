#include "virtual-card/DeviceObject.h"

#include <functional>

#include "virtual-card/Card.h"
#include "virtual-card/FrameObjects.h"
#include "virtual-card/ModeObjects.h"

namespace tessara::virtualcard {

using namespace decklink;

DeviceObject::~DeviceObject()
{
    // Whoever lets go of the device has also let go of its output.
    Card::instance().withDevice(m_device, [this](Device &device) {
        if (device.isEnabledBy(this))
            device.disable();
    });
}

bool DeviceObject::refuses(std::string_view call) const
{
    return Card::instance().refuses(m_device, call);
}

HRESULT DeviceObject::QueryInterface(REFIID identifier, void **object)
{
    Card &card = Card::instance();
    const bool hasKeyer =
        card.withDevice(m_device, [](const Device &device) { return device.hasKeyer(); });
    const bool isRefused =
        (identifier == IDeckLinkOutput::iid
         && (card.version() < firstBufferVersion || refuses("QueryInterface.IDeckLinkOutput")))
        || (identifier == IDeckLinkProfileAttributes::iid
            && refuses("QueryInterface.IDeckLinkProfileAttributes"))
        || (identifier == IDeckLinkKeyer::iid
            && (!hasKeyer || refuses("QueryInterface.IDeckLinkKeyer")));
    if (!isRefused)
        return DriverObject::QueryInterface(identifier, object);
    if (object)
        *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT DeviceObject::GetModelName(const char **name)
{
    return refuses("GetModelName") ? E_FAIL : giveText("Virtual Card", name);
}

HRESULT DeviceObject::GetDisplayName(const char **name)
{
    if (refuses("GetDisplayName"))
        return E_FAIL;
    return Card::instance().withDevice(
        m_device, [name](const Device &device) { return giveText(device.name(), name); });
}

HRESULT DeviceObject::GetFlag(BMDDeckLinkAttributeID attribute, bool *value)
{
    if (refuses("GetFlag"))
        return E_FAIL;
    switch (attribute) {
    case BMDDeckLinkSupportsExternalKeying:
        *value = Card::instance().withDevice(m_device, std::mem_fn(&Device::canKey));
        return S_OK;
    case BMDDeckLinkSupportsInternalKeying:
        *value = false;
        return S_OK;
    default:
        return E_INVALIDARG;
    }
}

HRESULT DeviceObject::GetInt(BMDDeckLinkAttributeID attribute, std::int64_t *value)
{
    if (refuses("GetInt"))
        return E_FAIL;
    switch (attribute) {
    case BMDDeckLinkVideoIOSupport:
        *value = bmdDeviceSupportsPlayback;
        return S_OK;
    case BMDDeckLinkPersistentID:
        *value = m_device + 1;
        return S_OK;
    default:
        return E_INVALIDARG;
    }
}

HRESULT DeviceObject::GetFloat(BMDDeckLinkAttributeID, double *)
{
    return E_INVALIDARG;
}

HRESULT DeviceObject::GetString(BMDDeckLinkAttributeID, const char **)
{
    return E_INVALIDARG;
}

HRESULT DeviceObject::Enable(bool isExternal)
{
    if (refuses("Keyer.Enable"))
        return E_FAIL;
    return Card::instance().withDevice(
        m_device, [isExternal](Device &device) { return device.enableKeyer(isExternal); });
}

HRESULT DeviceObject::SetLevel(std::uint8_t level)
{
    if (refuses("Keyer.SetLevel"))
        return E_FAIL;
    Card::instance().withDevice(m_device, [level](Device &device) { device.setKeyerLevel(level); });
    return S_OK;
}

// Nobody watches a ramp here: the level arrives at once.

HRESULT DeviceObject::RampUp(std::uint32_t)
{
    return refuses("Keyer.RampUp") ? E_FAIL : SetLevel(255);
}

HRESULT DeviceObject::RampDown(std::uint32_t)
{
    return refuses("Keyer.RampDown") ? E_FAIL : SetLevel(0);
}

HRESULT DeviceObject::Disable()
{
    if (refuses("Keyer.Disable"))
        return E_FAIL;
    Card::instance().withDevice(m_device, std::mem_fn(&Device::disableKeyer));
    return S_OK;
}

HRESULT DeviceObject::DoesSupportVideoMode(BMDVideoConnection, BMDDisplayMode code,
                                           BMDPixelFormat format, BMDVideoOutputConversionMode,
                                           BMDSupportedVideoModeFlags flags,
                                           BMDDisplayMode *actualMode, bool *supported)
{
    if (!supported)
        return E_POINTER;
    *supported = false;
    if (refuses("DoesSupportVideoMode"))
        return E_FAIL;
    const Mode *mode = modeWithCode(code);
    const bool withKeying = (flags & bmdSupportedVideoModeKeying) != 0;
    *supported = mode && Card::instance().withDevice(m_device, [&](const Device &device) {
        return device.supports(*mode, format, withKeying);
    });
    if (actualMode)
        *actualMode = *supported ? code : bmdModeUnknown;
    return S_OK;
}

HRESULT DeviceObject::GetDisplayMode(BMDDisplayMode code, IDeckLinkDisplayMode **description)
{
    *description = nullptr;
    if (refuses("GetDisplayMode"))
        return E_FAIL;
    const Mode *mode = modeWithCode(code);
    if (!mode)
        return E_INVALIDARG;
    *description = new ModeObject(m_device, *mode);
    return S_OK;
}

HRESULT DeviceObject::GetDisplayModeIterator(IDeckLinkDisplayModeIterator **iterator)
{
    *iterator = nullptr;
    if (refuses("GetDisplayModeIterator"))
        return E_FAIL;
    *iterator = new ModeIterator(m_device);
    return S_OK;
}

HRESULT DeviceObject::EnableVideoOutput(BMDDisplayMode code, BMDVideoOutputFlags)
{
    if (refuses("EnableVideoOutput"))
        return E_FAIL;
    const Mode *mode = modeWithCode(code);
    if (!mode)
        return E_INVALIDARG;
    Card &card = Card::instance();
    const std::string channel = card.channel();
    return card.withDevice(m_device,
                           [&](Device &device) { return device.enable(this, *mode, channel); });
}

HRESULT DeviceObject::DisableVideoOutput()
{
    if (refuses("DisableVideoOutput"))
        return E_FAIL;
    return Card::instance().withDevice(m_device, [this](Device &device) {
        if (device.isEnabled() && !device.isEnabledBy(this))
            return E_ACCESSDENIED;
        device.disable();
        return S_OK;
    });
}

HRESULT DeviceObject::CreateVideoFrame(std::int32_t width, std::int32_t height,
                                       std::int32_t rowBytes, BMDPixelFormat format,
                                       BMDFrameFlags flags, IDeckLinkMutableVideoFrame **frame)
{
    *frame = nullptr;
    if (refuses("CreateVideoFrame"))
        return E_FAIL;
    if (width < 1 || height < 1 || rowBytes < rowBytesOf(format, width))
        return E_INVALIDARG;
    const FrameShape shape{0, format, width, height, rowBytes};
    auto *buffer = new BufferObject(shape.size());
    *frame = new FrameObject(shape, flags, *buffer);
    buffer->Release();
    return S_OK;
}

HRESULT DeviceObject::CreateVideoFrameWithBuffer(std::int32_t width, std::int32_t height,
                                                 std::int32_t rowBytes, BMDPixelFormat format,
                                                 BMDFrameFlags flags, IDeckLinkVideoBuffer *buffer,
                                                 IDeckLinkMutableVideoFrame **frame)
{
    *frame = nullptr;
    if (refuses("CreateVideoFrameWithBuffer"))
        return E_FAIL;
    if (!buffer || width < 1 || height < 1 || rowBytes < 1)
        return E_INVALIDARG;
    *frame = new FrameObject({0, format, width, height, rowBytes}, flags, *buffer);
    return S_OK;
}

HRESULT DeviceObject::RowBytesForPixelFormat(BMDPixelFormat format, std::int32_t width,
                                             std::int32_t *rowBytes)
{
    *rowBytes = 0;
    if (refuses("RowBytesForPixelFormat"))
        return E_FAIL;
    *rowBytes = Card::instance().withDevice(
        m_device, [&](const Device &device) { return device.rowBytes(format, width); });
    return *rowBytes > 0 ? S_OK : E_INVALIDARG;
}

HRESULT DeviceObject::DisplayVideoFrameSync(IDeckLinkVideoFrame *frame)
{
    if (!frame)
        return E_POINTER;
    Card &card = Card::instance();
    if (refuses("DisplayVideoFrameSync"))
        return E_FAIL;
    const FrameShape shape{0, frame->GetPixelFormat(), std::int32_t(frame->GetWidth()),
                           std::int32_t(frame->GetHeight()), std::int32_t(frame->GetRowBytes())};
    const Cadence::Time time = card.now();
    Cadence::Time turn = 0;
    const HRESULT accepted = card.withDevice(m_device, [&](Device &device) {
        if (!device.isEnabledBy(this))
            return E_ACCESSDENIED;
        if (!device.accepts(shape))
            return E_INVALIDARG;
        turn = device.noteDisplayCall(time, card.isFreeRunning());
        return S_OK;
    });
    if (accepted != S_OK)
        return accepted;
    if (turn > time)
        card.waitUntil(turn);
    return show(shape, *frame);
}

HRESULT DeviceObject::show(const SharedFrameDescription &shape, IDeckLinkVideoFrame &frame)
{
    void *object = nullptr;
    if (frame.QueryInterface(IDeckLinkVideoBuffer::iid, &object) != S_OK)
        return E_INVALIDARG;
    auto *buffer = static_cast<IDeckLinkVideoBuffer *>(object);
    HRESULT result = buffer->StartAccess(bmdBufferAccessRead);
    if (result == S_OK) {
        void *bytes = nullptr;
        result = buffer->GetBytes(&bytes);
        if (result == S_OK)
            result = transfer(shape, buffer, bytes);
        if (result == S_OK)
            return S_OK; // the transfer lets go of the buffer
        buffer->EndAccess(bmdBufferAccessRead);
    }
    buffer->Release();
    return result;
}

HRESULT DeviceObject::transfer(const SharedFrameDescription &shape, IDeckLinkVideoBuffer *buffer,
                               const void *bytes)
{
    Card &card = Card::instance();
    const Cadence::Time time = card.now();
    return card.withDevice(m_device, [&](Device &device) {
        if (!device.isEnabledBy(this)) // unplugged while the call was waiting
            return E_ACCESSDENIED;
        if (!device.hasRoomFor(shape))
            return E_INVALIDARG;
        device.show(shape, buffer, bytes, time, card.isFreeRunning());
        return S_OK;
    });
}

HRESULT DeviceObject::IsScheduledPlaybackRunning(bool *running)
{
    *running = false;
    return S_OK;
}

HRESULT DeviceObject::GetReferenceStatus(BMDReferenceStatus *status)
{
    if (refuses("GetReferenceStatus"))
        return E_FAIL;
    *status = bmdReferenceNotSupportedByHardware;
    return S_OK;
}

} // namespace tessara::virtualcard
