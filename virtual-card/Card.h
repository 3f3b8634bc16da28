// The card of this process: its devices, and what is asked of all of them.
#pragma once

#include <atomic>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

#include "virtual-card/Calls.h"
#include "virtual-card/Device.h"

namespace tessara::virtualcard {

inline constexpr std::uint32_t ownVersion = 0x0E040000;         // 14.4
inline constexpr std::uint32_t firstBufferVersion = 0x0E030000; // of the interfaces we know

/// The time that display calls keep until a test gives them another.
extern const TessaraVirtualCardTime machineTime;

/// Calls may come from any thread.
class Card
{
public:
    static Card &instance();

    int deviceCount() const { return int(m_devices.size()); }
    bool hasDevice(int index) const { return index >= 0 && index < deviceCount(); }
    /// The index of the first plugged device from `index` on, or `noDevice`.
    int pluggedDeviceFrom(int index);

    /// Whether this call is to fail: by request, or because its device is gone.
    bool refuses(int device, std::string_view call);
    template <typename Action>
    auto withDevice(int index, Action action)
    {
        const std::lock_guard guard(m_mutex);
        return action(m_devices[std::size_t(index)]);
    }

    bool fail(int device, std::string_view call, int times);
    std::int64_t callCount(int device, std::string_view call);
    bool setChannel(std::string_view name);
    std::string channel();
    void setFreeRunning(bool isFreeRunning) { m_isFreeRunning = isFreeRunning; }
    bool isFreeRunning() const { return m_isFreeRunning; }
    void setTime(const TessaraVirtualCardTime &time);
    Cadence::Time now();
    void waitUntil(Cadence::Time moment);
    void setVersion(std::uint32_t version) { m_version = version != 0 ? version : ownVersion; }
    std::uint32_t version() const { return m_version; }
    void reset();
    /// Until every frame that was shown has been fetched.
    void finishTransfers();
    /// Takes the frames out of shared memory.
    void close();

private:
    Card();
    TessaraVirtualCardTime time();

    std::mutex m_mutex;
    std::deque<Device> m_devices; // never moved
    Calls m_calls;
    std::string m_channel;
    TessaraVirtualCardTime m_time = machineTime;
    std::atomic<bool> m_isFreeRunning = false;
    std::atomic<std::uint32_t> m_version = ownVersion;
};

} // namespace tessara::virtualcard
