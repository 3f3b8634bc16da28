// One counted reference to an object of the driver.
#pragma once

#include "DeckLink/DeckLinkAPI.h"

#include <utility>

namespace tessara {

template <typename Interface>
class DeckLinkReference
{
public:
    DeckLinkReference() = default;
    /// Takes over the one reference that came with the pointer.
    explicit DeckLinkReference(Interface *object)
        : m_object(object)
    {
    }
    DeckLinkReference(DeckLinkReference &&other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }
    DeckLinkReference &operator=(DeckLinkReference &&other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~DeckLinkReference() { reset(); }

    void reset()
    {
        if (Interface *object = std::exchange(m_object, nullptr))
            object->Release();
    }
    /// Where a call of the driver stores its result.
    Interface **receive()
    {
        reset();
        return &m_object;
    }
    /// Another interface of the same object, or nothing.
    template <typename Other>
    DeckLinkReference<Other> query(decklink::HRESULT *result = nullptr) const
    {
        void *other = nullptr;
        const decklink::HRESULT answer = m_object->QueryInterface(Other::iid, &other);
        if (result)
            *result = answer;
        return DeckLinkReference<Other>(answer == decklink::S_OK ? static_cast<Other *>(other)
                                                                 : nullptr);
    }

    Interface *get() const { return m_object; }
    Interface *operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    Interface *m_object = nullptr;
};

} // namespace tessara
