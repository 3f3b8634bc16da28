#include "DeckLink/VirtualCard.h"

#include <cstdlib>
#include <vector>

#include "Base/ManualClock.h"
#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/MonitorImage.h"
#include "virtual-card/Instruments.h"

namespace tessara {
namespace {

constexpr quint32 knownVersion = 3;

struct FormatName
{
    quint32 pixelFormat;
    const char *name;
};
constexpr FormatName formatNames[] = {{decklink::bmdFormat8BitBGRA, "BGRA"},
                                      {decklink::bmdFormat8BitARGB, "ARGB"},
                                      {decklink::bmdFormat8BitYUV, "2vuy"}};

QString nameOfFormat(quint32 pixelFormat)
{
    for (const FormatName &format : formatNames) {
        if (format.pixelFormat == pixelFormat)
            return QString::fromLatin1(format.name);
    }
    return {};
}

std::optional<quint32> formatOfName(const QString &name)
{
    for (const FormatName &format : formatNames) {
        if (name == QLatin1String(format.name))
            return format.pixelFormat;
    }
    return std::nullopt;
}

} // namespace

std::optional<VirtualCard> VirtualCard::find()
{
    const auto entry = reinterpret_cast<const TessaraVirtualCardInstruments *(*)()>(
        deckLinkLibrary().symbol("TessaraVirtualCardInstruments_0001"));
    const TessaraVirtualCardInstruments *instruments = entry ? entry() : nullptr;
    if (!instruments || instruments->version != knownVersion
        || instruments->size < sizeof(TessaraVirtualCardInstruments))
        return std::nullopt;
    return VirtualCard(instruments);
}

QList<VirtualCardDevice> VirtualCard::devices() const
{
    QList<VirtualCardDevice> devices;
    for (int index = 0; index < m_instruments->deviceCount(); ++index) {
        TessaraVirtualCardDevice device = {};
        m_instruments->device(index, &device);
        devices.append({QString::fromUtf8(device.name), device.supportsExternalKeying,
                        device.supportsInternalKeying, device.isPlugged, device.isOutputEnabled,
                        device.isKeyerEnabled, device.keyerLevel,
                        QString::fromUtf8(device.modeName)});
    }
    return devices;
}

std::optional<VirtualCardFrames> VirtualCard::frames(int device) const
{
    TessaraVirtualCardFrames frames = {};
    if (!m_instruments->frames(device, &frames))
        return std::nullopt;
    return VirtualCardFrames{frames.sent,
                             frames.waited,
                             nameOfFormat(frames.pixelFormat),
                             frames.width,
                             frames.height,
                             frames.rowBytes,
                             {frames.intervalP50, frames.intervalP99, frames.intervalMax}};
}

std::optional<VirtualCardFrame> VirtualCard::newestFrame(int device) const
{
    TessaraVirtualCardFrame frame = {};
    QByteArray bytes;
    // Between asking for the size and for the bytes another frame may arrive.
    for (quint64 size = m_instruments->newestFrame(device, &frame, nullptr, 0);
         size > quint64(bytes.size());
         size = m_instruments->newestFrame(device, &frame, bytes.data(), quint64(bytes.size())))
        bytes.resize(qsizetype(size));
    if (bytes.isEmpty())
        return std::nullopt;
    bytes.resize(qsizetype(frame.rowBytes) * frame.height);
    return VirtualCardFrame{frame.number,   frame.width,       frame.height,
                            frame.rowBytes, frame.pixelFormat, bytes};
}

QImage VirtualCard::newestImage(int device) const
{
    const std::optional<VirtualCardFrame> frame = newestFrame(device);
    if (!frame)
        return {};
    return monitorImage(
        {reinterpret_cast<const quint8 *>(frame->bytes.constData()), frame->rowBytes},
        frame->pixelFormat, frame->width, frame->height);
}

bool VirtualCard::fail(int device, const QString &call, int times) const
{
    return m_instruments->fail(device, call.toUtf8().constData(), times);
}

bool VirtualCard::limit(int device, const VirtualCardLimits &limits) const
{
    std::vector<QByteArray> names;
    for (const QString &name : limits.modes.value_or(QStringList()))
        names.push_back(name.toUtf8());
    std::vector<const char *> modes;
    for (const QByteArray &name : names)
        modes.push_back(name.constData());
    std::vector<quint32> formats;
    for (const QString &name : limits.formats.value_or(QStringList())) {
        const std::optional<quint32> format = formatOfName(name);
        if (!format)
            return false;
        formats.push_back(*format);
    }
    // An empty list allows nothing, unlike none; its address must not be null.
    modes.reserve(1);
    formats.reserve(1);
    const TessaraVirtualCardLimits record{limits.modes ? modes.data() : nullptr,
                                          qint32(modes.size()),
                                          limits.formats ? formats.data() : nullptr,
                                          qint32(formats.size()),
                                          limits.keying,
                                          limits.rowBytes,
                                          limits.acceptsAnySize};
    return m_instruments->limit(device, &record);
}

bool VirtualCard::remove(int device) const
{
    return m_instruments->remove(device);
}

bool VirtualCard::restore(int device) const
{
    return m_instruments->restore(device);
}

void VirtualCard::setFreeRunning(bool isFreeRunning) const
{
    m_instruments->setFreeRunning(isFreeRunning);
}

void VirtualCard::setClock(ManualClock *clock) const
{
    if (!clock)
        return m_instruments->setTime(nullptr);
    const auto now = [](void *context) -> int64_t {
        return static_cast<ManualClock *>(context)->now().count();
    };
    const auto waitUntil = [](void *context, int64_t moment) {
        static_cast<ManualClock *>(context)->waitUntil(Nanoseconds{moment});
    };
    const TessaraVirtualCardTime time{clock, now, waitUntil};
    m_instruments->setTime(&time);
}

bool VirtualCard::setChannel(const QString &name) const
{
    return m_instruments->setChannel(name.toUtf8().constData());
}

void VirtualCard::setDriverVersion(quint32 version) const
{
    m_instruments->setDriverVersion(version);
}

qint64 VirtualCard::liveObjects() const
{
    return m_instruments->liveObjects();
}

qint64 VirtualCard::callCount(int device, const QString &call) const
{
    return m_instruments->callCount(device, call.toUtf8().constData());
}

void VirtualCard::reset() const
{
    m_instruments->reset();
}

} // namespace tessara
