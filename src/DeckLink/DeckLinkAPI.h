// The part of the DeckLink driver's binary interface that we use: slot order, argument types and
// identifiers are the driver's, from version 14.3 on. Plain C++ without Qt, for both sides of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessara::decklink {

using HRESULT = int; // negative means failure, but S_FALSE is positive: test for S_OK
using ULONG = unsigned long;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = HRESULT(0x80000001);
inline constexpr HRESULT E_OUTOFMEMORY = HRESULT(0x80000002);
inline constexpr HRESULT E_INVALIDARG = HRESULT(0x80000003);
inline constexpr HRESULT E_NOINTERFACE = HRESULT(0x80000004);
inline constexpr HRESULT E_POINTER = HRESULT(0x80000005);
inline constexpr HRESULT E_HANDLE = HRESULT(0x80000006);
inline constexpr HRESULT E_ABORT = HRESULT(0x80000007);
inline constexpr HRESULT E_FAIL = HRESULT(0x80000008);
inline constexpr HRESULT E_ACCESSDENIED = HRESULT(0x80000009);
inline constexpr HRESULT E_UNEXPECTED = HRESULT(0x8000FFFF);

// Passed by value in two registers, so it has to stay trivially copyable.
struct REFIID
{
    std::array<unsigned char, 16> bytes{};

    bool operator==(const REFIID &) const = default;
};

/// The bytes in the order in which the text prints them.
consteval REFIID interfaceID(std::string_view text)
{
    const auto digit = [](char letter) { return letter <= '9' ? letter - '0' : letter - 'A' + 10; };
    REFIID identifier;
    std::size_t digits = 0;
    for (const char letter : text) {
        if (letter == '-')
            continue;
        unsigned char &byte = identifier.bytes.at(digits++ / 2);
        byte = static_cast<unsigned char>(byte << 4 | digit(letter));
    }
    return identifier;
}

/// A code of four characters, the first of them in the top byte.
consteval std::uint32_t fourCharacters(const char (&text)[5])
{
    std::uint32_t code = 0;
    for (int index = 0; index < 4; ++index)
        code = code << 8 | static_cast<unsigned char>(text[index]);
    return code;
}

using BMDTimeValue = std::int64_t;
using BMDTimeScale = std::int64_t;
using BMDTimecodeUserBits = std::uint32_t;
using BMDTimecodeFormat = std::uint32_t;
using BMDTimecodeFlags = std::uint32_t;
using BMDDisplayMode = std::uint32_t;
using BMDDisplayModeFlags = std::uint32_t;
using BMDFieldDominance = std::uint32_t;
using BMDPixelFormat = std::uint32_t;
using BMDVideoConnection = std::uint32_t;
using BMDVideoOutputConversionMode = std::uint32_t;
using BMDSupportedVideoModeFlags = std::uint32_t;
using BMDVideoOutputFlags = std::uint32_t;
using BMDFrameFlags = std::uint32_t;
using BMDBufferAccessFlags = std::uint32_t;
using BMDReferenceStatus = std::uint32_t;
using BMDOutputFrameCompletionResult = std::uint32_t;
using BMDAudioSampleRate = std::uint32_t;
using BMDAudioSampleType = std::uint32_t;
using BMDAudioOutputStreamType = std::uint32_t;
using BMDDeckLinkAttributeID = std::uint32_t;
using BMDDeckLinkAPIInformationID = std::uint32_t;

inline constexpr BMDPixelFormat bmdFormatUnspecified = 0;
inline constexpr BMDPixelFormat bmdFormat8BitYUV = fourCharacters("2vuy"); // Cb Y0 Cr Y1
inline constexpr BMDPixelFormat bmdFormat8BitARGB = 32;                    // no character code
inline constexpr BMDPixelFormat bmdFormat8BitBGRA = fourCharacters("BGRA");

inline constexpr BMDDisplayMode bmdModeUnknown = fourCharacters("iunk");
inline constexpr BMDVideoConnection bmdVideoConnectionUnspecified = 0;
inline constexpr BMDVideoOutputConversionMode bmdNoVideoOutputConversion = fourCharacters("none");
inline constexpr BMDSupportedVideoModeFlags bmdSupportedVideoModeDefault = 0;
inline constexpr BMDSupportedVideoModeFlags bmdSupportedVideoModeKeying = 1 << 0;
inline constexpr BMDVideoOutputFlags bmdVideoOutputFlagDefault = 0;
inline constexpr BMDFrameFlags bmdFrameFlagDefault = 0;
inline constexpr BMDBufferAccessFlags bmdBufferAccessRead = 1;
inline constexpr BMDBufferAccessFlags bmdBufferAccessWrite = 2;
inline constexpr BMDBufferAccessFlags bmdBufferAccessReadAndWrite = 3;
inline constexpr BMDDeckLinkAttributeID BMDDeckLinkSupportsInternalKeying = fourCharacters("keyi");
inline constexpr BMDDeckLinkAttributeID BMDDeckLinkSupportsExternalKeying = fourCharacters("keye");
inline constexpr BMDDeckLinkAttributeID BMDDeckLinkVideoIOSupport = fourCharacters("vios");
inline constexpr BMDDeckLinkAttributeID BMDDeckLinkPersistentID = fourCharacters("peid");
inline constexpr BMDDeckLinkAPIInformationID BMDDeckLinkAPIVersion = fourCharacters("vers");
inline constexpr std::int64_t bmdDeviceSupportsPlayback = 2;
inline constexpr BMDFieldDominance bmdUpperFieldFirst = fourCharacters("uppr");
inline constexpr BMDFieldDominance bmdProgressiveFrame = fourCharacters("prog");
inline constexpr BMDDisplayModeFlags bmdDisplayModeColorspaceRec709 = 1 << 2;
inline constexpr BMDDisplayModeFlags bmdDisplayModeColorspaceRec2020 = 1 << 3;
inline constexpr BMDReferenceStatus bmdReferenceNotSupportedByHardware = 1;

// Only ever passed on.
class IDeckLinkAudioOutputCallback;
class IDeckLinkScreenPreviewCallback;
class IDeckLinkTimecode;
class IDeckLinkVideoFrameAncillary;

// The order of the methods below is the interface. IUnknown and IDeckLinkIterator have no
// destructor; in all others it comes last and takes two slots.

class IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("00000000-0000-0000-C000-000000000046");

    virtual HRESULT QueryInterface(REFIID iid, void **object) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;
};

class IDeckLink : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("C418FBDD-0587-48ED-8FE5-640F0A14AF91");

    // Texts are the caller's, to be given back with free().
    virtual HRESULT GetModelName(const char **name) = 0;
    virtual HRESULT GetDisplayName(const char **name) = 0;

protected:
    virtual ~IDeckLink() {}
};

class IDeckLinkIterator : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("50FB36CD-3063-4B73-BDBB-958087F2D8BA");

    virtual HRESULT Next(IDeckLink **device) = 0;
};

class IDeckLinkVideoBuffer : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("CCB4B64A-5C86-4E02-B778-885D352709FE");

    virtual HRESULT GetBytes(void **bytes) = 0;
    virtual HRESULT StartAccess(BMDBufferAccessFlags flags) = 0;
    virtual HRESULT EndAccess(BMDBufferAccessFlags flags) = 0;

protected:
    virtual ~IDeckLinkVideoBuffer() {}
};

class IDeckLinkVideoFrame : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("6502091C-615F-4F51-BAF6-45C4256DD5B0");

    virtual long GetWidth() = 0;
    virtual long GetHeight() = 0;
    virtual long GetRowBytes() = 0;
    virtual BMDPixelFormat GetPixelFormat() = 0;
    virtual BMDFrameFlags GetFlags() = 0;
    virtual HRESULT GetTimecode(BMDTimecodeFormat format, IDeckLinkTimecode **timecode) = 0;
    virtual HRESULT GetAncillaryData(IDeckLinkVideoFrameAncillary **ancillary) = 0;

protected:
    virtual ~IDeckLinkVideoFrame() {}
};

class IDeckLinkMutableVideoFrame : public IDeckLinkVideoFrame
{
public:
    static constexpr REFIID iid = interfaceID("CF9EB134-0374-4C5B-95FA-1EC14819FF62");

    virtual HRESULT SetFlags(BMDFrameFlags flags) = 0;
    virtual HRESULT SetTimecode(BMDTimecodeFormat format, IDeckLinkTimecode *timecode) = 0;
    virtual HRESULT SetTimecodeFromComponents(BMDTimecodeFormat format, std::uint8_t hours,
                                              std::uint8_t minutes, std::uint8_t seconds,
                                              std::uint8_t frames, BMDTimecodeFlags flags) = 0;
    virtual HRESULT SetAncillaryData(IDeckLinkVideoFrameAncillary *ancillary) = 0;
    virtual HRESULT SetTimecodeUserBits(BMDTimecodeFormat format, BMDTimecodeUserBits bits) = 0;
    virtual HRESULT SetInterfaceProvider(REFIID iid, IUnknown *provider) = 0;

protected:
    ~IDeckLinkMutableVideoFrame() override {} // in the slots of its base
};

class IDeckLinkDisplayMode : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("3EB2C1AB-0A3D-4523-A3AD-F40D7FB14E78");

    virtual HRESULT GetName(const char **name) = 0;
    virtual BMDDisplayMode GetDisplayMode() = 0;
    virtual long GetWidth() = 0;
    virtual long GetHeight() = 0;
    virtual HRESULT GetFrameRate(BMDTimeValue *frameDuration, BMDTimeScale *timeScale) = 0;
    virtual BMDFieldDominance GetFieldDominance() = 0;
    virtual BMDDisplayModeFlags GetFlags() = 0;

protected:
    virtual ~IDeckLinkDisplayMode() {}
};

class IDeckLinkDisplayModeIterator : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("9C88499F-F601-4021-B80B-032E4EB41C35");

    virtual HRESULT Next(IDeckLinkDisplayMode **mode) = 0;

protected:
    virtual ~IDeckLinkDisplayModeIterator() {}
};

class IDeckLinkVideoOutputCallback : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("5BE6DF26-02CE-433E-99D9-9A87C3AC171F");

    virtual HRESULT ScheduledFrameCompleted(IDeckLinkVideoFrame *frame,
                                            BMDOutputFrameCompletionResult result) = 0;
    virtual HRESULT ScheduledPlaybackHasStopped() = 0;

protected:
    virtual ~IDeckLinkVideoOutputCallback() {}
};

class IDeckLinkOutput : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("1A8077F1-9FE2-4533-8147-2294305E253F");

    virtual HRESULT DoesSupportVideoMode(BMDVideoConnection connection, BMDDisplayMode mode,
                                         BMDPixelFormat format,
                                         BMDVideoOutputConversionMode conversion,
                                         BMDSupportedVideoModeFlags flags,
                                         BMDDisplayMode *actualMode, bool *supported) = 0;
    virtual HRESULT GetDisplayMode(BMDDisplayMode mode, IDeckLinkDisplayMode **description) = 0;
    virtual HRESULT GetDisplayModeIterator(IDeckLinkDisplayModeIterator **iterator) = 0;
    virtual HRESULT SetScreenPreviewCallback(IDeckLinkScreenPreviewCallback *callback) = 0;
    virtual HRESULT EnableVideoOutput(BMDDisplayMode mode, BMDVideoOutputFlags flags) = 0;
    virtual HRESULT DisableVideoOutput() = 0;
    virtual HRESULT CreateVideoFrame(std::int32_t width, std::int32_t height, std::int32_t rowBytes,
                                     BMDPixelFormat format, BMDFrameFlags flags,
                                     IDeckLinkMutableVideoFrame **frame) = 0;
    virtual HRESULT CreateVideoFrameWithBuffer(std::int32_t width, std::int32_t height,
                                               std::int32_t rowBytes, BMDPixelFormat format,
                                               BMDFrameFlags flags, IDeckLinkVideoBuffer *buffer,
                                               IDeckLinkMutableVideoFrame **frame) = 0;
    virtual HRESULT RowBytesForPixelFormat(BMDPixelFormat format, std::int32_t width,
                                           std::int32_t *rowBytes) = 0;
    virtual HRESULT CreateAncillaryData(BMDPixelFormat format,
                                        IDeckLinkVideoFrameAncillary **ancillary) = 0;
    virtual HRESULT DisplayVideoFrameSync(IDeckLinkVideoFrame *frame) = 0;
    virtual HRESULT ScheduleVideoFrame(IDeckLinkVideoFrame *frame, BMDTimeValue time,
                                       BMDTimeValue duration, BMDTimeScale scale) = 0;
    virtual HRESULT SetScheduledFrameCompletionCallback(IDeckLinkVideoOutputCallback *callback) = 0;
    virtual HRESULT GetBufferedVideoFrameCount(std::uint32_t *count) = 0;
    virtual HRESULT EnableAudioOutput(BMDAudioSampleRate rate, BMDAudioSampleType type,
                                      std::uint32_t channels, BMDAudioOutputStreamType stream) = 0;
    virtual HRESULT DisableAudioOutput() = 0;
    virtual HRESULT WriteAudioSamplesSync(void *samples, std::uint32_t count,
                                          std::uint32_t *written) = 0;
    virtual HRESULT BeginAudioPreroll() = 0;
    virtual HRESULT EndAudioPreroll() = 0;
    virtual HRESULT ScheduleAudioSamples(void *samples, std::uint32_t count, BMDTimeValue time,
                                         BMDTimeScale scale, std::uint32_t *written) = 0;
    virtual HRESULT GetBufferedAudioSampleFrameCount(std::uint32_t *count) = 0;
    virtual HRESULT FlushBufferedAudioSamples() = 0;
    virtual HRESULT SetAudioCallback(IDeckLinkAudioOutputCallback *callback) = 0;
    virtual HRESULT StartScheduledPlayback(BMDTimeValue start, BMDTimeScale scale,
                                           double speed) = 0;
    virtual HRESULT StopScheduledPlayback(BMDTimeValue stop, BMDTimeValue *actualStop,
                                          BMDTimeScale scale) = 0;
    virtual HRESULT IsScheduledPlaybackRunning(bool *running) = 0;
    virtual HRESULT GetScheduledStreamTime(BMDTimeScale scale, BMDTimeValue *time,
                                           double *speed) = 0;
    virtual HRESULT GetReferenceStatus(BMDReferenceStatus *status) = 0;
    virtual HRESULT GetHardwareReferenceClock(BMDTimeScale scale, BMDTimeValue *time,
                                              BMDTimeValue *timeInFrame,
                                              BMDTimeValue *ticksPerFrame) = 0;
    virtual HRESULT GetFrameCompletionReferenceTimestamp(IDeckLinkVideoFrame *frame,
                                                         BMDTimeScale scale,
                                                         BMDTimeValue *time) = 0;

protected:
    virtual ~IDeckLinkOutput() {}
};

class IDeckLinkProfileAttributes : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("17D4BF8E-4911-473A-80A0-731CF6FF345B");

    virtual HRESULT GetFlag(BMDDeckLinkAttributeID attribute, bool *value) = 0;
    virtual HRESULT GetInt(BMDDeckLinkAttributeID attribute, std::int64_t *value) = 0;
    virtual HRESULT GetFloat(BMDDeckLinkAttributeID attribute, double *value) = 0;
    virtual HRESULT GetString(BMDDeckLinkAttributeID attribute, const char **value) = 0;

protected:
    virtual ~IDeckLinkProfileAttributes() {}
};

class IDeckLinkAPIInformation : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("7BEA3C68-730D-4322-AF34-8A7152B532A4");

    virtual HRESULT GetFlag(BMDDeckLinkAPIInformationID item, bool *value) = 0;
    virtual HRESULT GetInt(BMDDeckLinkAPIInformationID item, std::int64_t *value) = 0;
    virtual HRESULT GetFloat(BMDDeckLinkAPIInformationID item, double *value) = 0;
    virtual HRESULT GetString(BMDDeckLinkAPIInformationID item, const char **value) = 0;

protected:
    virtual ~IDeckLinkAPIInformation() {}
};

class IDeckLinkKeyer : public IUnknown
{
public:
    static constexpr REFIID iid = interfaceID("89AFCAF5-65F8-421E-98F7-96FE5F5BFBA3");

    virtual HRESULT Enable(bool isExternal) = 0;
    virtual HRESULT SetLevel(std::uint8_t level) = 0; // 255 is full opacity
    virtual HRESULT RampUp(std::uint32_t frames) = 0;
    virtual HRESULT RampDown(std::uint32_t frames) = 0;
    virtual HRESULT Disable() = 0;

protected:
    virtual ~IDeckLinkKeyer() {}
};

} // namespace tessara::decklink
