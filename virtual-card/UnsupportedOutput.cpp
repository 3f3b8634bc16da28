// What the card doesn't have: sound, schedules, previews.
#include "virtual-card/DeviceObject.h"

namespace tessara::virtualcard {

using namespace decklink;

HRESULT DeviceObject::SetScreenPreviewCallback(IDeckLinkScreenPreviewCallback *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::CreateAncillaryData(BMDPixelFormat, IDeckLinkVideoFrameAncillary **)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::ScheduleVideoFrame(IDeckLinkVideoFrame *, BMDTimeValue, BMDTimeValue,
                                         BMDTimeScale)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::SetScheduledFrameCompletionCallback(IDeckLinkVideoOutputCallback *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::GetBufferedVideoFrameCount(std::uint32_t *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::EnableAudioOutput(BMDAudioSampleRate, BMDAudioSampleType, std::uint32_t,
                                        BMDAudioOutputStreamType)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::DisableAudioOutput()
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::WriteAudioSamplesSync(void *, std::uint32_t, std::uint32_t *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::BeginAudioPreroll()
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::EndAudioPreroll()
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::ScheduleAudioSamples(void *, std::uint32_t, BMDTimeValue, BMDTimeScale,
                                           std::uint32_t *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::GetBufferedAudioSampleFrameCount(std::uint32_t *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::FlushBufferedAudioSamples()
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::SetAudioCallback(IDeckLinkAudioOutputCallback *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::StartScheduledPlayback(BMDTimeValue, BMDTimeScale, double)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::StopScheduledPlayback(BMDTimeValue, BMDTimeValue *, BMDTimeScale)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::GetScheduledStreamTime(BMDTimeScale, BMDTimeValue *, double *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::GetHardwareReferenceClock(BMDTimeScale, BMDTimeValue *, BMDTimeValue *,
                                                BMDTimeValue *)
{
    return E_NOTIMPL;
}

HRESULT DeviceObject::GetFrameCompletionReferenceTimestamp(IDeckLinkVideoFrame *, BMDTimeScale,
                                                           BMDTimeValue *)
{
    return E_NOTIMPL;
}

} // namespace tessara::virtualcard
