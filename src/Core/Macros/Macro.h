// A recorded list of what an operator did, to be played again.
#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QUuid>

#include <variant>

namespace tessara {

// The kinds of steps. A layer's name is the one it had when the step was recorded and only shown;
// playback finds layers by their ids.

struct ShowLayer
{
    QUuid layerID;
    QString layerName;

    bool operator==(const ShowLayer &) const = default;
};

struct HideLayer
{
    QUuid layerID;
    QString layerName;

    bool operator==(const HideLayer &) const = default;
};

struct Pause
{
    /// Any number that a file holds; a player waits for none below 0, and bounds a huge one itself.
    double seconds = 0;

    bool operator==(const Pause &) const = default;
};

struct SetLayerProperty
{
    QUuid layerID;
    QString layerName;
    QString key; // as `LayerPropertyTable` spells it
    QString value;

    bool operator==(const SetLayerProperty &) const = default;
};

struct AddLayer
{
    QUuid layerID;
    QString layerType; // as `LayerCapture` spells it
    QMap<QString, QString> props;

    bool operator==(const AddLayer &) const = default;
};

struct MacroStep
{
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id FINAL)
    Q_PROPERTY(QString displayName READ displayName FINAL)
    Q_PROPERTY(QString systemImage READ systemImage FINAL)

public:
    using Kind = std::variant<ShowLayer, HideLayer, Pause, SetLayerProperty, AddLayer>;

    QUuid id; // within its macro
    Kind kind;

    /// The step in one line.
    QString displayName() const;
    /// The name of its icon.
    QString systemImage() const;

    bool operator==(const MacroStep &) const = default;
};

struct Macro
{
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QList<tessara::MacroStep> steps MEMBER steps FINAL)
    Q_PROPERTY(bool loopEnabled MEMBER loopEnabled FINAL)
    Q_PROPERTY(qint64 loopCount MEMBER loopCount FINAL)
    Q_PROPERTY(bool scheduleEnabled MEMBER scheduleEnabled FINAL)
    Q_PROPERTY(QString scheduleTime MEMBER scheduleTime FINAL)
    Q_PROPERTY(double pauseTotal READ pauseTotal FINAL)

public:
    QUuid id;
    QString name;
    QList<MacroStep> steps; // in the order of playback
    bool loopEnabled = false;
    qint64 loopCount = 0; // passes; 0 means without end
    bool scheduleEnabled = false;
    QString scheduleTime{}; // "HH:mm:ss" on the wall clock

    /// The seconds of all pauses.
    double pauseTotal() const;

    bool operator==(const Macro &) const = default;
};

/// Milliseconds below one second, else seconds with three digits or, when whole, none.
QString formatPause(double seconds);

} // namespace tessara
