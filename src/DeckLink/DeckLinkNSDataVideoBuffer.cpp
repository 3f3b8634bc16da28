#include "DeckLink/DeckLinkNSDataVideoBuffer.h"

#include <utility>

namespace tessara {

using namespace decklink;

DeckLinkNSDataVideoBuffer::DeckLinkNSDataVideoBuffer(FrameBytes data)
    : m_data(std::move(data))
{
}

HRESULT DeckLinkNSDataVideoBuffer::QueryInterface(REFIID identifier, void **object)
{
    if (identifier != IDeckLinkVideoBuffer::iid && identifier != IUnknown::iid) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDeckLinkVideoBuffer *>(this);
    AddRef();
    return S_OK;
}

ULONG DeckLinkNSDataVideoBuffer::AddRef()
{
    return ++m_references;
}

ULONG DeckLinkNSDataVideoBuffer::Release()
{
    const quint32 left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT DeckLinkNSDataVideoBuffer::GetBytes(void **bytes)
{
    if (!bytes)
        return E_POINTER;
    // The interface has no const; the memory is writable, for a driver may ask for that.
    *bytes = m_data.writableData();
    return m_data.isNull() ? E_FAIL : S_OK;
}

HRESULT DeckLinkNSDataVideoBuffer::StartAccess(BMDBufferAccessFlags)
{
    return S_OK;
}

HRESULT DeckLinkNSDataVideoBuffer::EndAccess(BMDBufferAccessFlags)
{
    return S_OK;
}

} // namespace tessara
