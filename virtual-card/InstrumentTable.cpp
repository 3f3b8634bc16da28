// The instruments over the card.
#include "virtual-card/Card.h"
#include "virtual-card/DriverObject.h"
#include "virtual-card/Instruments.h"

namespace tessara::virtualcard {
namespace {

constexpr std::int32_t greatestRowBytes = 131072; // four times a row of 8192 pixels

template <typename Action>
bool onDevice(std::int32_t device, Action action)
{
    Card &card = Card::instance();
    if (!card.hasDevice(device))
        return false;
    card.withDevice(device, action);
    return true;
}

void setFreeRunning(bool isFreeRunning)
{
    Card::instance().setFreeRunning(isFreeRunning);
}

bool setChannel(const char *name)
{
    return Card::instance().setChannel(name);
}

void setDriverVersion(std::uint32_t version)
{
    Card::instance().setVersion(version);
}

std::int32_t deviceCount()
{
    return Card::instance().deviceCount();
}

bool describe(std::int32_t device, TessaraVirtualCardDevice *description)
{
    return onDevice(device, [description](const Device &it) { it.describe(*description); });
}

bool fail(std::int32_t device, const char *call, std::int32_t times)
{
    return Card::instance().fail(device, call, times);
}

bool limit(std::int32_t device, const TessaraVirtualCardLimits *record)
{
    Limits limits;
    if (record->modes) {
        limits.modes.emplace(record->modes, record->modes + record->modeCount);
        for (const std::string &name : *limits.modes) {
            if (!modeWithName(name))
                return false;
        }
    }
    if (record->formats) {
        limits.formats.emplace(record->formats, record->formats + record->formatCount);
        for (const decklink::BMDPixelFormat format : *limits.formats) {
            if (!isFormat(format))
                return false;
        }
    }
    if (record->rowBytes < 0 || record->rowBytes > greatestRowBytes)
        return false;
    limits.allowsKeying = record->allowsKeying;
    limits.rowBytes = record->rowBytes;
    limits.acceptsAnySize = record->acceptsAnySize;
    return onDevice(device, [&limits](Device &it) { it.setLimits(limits); });
}

bool removeDevice(std::int32_t device)
{
    return onDevice(device, [](Device &it) { it.unplug(); });
}

bool restoreDevice(std::int32_t device)
{
    return onDevice(device, [](Device &it) { it.plug(); });
}

bool countFrames(std::int32_t device, TessaraVirtualCardFrames *frames)
{
    return onDevice(device, [frames](const Device &it) { it.count(*frames); });
}

std::uint64_t newestFrame(std::int32_t device, TessaraVirtualCardFrame *frame, void *bytes,
                          std::uint64_t capacity)
{
    std::uint64_t size = 0;
    onDevice(device, [&](const Device &it) {
        const SharedFramesHeader *frames = it.frames();
        if (!frames)
            return;
        readNewestFrame(*frames, [&](const FrameShape &newest, const unsigned char *source) {
            *frame = {std::int64_t(newest.number), newest.pixelFormat, newest.width, newest.height,
                      newest.rowBytes};
            size = newest.size();
            if (size <= capacity)
                std::memcpy(bytes, source, size);
        });
    });
    return size;
}

std::int64_t countLiveObjects()
{
    Card::instance().finishTransfers();
    return liveObjects;
}

std::int64_t callCount(std::int32_t device, const char *call)
{
    return Card::instance().callCount(device, call);
}

void reset()
{
    Card::instance().reset();
}

void setTime(const TessaraVirtualCardTime *time)
{
    Card::instance().setTime(time ? *time : machineTime);
}

} // namespace

extern const TessaraVirtualCardInstruments instrumentTable;
const TessaraVirtualCardInstruments instrumentTable{
    .version = 3,
    .size = sizeof(TessaraVirtualCardInstruments),
    .setFreeRunning = setFreeRunning,
    .setChannel = setChannel,
    .setDriverVersion = setDriverVersion,
    .deviceCount = deviceCount,
    .device = describe,
    .fail = fail,
    .limit = limit,
    .remove = removeDevice,
    .restore = restoreDevice,
    .frames = countFrames,
    .newestFrame = newestFrame,
    .liveObjects = countLiveObjects,
    .callCount = callCount,
    .reset = reset,
    .setTime = setTime,
};

} // namespace tessara::virtualcard
