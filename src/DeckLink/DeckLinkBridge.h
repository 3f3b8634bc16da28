// The thin, synchronous layer over one device of the driver.
#pragma once

#include <QList>
#include <QString>

#include <tl/expected.hpp>

#include "DeckLink/DeckLinkModels.h"
#include "DeckLink/DeckLinkReference.h"
#include "Base/Pixels/FrameBytes.h"
#include "Base/Pixels/FrameFormat.h"

namespace tessara {

/// Main thread only. An error is one fixed sentence; whatever fails leaves the output closed.
class DeckLinkBridge
{
    Q_DISABLE_COPY_MOVE(DeckLinkBridge)

public:
    using Result = tl::expected<void, QString>;

    DeckLinkBridge() = default;
    ~DeckLinkBridge();

    bool isSDKAvailable() const;
    QList<DeckLinkDeviceInfo> deviceInfos() const;
    QList<DeckLinkDisplayModeInfo> displayModesForDeviceAtIndex(int index) const;

    /// Closes the output that is open, whether or not the new one opens.
    [[nodiscard]] Result startOutputForDeviceAtIndex(int index, qint64 modeID,
                                                     bool enableExternalKeying);
    /// How the open device takes its frames.
    struct FrameLayout
    {
        FrameFormat format = FrameFormat::bgra;
        qsizetype rowBytes = 0; // of the device; may be more, or less, than the pixels take
    };
    [[nodiscard]] tl::expected<FrameLayout, QString> frameLayout(int width) const;
    /// Shows one frame whose rows are as the device takes them. Waits until it has taken it.
    [[nodiscard]] Result sendDeviceFrame(const FrameBytes &data, int width, int height);
    /// Shows one frame of B, G, R, A rows. Waits until the device has taken it.
    [[nodiscard]] Result sendFrameBGRA(const FrameBytes &data, int width, int height, int rowBytes);
    void stopOutput();
    bool isOutputRunning() const { return bool(m_output); }

private:
    struct Rows
    {
        FrameBytes bytes;
        qsizetype rowBytes = 0;
    };
    using Converted = tl::expected<Rows, QString>;

    struct Opening;
    tl::expected<Opening, QString> open(int index, decklink::BMDDisplayMode mode,
                                        bool enableExternalKeying) const;
    Result enable(Opening &opening) const;
    Converted converted(const Rows &frame, int width, int height) const;
    tl::expected<qsizetype, QString> deviceRowBytes(int width) const;
    Converted packedForDevice(Rows frame, int width, int height) const;
    Result display(const Rows &frame, int width, int height);

    DeckLinkReference<decklink::IDeckLink> m_device;
    DeckLinkReference<decklink::IDeckLinkOutput> m_output;
    DeckLinkReference<decklink::IDeckLinkKeyer> m_keyer;
    decklink::BMDDisplayMode m_displayMode = decklink::bmdModeUnknown;
    decklink::BMDPixelFormat m_pixelFormat = decklink::bmdFormat8BitBGRA;
    bool m_isExternalKeying = false;
};

} // namespace tessara
