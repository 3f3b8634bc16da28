#include "virtual-card/FrameObjects.h"

namespace tessara::virtualcard {

using namespace decklink;

BufferObject::BufferObject(std::size_t size)
    : m_bytes(new unsigned char[size]())
{
}

HRESULT BufferObject::GetBytes(void **bytes)
{
    *bytes = m_access ? m_bytes.get() : nullptr;
    return m_access ? S_OK : E_ACCESSDENIED;
}

HRESULT BufferObject::StartAccess(BMDBufferAccessFlags flags)
{
    if (m_access)
        return E_ACCESSDENIED;
    m_access = flags;
    return S_OK;
}

HRESULT BufferObject::EndAccess(BMDBufferAccessFlags flags)
{
    if (m_access != flags)
        return E_INVALIDARG;
    m_access.reset();
    return S_OK;
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
