#include "virtual-card/Device.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tessara::virtualcard {

using namespace decklink;

namespace {

constexpr std::size_t intervalLimit = 1'000'000; // more than four hours at 60 frames a second
constexpr std::int32_t sizeMargin = 64;          // px, for a device that accepts any size

bool hasAlpha(BMDPixelFormat format)
{
    return format != bmdFormat8BitYUV;
}

template <typename Text, std::size_t size>
void copyText(Text (&target)[size], const char *source)
{
    std::strncpy(target, source, size - 1);
}

/// The smallest value that is not exceeded by `share` of them.
double percentile(const std::vector<float> &sorted, double share)
{
    if (sorted.empty())
        return 0;
    const auto rank = std::size_t(std::ceil(share * double(sorted.size())));
    return double(sorted[std::max<std::size_t>(rank, 1) - 1]);
}

} // namespace

Device::Device(int index, const char *name, bool hasKeyer)
    : m_index(index)
    , m_name(name)
    , m_hasKeyer(hasKeyer)
{
}

void Device::unplug()
{
    m_isPlugged = false;
    disable();
}

bool Device::lists(const Mode &mode) const
{
    return !m_limits.modes
           || std::ranges::find(*m_limits.modes, mode.name) != m_limits.modes->end();
}

bool Device::supports(const Mode &mode, BMDPixelFormat format, bool withKeying) const
{
    const bool isFormatAllowed =
        !m_limits.formats
        || std::ranges::find(*m_limits.formats, format) != m_limits.formats->end();
    // A device without a keyer passes here and says so when it is asked for one.
    return lists(mode) && isFormat(format) && isFormatAllowed && (!withKeying || hasAlpha(format));
}

std::int32_t Device::rowBytes(BMDPixelFormat format, std::int32_t width) const
{
    const std::int32_t needed = rowBytesOf(format, width);
    const std::int32_t limit = limitsInForce().rowBytes;
    return needed > 0 && limit > 0 ? limit : needed;
}

HRESULT Device::enable(const void *holder, const Mode &mode, const std::string &channel)
{
    if (isEnabled())
        return E_ACCESSDENIED;
    if (!lists(mode))
        return E_INVALIDARG;
    if (!m_lock.tryLock(outputLockName(channel, m_index)))
        return E_ACCESSDENIED;
    const std::int32_t margin = m_limits.acceptsAnySize ? sizeMargin : 0;
    const std::int32_t rowBytes =
        std::max(rowBytesOf(bmdFormat8BitBGRA, mode.width + margin), m_limits.rowBytes);
    if (!m_frames.open(sharedFramesName(channel, m_index), mode,
                       std::uint64_t(rowBytes) * std::uint64_t(mode.height + margin))) {
        m_lock.unlock();
        return E_OUTOFMEMORY;
    }
    if (!m_transfer)
        m_transfer = std::make_unique<FrameTransfer>(m_frames);
    m_holder = holder;
    m_mode = &mode;
    m_limitsAtStart = m_limits;
    m_cadence.emplace(mode.frameDuration, mode.timeScale);
    m_sent = 0;
    m_waited = 0;
    m_lastCall.reset();
    m_intervals.clear();
    return S_OK;
}

void Device::disable()
{
    disableKeyer();
    finishTransfer();
    m_frames.setEnabled(false); // the last frame stays to be looked at
    m_lock.unlock();
    m_holder = nullptr;
}

void Device::close()
{
    disable();
    m_transfer.reset();
    m_frames.close();
}

HRESULT Device::enableKeyer(bool isExternal)
{
    if (!m_hasKeyer || !limitsInForce().allowsKeying)
        return E_FAIL;
    if (!isExternal)
        return E_INVALIDARG;
    m_isKeyerEnabled = true;
    m_frames.setKeying(true);
    return S_OK;
}

void Device::disableKeyer()
{
    m_isKeyerEnabled = false;
    m_keyerLevel = 0;
    m_frames.setKeying(false);
}

bool Device::accepts(const FrameShape &frame) const
{
    const auto &formats = m_limitsAtStart.formats;
    const bool isFormatAllowed =
        isFormat(frame.pixelFormat)
        && (!formats || std::ranges::find(*formats, frame.pixelFormat) != formats->end())
        && (!m_isKeyerEnabled || hasAlpha(frame.pixelFormat));
    const bool isSizeAllowed = m_limitsAtStart.acceptsAnySize
                               || (frame.width == m_mode->width && frame.height == m_mode->height);
    return isFormatAllowed && isSizeAllowed && frame.width > 0 && frame.height > 0
           && frame.rowBytes == rowBytes(frame.pixelFormat, frame.width);
}

Cadence::Time Device::noteDisplayCall(Cadence::Time now, bool isFreeRunning)
{
    if (m_lastCall && m_intervals.size() < intervalLimit)
        m_intervals.push_back(float(double(now - *m_lastCall) * 1e-9));
    m_lastCall = now;
    const Cadence::Time turn = isFreeRunning ? now : m_cadence->turn(now);
    if (turn > now)
        ++m_waited;
    return turn;
}

void Device::show(const FrameShape &frame, IDeckLinkVideoBuffer *buffer, const void *bytes,
                  Cadence::Time now, bool isFreeRunning)
{
    FrameShape numbered = frame;
    numbered.number = std::uint64_t(++m_sent);
    m_transfer->begin(numbered, buffer, bytes);
    if (isFreeRunning)
        m_cadence.emplace(m_mode->frameDuration, m_mode->timeScale); // begins anew when it is over
    else
        m_cadence->take(now);
}

void Device::finishTransfer() const
{
    if (m_transfer)
        m_transfer->finish();
}

const SharedFramesHeader *Device::frames() const
{
    finishTransfer();
    return m_frames.header();
}

void Device::describe(TessaraVirtualCardDevice &description) const
{
    description = {};
    copyText(description.name, m_name);
    copyText(description.modeName, m_mode ? m_mode->name : "");
    description.supportsExternalKeying = canKey();
    description.isPlugged = m_isPlugged;
    description.isOutputEnabled = isEnabled();
    description.isKeyerEnabled = m_isKeyerEnabled;
    description.keyerLevel = m_keyerLevel;
}

void Device::count(TessaraVirtualCardFrames &frames) const
{
    frames = {};
    frames.sent = m_sent;
    frames.waited = m_waited;
    std::vector<float> sorted = m_intervals;
    std::ranges::sort(sorted);
    frames.intervalP50 = percentile(sorted, 0.5);
    frames.intervalP99 = percentile(sorted, 0.99);
    frames.intervalMax = percentile(sorted, 1);
    const SharedFramesHeader *shown = this->frames();
    if (!shown)
        return;
    readNewestFrame(*shown, [&](const FrameShape &newest, const unsigned char *) {
        frames.pixelFormat = newest.pixelFormat;
        frames.width = newest.width;
        frames.height = newest.height;
        frames.rowBytes = newest.rowBytes;
    });
}

} // namespace tessara::virtualcard
