// What all objects of the driver have in common: counted references and the search for interfaces.
#pragma once

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <tuple>

#include "DeckLink/DeckLinkAPI.h"

namespace tessara::virtualcard {

inline std::atomic<std::int64_t> liveObjects = 0;

/// Starts with the one reference of whoever asked for it.
template <typename... Interfaces>
class DriverObject : public Interfaces...
{
public:
    DriverObject(const DriverObject &) = delete;
    DriverObject &operator=(const DriverObject &) = delete;

    decklink::HRESULT QueryInterface(decklink::REFIID iid, void **object) override
    {
        if (!object)
            return decklink::E_POINTER;
        *object = nullptr;
        if (iid == decklink::IUnknown::iid)
            *object = static_cast<First *>(this);
        else
            (offer<Interfaces>(iid, object) || ...);
        if (!*object)
            return decklink::E_NOINTERFACE;
        AddRef();
        return decklink::S_OK;
    }
    decklink::ULONG AddRef() override { return ++m_references; }
    decklink::ULONG Release() override
    {
        const decklink::ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    DriverObject() { ++liveObjects; }
    virtual ~DriverObject() { --liveObjects; }

private:
    using First = std::tuple_element_t<0, std::tuple<Interfaces...>>;

    // Each interface is a part of the object with an address of its own.
    template <typename Interface>
    bool offer(decklink::REFIID iid, void **object)
    {
        if (iid != Interface::iid)
            return false;
        *object = static_cast<Interface *>(this);
        return true;
    }

    std::atomic<decklink::ULONG> m_references = 1;
};

/// A text for the caller to free.
inline decklink::HRESULT giveText(const char *text, const char **target)
{
    if (!target)
        return decklink::E_POINTER;
    *target = strdup(text);
    return *target ? decklink::S_OK : decklink::E_OUTOFMEMORY;
}

} // namespace tessara::virtualcard
