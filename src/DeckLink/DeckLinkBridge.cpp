#include "DeckLink/DeckLinkBridge.h"

#include <cstdlib>
#include <memory>
#include <span>

#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/DeckLinkNSDataVideoBuffer.h"
#include "Base/Pixels/PixelConversion.h"

namespace tessara {

using namespace decklink;

namespace {

using Failure = tl::unexpected<QString>;

// In the order of preference: the bytes of a BGRA frame reach the driver as they are.
constexpr BMDPixelFormat keyingFormats[] = {bmdFormat8BitBGRA, bmdFormat8BitARGB};
constexpr BMDPixelFormat standardFormats[] = {bmdFormat8BitBGRA, bmdFormat8BitARGB,
                                              bmdFormat8BitYUV};

constexpr quint8 fullOpacity = 255;

/// The text that a driver's call hands out, or the fallback.
template <typename Object>
QString textOf(Object *object, HRESULT (Object::*method)(const char **), const QString &fallback)
{
    const char *name = nullptr;
    const HRESULT result = (object->*method)(&name);
    const std::unique_ptr<const char, void (*)(const char *)> owned(
        name, [](const char *text) { std::free(const_cast<char *>(text)); });
    return result == S_OK && name ? QString::fromUtf8(name) : fallback;
}

DeckLinkReference<IDeckLink> deviceAtIndex(int index)
{
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    DeckLinkReference<IDeckLink> device;
    if (!iterator || index < 0)
        return device;
    for (int position = 0; position <= index; ++position) {
        if (iterator->Next(device.receive()) != S_OK || !device) {
            device.reset();
            break;
        }
    }
    return device;
}

std::optional<BMDPixelFormat> supportedFormat(IDeckLinkOutput &output, BMDDisplayMode mode,
                                              bool enableExternalKeying)
{
    const std::span<const BMDPixelFormat> formats =
        enableExternalKeying ? std::span<const BMDPixelFormat>(keyingFormats)
                             : std::span<const BMDPixelFormat>(standardFormats);
    const BMDSupportedVideoModeFlags flags =
        enableExternalKeying ? bmdSupportedVideoModeKeying : bmdSupportedVideoModeDefault;
    for (const BMDPixelFormat format : formats) {
        BMDDisplayMode actualMode = bmdModeUnknown;
        bool isSupported = false;
        output.DoesSupportVideoMode(bmdVideoConnectionUnspecified, mode, format,
                                    bmdNoVideoOutputConversion, flags, &actualMode, &isSupported);
        if (isSupported)
            return format;
    }
    return std::nullopt;
}

tl::expected<DeckLinkReference<IDeckLinkKeyer>, QString>
openKeyer(const DeckLinkReference<IDeckLink> &device)
{
    const auto attributes = device.query<IDeckLinkProfileAttributes>();
    if (!attributes)
        return Failure(QStringLiteral("Could not query DeckLink profile attributes for keying."));
    bool canKey = false;
    if (attributes->GetFlag(BMDDeckLinkSupportsExternalKeying, &canKey) != S_OK || !canKey)
        return Failure(QStringLiteral("Selected device does not support external keying (A+B)."));
    auto keyer = device.query<IDeckLinkKeyer>();
    if (!keyer)
        return Failure(QStringLiteral("Could not open DeckLink keyer interface."));
    return keyer;
}

std::optional<FrameFormat> formatOf(BMDPixelFormat format)
{
    switch (format) {
    case bmdFormat8BitBGRA:
        return FrameFormat::bgra;
    case bmdFormat8BitARGB:
        return FrameFormat::argb;
    case bmdFormat8BitYUV:
        return FrameFormat::yuv;
    default:
        return std::nullopt;
    }
}

/// Devices of an old driver enumerate like any other; only the output is missing.
QString noOutputText(HRESULT answer)
{
    const bool isOldDriver =
        answer == E_NOINTERFACE
        && deckLinkDriverVersion().value_or(oldestDeckLinkDriver) < oldestDeckLinkDriver;
    return isOldDriver ? deckLinkDriverTooOldText()
                       : QStringLiteral("Selected device does not support output.");
}

} // namespace

struct DeckLinkBridge::Opening
{
    DeckLinkReference<IDeckLink> device;
    DeckLinkReference<IDeckLinkOutput> output;
    DeckLinkReference<IDeckLinkKeyer> keyer;
    BMDDisplayMode mode = bmdModeUnknown;
    BMDPixelFormat format = bmdFormat8BitBGRA;
    bool isExternalKeying = false;
};

DeckLinkBridge::~DeckLinkBridge()
{
    stopOutput();
}

bool DeckLinkBridge::isSDKAvailable() const
{
    return bool(DeckLinkReference<IDeckLinkIterator>(CreateDeckLinkIteratorInstance()));
}

QList<DeckLinkDeviceInfo> DeckLinkBridge::deviceInfos() const
{
    QList<DeckLinkDeviceInfo> infos;
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    if (!iterator)
        return infos;
    DeckLinkReference<IDeckLink> device;
    while (iterator->Next(device.receive()) == S_OK && device) {
        const QString name =
            textOf(device.get(), &IDeckLink::GetDisplayName, QStringLiteral("DeckLink"));
        infos.append({int(infos.size()), name});
    }
    return infos;
}

QList<DeckLinkDisplayModeInfo> DeckLinkBridge::displayModesForDeviceAtIndex(int index) const
{
    QList<DeckLinkDisplayModeInfo> infos;
    const auto device = deviceAtIndex(index);
    if (!device)
        return infos;
    const auto output = device.query<IDeckLinkOutput>();
    DeckLinkReference<IDeckLinkDisplayModeIterator> iterator;
    if (!output || output->GetDisplayModeIterator(iterator.receive()) != S_OK || !iterator)
        return infos;
    DeckLinkReference<IDeckLinkDisplayMode> mode;
    while (iterator->Next(mode.receive()) == S_OK && mode) {
        DeckLinkDisplayModeInfo info;
        info.name =
            textOf(mode.get(), &IDeckLinkDisplayMode::GetName, QStringLiteral("Unknown mode"));
        info.modeID = mode->GetDisplayMode();
        BMDTimeValue frameDuration = 0;
        BMDTimeScale timeScale = 0;
        if (mode->GetFrameRate(&frameDuration, &timeScale) == S_OK) {
            info.frameDuration = frameDuration;
            info.timeScale = timeScale;
        }
        info.width = int(mode->GetWidth());
        info.height = int(mode->GetHeight());
        infos.append(info);
    }
    return infos;
}

tl::expected<DeckLinkBridge::Opening, QString> DeckLinkBridge::open(int index, BMDDisplayMode mode,
                                                                    bool enableExternalKeying) const
{
    Opening opening;
    opening.mode = mode;
    opening.isExternalKeying = enableExternalKeying;
    opening.device = deviceAtIndex(index);
    if (!opening.device)
        return Failure(QStringLiteral("Could not open DeckLink device."));
    HRESULT answer = S_OK;
    opening.output = opening.device.query<IDeckLinkOutput>(&answer);
    if (!opening.output)
        return Failure(noOutputText(answer));
    const auto format = supportedFormat(*opening.output.get(), mode, enableExternalKeying);
    if (!format)
        return Failure(
            enableExternalKeying
                ? QStringLiteral("Selected mode is not supported for alpha output (BGRA/ARGB).")
                : QStringLiteral("Selected mode is not supported by this device output."));
    opening.format = *format;
    if (enableExternalKeying) {
        auto keyer = openKeyer(opening.device);
        if (!keyer)
            return Failure(keyer.error());
        opening.keyer = std::move(*keyer);
    }
    return opening;
}

DeckLinkBridge::Result DeckLinkBridge::enable(Opening &opening) const
{
    if (opening.output->EnableVideoOutput(opening.mode, bmdVideoOutputFlagDefault) != S_OK)
        return Failure(QStringLiteral("EnableVideoOutput failed."));
    if (!opening.keyer)
        return {};
    if (opening.keyer->Enable(true) != S_OK) {
        opening.output->DisableVideoOutput();
        return Failure(QStringLiteral("Could not enable DeckLink external keyer."));
    }
    opening.keyer->SetLevel(fullOpacity);
    return {};
}

DeckLinkBridge::Result DeckLinkBridge::startOutputForDeviceAtIndex(int index, qint64 modeID,
                                                                   bool enableExternalKeying)
{
    stopOutput();
    auto opening = open(index, BMDDisplayMode(modeID), enableExternalKeying);
    if (!opening)
        return Failure(opening.error());
    if (const Result enabled = enable(*opening); !enabled)
        return enabled;
    m_device = std::move(opening->device);
    m_output = std::move(opening->output);
    m_keyer = std::move(opening->keyer);
    m_displayMode = opening->mode;
    m_pixelFormat = opening->format;
    m_isExternalKeying = opening->isExternalKeying;
    return {};
}

DeckLinkBridge::Result DeckLinkBridge::sendFrameBGRA(const FrameBytes &data, int width, int height,
                                                     int rowBytes)
{
    if (!m_output)
        return Failure(QStringLiteral("DeckLink output is not active."));
    if (width < 1 || height < 1 || rowBytes < 1)
        return Failure(QStringLiteral("Invalid frame dimensions."));
    if (data.size() < qsizetype(rowBytes) * height)
        return Failure(QStringLiteral("Frame buffer is too small."));
    if (m_pixelFormat == bmdFormatUnspecified)
        return Failure(QStringLiteral("DeckLink pixel format is not configured."));
    return converted({data, rowBytes}, width, height)
        .and_then([&](Rows frame) { return packedForDevice(std::move(frame), width, height); })
        .and_then([&](const Rows &frame) { return display(frame, width, height); });
}

tl::expected<DeckLinkBridge::FrameLayout, QString> DeckLinkBridge::frameLayout(int width) const
{
    if (!m_output)
        return Failure(QStringLiteral("DeckLink output is not active."));
    if (width < 1)
        return Failure(QStringLiteral("Invalid frame dimensions."));
    const std::optional<FrameFormat> format = formatOf(m_pixelFormat);
    if (!format)
        return Failure(QStringLiteral("DeckLink pixel format is not configured."));
    return deviceRowBytes(width).map([&](qsizetype rowBytes) {
        return FrameLayout{*format, rowBytes};
    });
}

DeckLinkBridge::Result DeckLinkBridge::sendDeviceFrame(const FrameBytes &data, int width,
                                                       int height)
{
    const tl::expected<FrameLayout, QString> layout = frameLayout(width);
    if (!layout)
        return Failure(layout.error());
    if (height < 1)
        return Failure(QStringLiteral("Invalid frame dimensions."));
    if (data.size() < layout->rowBytes * height)
        return Failure(QStringLiteral("Frame buffer is too small."));
    return display({data, layout->rowBytes}, width, height);
}

DeckLinkBridge::Converted DeckLinkBridge::converted(const Rows &frame, int width, int height) const
{
    if (m_pixelFormat == bmdFormat8BitBGRA)
        return frame;
    // The conversions read whole pixels.
    if (frame.rowBytes < qsizetype(width) * 4)
        return Failure(QStringLiteral("Invalid frame dimensions."));
    const SourceRows source{frame.bytes.data(), frame.rowBytes};
    if (m_pixelFormat == bmdFormat8BitARGB) {
        Rows argb{FrameBytes::allocate(frame.rowBytes * height), frame.rowBytes};
        if (argb.bytes.isNull())
            return Failure(QStringLiteral("Could not allocate ARGB frame buffer."));
        convertBGRAToARGB(source, {argb.bytes.writableData(), argb.rowBytes}, width, height);
        return argb;
    }
    const qsizetype stride = rowBytesOf2vuy(width);
    Rows yuv{FrameBytes::allocate(stride * height), stride};
    if (yuv.bytes.isNull())
        return Failure(QStringLiteral("Could not allocate YUV frame buffer."));
    convertBGRATo2vuy(source, {yuv.bytes.writableData(), stride}, width, height);
    return yuv;
}

tl::expected<qsizetype, QString> DeckLinkBridge::deviceRowBytes(int width) const
{
    std::int32_t rowBytes = 0;
    if (m_output->RowBytesForPixelFormat(m_pixelFormat, width, &rowBytes) != S_OK || rowBytes < 1)
        return Failure(QStringLiteral("RowBytesForPixelFormat failed."));
    return rowBytes;
}

DeckLinkBridge::Converted DeckLinkBridge::packedForDevice(Rows frame, int width, int height) const
{
    const tl::expected<qsizetype, QString> rowBytes = deviceRowBytes(width);
    if (!rowBytes)
        return Failure(rowBytes.error());
    if (*rowBytes == frame.rowBytes)
        return frame;
    Rows packed{FrameBytes::allocate(*rowBytes * height), *rowBytes};
    if (packed.bytes.isNull())
        return Failure(QStringLiteral("Could not allocate frame buffer."));
    repackRows({frame.bytes.data(), frame.rowBytes}, {packed.bytes.writableData(), packed.rowBytes},
               height);
    return packed;
}

DeckLinkBridge::Result DeckLinkBridge::display(const Rows &frame, int width, int height)
{
    const DeckLinkReference<IDeckLinkVideoBuffer> buffer(
        new DeckLinkNSDataVideoBuffer(frame.bytes));
    DeckLinkReference<IDeckLinkMutableVideoFrame> videoFrame;
    const HRESULT created = m_output->CreateVideoFrameWithBuffer(
        width, height, std::int32_t(frame.rowBytes), m_pixelFormat, bmdFrameFlagDefault,
        buffer.get(), videoFrame.receive());
    if (created != S_OK || !videoFrame)
        return Failure(QStringLiteral("CreateVideoFrameWithBuffer failed."));
    if (m_output->DisplayVideoFrameSync(videoFrame.get()) != S_OK)
        return Failure(QStringLiteral("DisplayVideoFrameSync failed."));
    return {};
}

void DeckLinkBridge::stopOutput()
{
    if (m_keyer)
        m_keyer->Disable();
    if (m_output)
        m_output->DisableVideoOutput();
    m_keyer.reset();
    m_output.reset();
    m_device.reset();
    m_displayMode = bmdModeUnknown;
    m_pixelFormat = bmdFormat8BitBGRA;
    m_isExternalKeying = false;
}

} // namespace tessara
