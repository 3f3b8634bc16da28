#include "virtual-card/Calls.h"

#include <algorithm>
#include <span>

namespace tessara::virtualcard {
namespace {

constexpr std::string_view callsWithoutDevice[] = {
    "CreateDeckLinkAPIInformationInstance",
    "CreateDeckLinkIteratorInstance",
    "Iterator.Next",
};

constexpr std::string_view callsOfADevice[] = {
    "CreateVideoFrame",
    "CreateVideoFrameWithBuffer",
    "DisableVideoOutput",
    "DisplayModeIterator.Next",
    "DisplayVideoFrameSync",
    "DoesSupportVideoMode",
    "EnableVideoOutput",
    "GetDisplayMode",
    "GetDisplayModeIterator",
    "GetDisplayName",
    "GetFlag",
    "GetFrameRate",
    "GetInt",
    "GetModelName",
    "GetName",
    "GetReferenceStatus",
    "Keyer.Disable",
    "Keyer.Enable",
    "Keyer.RampDown",
    "Keyer.RampUp",
    "Keyer.SetLevel",
    "QueryInterface.IDeckLinkKeyer",
    "QueryInterface.IDeckLinkOutput",
    "QueryInterface.IDeckLinkProfileAttributes",
    "RowBytesForPixelFormat",
};

} // namespace

bool Calls::fail(int device, std::string_view call, int times)
{
    const std::span<const std::string_view> known =
        device == noDevice ? std::span<const std::string_view>(callsWithoutDevice)
                           : std::span<const std::string_view>(callsOfADevice);
    if (times < 0 || std::ranges::find(known, call) == known.end())
        return false;
    m_records[{device, std::string(call)}].failures = times;
    return true;
}

bool Calls::take(int device, std::string_view call)
{
    Record &record = m_records[{device, std::string(call)}];
    ++record.made;
    if (record.failures == 0)
        return false;
    --record.failures;
    return true;
}

std::int64_t Calls::count(int device, std::string_view call) const
{
    const auto record = m_records.find({device, std::string(call)});
    return record != m_records.end() ? record->second.made : 0;
}

} // namespace tessara::virtualcard
