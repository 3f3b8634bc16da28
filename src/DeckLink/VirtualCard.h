// The instruments of the virtual card that this process drives.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

struct TessaraVirtualCardInstruments;

namespace tessara {

class ManualClock;

/// One device of the virtual card, unplugged ones included.
struct VirtualCardDevice
{
    QString name;
    bool supportsExternalKeying = false;
    bool supportsInternalKeying = false;
    bool isPlugged = true;
    bool isOutputEnabled = false;
    bool isKeyerEnabled = false;
    int keyerLevel = 0; // 0 to 255
    QString modeName;   // of the last output, empty before the first

    bool operator==(const VirtualCardDevice &) const = default;
};

/// Between display calls.
struct VirtualCardIntervals
{
    double p50 = 0; // s
    double p99 = 0; // s
    double max = 0; // s
};

/// What a device was sent since its output was last enabled.
struct VirtualCardFrames
{
    qint64 sent = 0;
    qint64 waited = 0; // display calls that came too early and were held
    QString format;    // "BGRA", "ARGB" or "2vuy", empty before the first frame
    int width = 0;
    int height = 0;
    int rowBytes = 0;
    VirtualCardIntervals intervals;
};

/// What a device allows; what is absent is not limited.
struct VirtualCardLimits
{
    std::optional<QStringList> modes = std::nullopt;   // by name
    std::optional<QStringList> formats = std::nullopt; // "BGRA", "ARGB", "2vuy"
    bool keying = true;
    int rowBytes = 0;            // 0: as the format needs
    bool acceptsAnySize = false; // frames of another size than the mode's
};

/// The bytes of one frame as they were sent.
struct VirtualCardFrame
{
    qint64 number = 0; // counts from 1
    int width = 0;
    int height = 0;
    int rowBytes = 0;
    quint32 pixelFormat = 0;
    QByteArray bytes;
};

class VirtualCard
{
public:
    /// Nothing when a real driver is loaded, or none.
    static std::optional<VirtualCard> find();

    QList<VirtualCardDevice> devices() const;
    std::optional<VirtualCardFrames> frames(int device) const;
    std::optional<VirtualCardFrame> newestFrame(int device) const;
    /// As a monitor behind the fill connector shows it; null before the first frame.
    QImage newestImage(int device) const;

    /// Lets the next `times` calls of a driver operation fail, 0 none. The entry points and the
    /// device iterator belong to no device: -1. False for a device or a call that doesn't exist.
    [[nodiscard]] bool fail(int device, const QString &call, int times) const;
    /// From the next start on, until limited otherwise. False for names that don't exist.
    [[nodiscard]] bool limit(int device, const VirtualCardLimits &limits) const;
    [[nodiscard]] bool remove(int device) const;
    [[nodiscard]] bool restore(int device) const;
    /// On a clock that doesn't follow the real one no display call waits.
    void setFreeRunning(bool isFreeRunning) const;
    /// Display calls keep the time of `clock`, and wait on it; null for the machine's own. Not
    /// while an output is enabled. The clock has to outlive what is sent.
    void setClock(ManualClock *clock) const;
    /// The name under which other programs find the frames and the locks. False for a name that
    /// can't be one, and while an output is enabled.
    [[nodiscard]] bool setChannel(const QString &name) const;
    /// Plays a driver of another version; 0 is the card's own.
    void setDriverVersion(quint32 version) const;
    /// Objects of the driver that somebody still holds a reference to.
    qint64 liveObjects() const;
    /// How often a driver operation was called since the last reset.
    qint64 callCount(int device, const QString &call) const;
    /// Takes back every failure, limit and removal, another driver version and a clock.
    void reset() const;

private:
    explicit VirtualCard(const TessaraVirtualCardInstruments *instruments)
        : m_instruments(instruments)
    {
    }

    const TessaraVirtualCardInstruments *m_instruments;
};

} // namespace tessara
