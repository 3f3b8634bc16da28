// What a card is and what it can show, as values.
#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

namespace tessara {

/// One device as the driver lists it. The index is a position and moves when hardware changes.
struct DeckLinkDeviceInfo
{
    int index = 0;
    QString displayName;

    bool operator==(const DeckLinkDeviceInfo &) const = default;
};

/// One display mode as the driver describes it; the rate is timeScale / frameDuration.
struct DeckLinkDisplayModeInfo
{
    qint64 modeID = 0;
    QString name;
    int width = 0;  // px
    int height = 0; // px
    qint64 frameDuration = 0;
    qint64 timeScale = 0;

    bool operator==(const DeckLinkDisplayModeInfo &) const = default;
};

struct DeckLinkDevice
{
    Q_GADGET
    Q_PROPERTY(int index MEMBER index FINAL)
    Q_PROPERTY(QString displayName MEMBER displayName FINAL)

public:
    int index = 0;
    QString displayName;

    /// A device is its index, whatever it is called.
    bool operator==(const DeckLinkDevice &other) const { return index == other.index; }
};

struct DeckLinkDisplayMode
{
    Q_GADGET
    Q_PROPERTY(qint64 modeID MEMBER modeID FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(int width MEMBER width FINAL)
    Q_PROPERTY(int height MEMBER height FINAL)
    Q_PROPERTY(qint64 frameDuration MEMBER frameDuration FINAL)
    Q_PROPERTY(qint64 timeScale MEMBER timeScale FINAL)
    Q_PROPERTY(QString displayLabel READ displayLabel FINAL)
    Q_PROPERTY(int modeScore READ modeScore FINAL)
    Q_PROPERTY(double rate READ rate FINAL)

public:
    qint64 modeID = 0;
    QString name;
    int width = 0;  // px
    int height = 0; // px
    qint64 frameDuration = 0;
    qint64 timeScale = 0;

    bool operator==(const DeckLinkDisplayMode &) const = default;

    /// Frames a second, 0 when the driver gave no usable rate.
    double rate() const;
    /// As menus show it: 1080p50 (1920x1080 @ 50.00 fps).
    QString displayLabel() const;
    /// The place in the list, the lowest first: 1080p50 is the house default.
    int modeScore() const;
    /// Whether a fresh device selects this mode ahead of the first in its list.
    bool isPreferred() const;
};

// An enumeration that scripts and QML can name needs a described scope.
class DeckLinkStartModes
{
    Q_GADGET

public:
    enum class DeckLinkStartMode { standard, externalKeying };
    Q_ENUM(DeckLinkStartMode)
};
using DeckLinkStartMode = DeckLinkStartModes::DeckLinkStartMode;

} // namespace tessara
