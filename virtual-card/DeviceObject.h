// One device as the driver hands it out, with its output, its attributes and its keyer.
#pragma once

#include <string_view>

#include "virtual-card/DriverObject.h"
#include "virtual-card/SharedFrames.h"

namespace tessara::virtualcard {

class DeviceObject final
    : public DriverObject<decklink::IDeckLink, decklink::IDeckLinkOutput,
                          decklink::IDeckLinkProfileAttributes, decklink::IDeckLinkKeyer>
{
    using HRESULT = decklink::HRESULT;

public:
    explicit DeviceObject(int device)
        : m_device(device)
    {
    }

    HRESULT QueryInterface(decklink::REFIID iid, void **object) override;

    HRESULT GetModelName(const char **name) override;
    HRESULT GetDisplayName(const char **name) override;

    HRESULT GetFlag(decklink::BMDDeckLinkAttributeID attribute, bool *value) override;
    HRESULT GetInt(decklink::BMDDeckLinkAttributeID attribute, std::int64_t *value) override;
    HRESULT GetFloat(decklink::BMDDeckLinkAttributeID attribute, double *value) override;
    HRESULT GetString(decklink::BMDDeckLinkAttributeID attribute, const char **value) override;

    HRESULT Enable(bool isExternal) override;
    HRESULT SetLevel(std::uint8_t level) override;
    HRESULT RampUp(std::uint32_t frames) override;
    HRESULT RampDown(std::uint32_t frames) override;
    HRESULT Disable() override;

    HRESULT DoesSupportVideoMode(decklink::BMDVideoConnection connection,
                                 decklink::BMDDisplayMode mode, decklink::BMDPixelFormat format,
                                 decklink::BMDVideoOutputConversionMode conversion,
                                 decklink::BMDSupportedVideoModeFlags flags,
                                 decklink::BMDDisplayMode *actualMode, bool *supported) override;
    HRESULT GetDisplayMode(decklink::BMDDisplayMode mode,
                           decklink::IDeckLinkDisplayMode **description) override;
    HRESULT GetDisplayModeIterator(decklink::IDeckLinkDisplayModeIterator **iterator) override;
    HRESULT EnableVideoOutput(decklink::BMDDisplayMode mode,
                              decklink::BMDVideoOutputFlags flags) override;
    HRESULT DisableVideoOutput() override;
    HRESULT CreateVideoFrame(std::int32_t width, std::int32_t height, std::int32_t rowBytes,
                             decklink::BMDPixelFormat format, decklink::BMDFrameFlags flags,
                             decklink::IDeckLinkMutableVideoFrame **frame) override;
    HRESULT CreateVideoFrameWithBuffer(std::int32_t width, std::int32_t height,
                                       std::int32_t rowBytes, decklink::BMDPixelFormat format,
                                       decklink::BMDFrameFlags flags,
                                       decklink::IDeckLinkVideoBuffer *buffer,
                                       decklink::IDeckLinkMutableVideoFrame **frame) override;
    HRESULT RowBytesForPixelFormat(decklink::BMDPixelFormat format, std::int32_t width,
                                   std::int32_t *rowBytes) override;
    HRESULT DisplayVideoFrameSync(decklink::IDeckLinkVideoFrame *frame) override;
    HRESULT IsScheduledPlaybackRunning(bool *running) override;
    HRESULT GetReferenceStatus(decklink::BMDReferenceStatus *status) override;

    // What the card doesn't have: sound, schedules, previews. They all answer E_NOTIMPL.
    HRESULT SetScreenPreviewCallback(decklink::IDeckLinkScreenPreviewCallback *) override;
    HRESULT CreateAncillaryData(decklink::BMDPixelFormat,
                                decklink::IDeckLinkVideoFrameAncillary **) override;
    HRESULT ScheduleVideoFrame(decklink::IDeckLinkVideoFrame *, decklink::BMDTimeValue,
                               decklink::BMDTimeValue, decklink::BMDTimeScale) override;
    HRESULT SetScheduledFrameCompletionCallback(decklink::IDeckLinkVideoOutputCallback *) override;
    HRESULT GetBufferedVideoFrameCount(std::uint32_t *) override;
    HRESULT EnableAudioOutput(decklink::BMDAudioSampleRate, decklink::BMDAudioSampleType,
                              std::uint32_t, decklink::BMDAudioOutputStreamType) override;
    HRESULT DisableAudioOutput() override;
    HRESULT WriteAudioSamplesSync(void *, std::uint32_t, std::uint32_t *) override;
    HRESULT BeginAudioPreroll() override;
    HRESULT EndAudioPreroll() override;
    HRESULT ScheduleAudioSamples(void *, std::uint32_t, decklink::BMDTimeValue,
                                 decklink::BMDTimeScale, std::uint32_t *) override;
    HRESULT GetBufferedAudioSampleFrameCount(std::uint32_t *) override;
    HRESULT FlushBufferedAudioSamples() override;
    HRESULT SetAudioCallback(decklink::IDeckLinkAudioOutputCallback *) override;
    HRESULT StartScheduledPlayback(decklink::BMDTimeValue, decklink::BMDTimeScale, double) override;
    HRESULT StopScheduledPlayback(decklink::BMDTimeValue, decklink::BMDTimeValue *,
                                  decklink::BMDTimeScale) override;
    HRESULT GetScheduledStreamTime(decklink::BMDTimeScale, decklink::BMDTimeValue *,
                                   double *) override;
    HRESULT GetHardwareReferenceClock(decklink::BMDTimeScale, decklink::BMDTimeValue *,
                                      decklink::BMDTimeValue *, decklink::BMDTimeValue *) override;
    HRESULT GetFrameCompletionReferenceTimestamp(decklink::IDeckLinkVideoFrame *,
                                                 decklink::BMDTimeScale,
                                                 decklink::BMDTimeValue *) override;

private:
    ~DeviceObject() override;

    bool refuses(std::string_view call) const;
    HRESULT show(const SharedFrameDescription &shape, decklink::IDeckLinkVideoFrame &frame);
    HRESULT transfer(const SharedFrameDescription &shape, decklink::IDeckLinkVideoBuffer *buffer,
                     const void *bytes);

    int m_device;
};

} // namespace tessara::virtualcard
