#include "virtual-card/Card.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tessara::virtualcard {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::nanoseconds;

// A process that ends leaves no frames behind.
struct FinalClose
{
    ~FinalClose() { Card::instance().close(); }
};

} // namespace

constinit const TessaraVirtualCardTime machineTime{
    nullptr,
    [](void *) -> std::int64_t {
        return Nanoseconds(SteadyClock::now().time_since_epoch()).count();
    },
    [](void *, std::int64_t moment) {
        std::this_thread::sleep_until(SteadyClock::time_point(Nanoseconds(moment)));
    }};

Card &Card::instance()
{
    // Never destroyed: the program may let go of its last objects later than this library.
    static Card *card = new Card;
    static const FinalClose finalClose;
    return *card;
}

Card::Card()
    : m_channel(defaultChannel())
{
    m_devices.emplace_back(0, "Virtual Card 1", true);
    m_devices.emplace_back(1, "Virtual Card 2", false);
}

int Card::pluggedDeviceFrom(int index)
{
    const std::lock_guard guard(m_mutex);
    while (hasDevice(index) && !m_devices[std::size_t(index)].isPlugged())
        ++index;
    return hasDevice(index) ? index : noDevice;
}

bool Card::refuses(int device, std::string_view call)
{
    const std::lock_guard guard(m_mutex);
    const bool isGone = hasDevice(device) && !m_devices[std::size_t(device)].isPlugged();
    return m_calls.take(device, call) || isGone;
}

bool Card::fail(int device, std::string_view call, int times)
{
    const std::lock_guard guard(m_mutex);
    return (device == noDevice || hasDevice(device)) && m_calls.fail(device, call, times);
}

std::int64_t Card::callCount(int device, std::string_view call)
{
    const std::lock_guard guard(m_mutex);
    return m_calls.count(device, call);
}

bool Card::setChannel(std::string_view name)
{
    const std::lock_guard guard(m_mutex);
    if (!isChannelName(name) || std::ranges::any_of(m_devices, &Device::isEnabled))
        return false;
    m_channel = name;
    std::ranges::for_each(m_devices, &Device::close);
    return true;
}

std::string Card::channel()
{
    const std::lock_guard guard(m_mutex);
    return m_channel;
}

void Card::setTime(const TessaraVirtualCardTime &time)
{
    const std::lock_guard guard(m_mutex);
    m_time = time;
}

TessaraVirtualCardTime Card::time()
{
    const std::lock_guard guard(m_mutex);
    return m_time;
}

Cadence::Time Card::now()
{
    const TessaraVirtualCardTime source = time();
    return source.now(source.context);
}

void Card::waitUntil(Cadence::Time moment)
{
    const TessaraVirtualCardTime source = time();
    source.waitUntil(source.context, moment);
}

void Card::reset()
{
    const std::lock_guard guard(m_mutex);
    m_time = machineTime;
    m_calls.clear();
    m_version = ownVersion;
    for (Device &device : m_devices) {
        device.setLimits({});
        device.plug();
    }
}

void Card::finishTransfers()
{
    const std::lock_guard guard(m_mutex);
    std::ranges::for_each(m_devices, &Device::finishTransfer);
}

void Card::close()
{
    const std::lock_guard guard(m_mutex);
    std::ranges::for_each(m_devices, &Device::close);
}

} // namespace tessara::virtualcard
