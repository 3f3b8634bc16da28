#include "virtual-card/FrameObjects.h"

namespace tessara::virtualcard {

using namespace decklink;

BufferObject::BufferObject(std::size_t size)
    : m_bytes(new unsigned char[size]())
{
}

HRESULT BufferObject::GetBytes(void **bytes)
{
    const bool hasAccess = m_access != noAccess;
    *bytes = hasAccess ? m_bytes.get() : nullptr;
    return hasAccess ? S_OK : E_ACCESSDENIED;
}

HRESULT BufferObject::StartAccess(BMDBufferAccessFlags flags)
{
    if (flags == noAccess)
        return E_INVALIDARG;
    BMDBufferAccessFlags none = noAccess;
    return m_access.compare_exchange_strong(none, flags) ? S_OK : E_ACCESSDENIED;
}

HRESULT BufferObject::EndAccess(BMDBufferAccessFlags flags)
{
    return m_access.compare_exchange_strong(flags, noAccess) ? S_OK : E_INVALIDARG;
}

FrameObject::FrameObject(const SharedFrameDescription &shape, BMDFrameFlags flags,
                         IDeckLinkVideoBuffer &buffer)
    : m_shape(shape)
    , m_flags(flags)
    , m_buffer(buffer)
{
    m_buffer.AddRef();
}

FrameObject::~FrameObject()
{
    m_buffer.Release();
}

HRESULT FrameObject::QueryInterface(REFIID identifier, void **object)
{
    if (object && identifier == IDeckLinkVideoBuffer::iid)
        return m_buffer.QueryInterface(identifier, object);
    // The frame that can be changed is also the one that can't.
    return DriverObject::QueryInterface(
        identifier == IDeckLinkVideoFrame::iid ? IDeckLinkMutableVideoFrame::iid : identifier,
        object);
}

long FrameObject::GetWidth()
{
    return m_shape.width;
}

long FrameObject::GetHeight()
{
    return m_shape.height;
}

long FrameObject::GetRowBytes()
{
    return m_shape.rowBytes;
}

BMDPixelFormat FrameObject::GetPixelFormat()
{
    return m_shape.pixelFormat;
}

BMDFrameFlags FrameObject::GetFlags()
{
    return m_flags;
}

HRESULT FrameObject::SetFlags(BMDFrameFlags flags)
{
    m_flags = flags;
    return S_OK;
}

// No timecode, and nothing beside the picture.

HRESULT FrameObject::GetTimecode(BMDTimecodeFormat, IDeckLinkTimecode **)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::GetAncillaryData(IDeckLinkVideoFrameAncillary **)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::SetTimecode(BMDTimecodeFormat, IDeckLinkTimecode *)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::SetTimecodeFromComponents(BMDTimecodeFormat, std::uint8_t, std::uint8_t,
                                               std::uint8_t, std::uint8_t, BMDTimecodeFlags)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::SetAncillaryData(IDeckLinkVideoFrameAncillary *)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::SetTimecodeUserBits(BMDTimecodeFormat, BMDTimecodeUserBits)
{
    return E_NOTIMPL;
}

HRESULT FrameObject::SetInterfaceProvider(REFIID, IUnknown *)
{
    return E_NOTIMPL;
}

} // namespace tessara::virtualcard
