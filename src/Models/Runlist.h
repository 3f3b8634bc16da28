// The list of the show, from which the operator runs it.
#pragma once

#include <QHash>
#include <QMap>
#include <QObject>
#include <QSet>

#include "Models/VirtualLayerEntry.h"

#include <optional>

namespace tessara {

class CanvasDocument;

/// How a row stands: a cue decides first, then whether it is on air.
enum class RunlistState { off, onAir, cuedIn, cuedOut };

/// "OFF", "ON AIR", "CUED IN" or "CUED OUT".
QString text(RunlistState state);

/// What the panel and the runlist window list and do. The rows follow the document; each notice
/// tells of one row, so that a list of hundreds need not look at all of them.
class Runlist : public QObject
{
    Q_OBJECT
    /// Rows on air; a group counts once.
    Q_PROPERTY(int onAirCount READ onAirCount NOTIFY countsChanged FINAL)
    /// Rows with a cue; a group counts once.
    Q_PROPERTY(int cueCount READ cueCount NOTIFY countsChanged FINAL)
    /// Layers on air, each for itself.
    Q_PROPERTY(int shownLayerCount READ shownLayerCount NOTIFY countsChanged FINAL)
    /// The ids of the rows, front-most first: a layer's or a group's.
    Q_PROPERTY(QList<QUuid> entryIDs READ entryIDs NOTIFY entriesChanged FINAL)

public:
    /// Of a row, in device-independent pixels; a drag is counted in it.
    static constexpr double rowPitch = 42;

    explicit Runlist(CanvasDocument &document);

    /// Front-most first.
    const QList<VirtualLayerEntry> &entries() const { return m_entries; }
    QList<QUuid> entryIDs() const;
    /// Null for an unknown id.
    const VirtualLayerEntry *entry(const QUuid &id) const;

    RunlistState state(const VirtualLayerEntry &entry) const;
    /// A group is on air when one of its layers is.
    bool isOnAir(const VirtualLayerEntry &entry) const;
    /// A group is locked when all of its layers are.
    bool isLocked(const VirtualLayerEntry &entry) const;
    bool hasCue(const VirtualLayerEntry &entry) const;
    /// What a click on the row would do.
    QString helpText(const VirtualLayerEntry &entry, bool isCueMode, bool isRowLocked) const;

    int onAirCount() const { return m_counts.onAir; }
    int cueCount() const { return m_counts.cued; }
    int shownLayerCount() const { return m_counts.shownLayers; }

    /// A click on a row: it cues in cue mode, else it takes at once. A locked row stays.
    Q_INVOKABLE void click(const QUuid &entryID, bool isCueMode, bool isRowLocked);
    /// Takes out all that is on air; a layer that is locked stays.
    Q_INVOKABLE void takeAllOut();
    /// Hides the row's layers, or shows them when all of them are hidden. A cut.
    Q_INVOKABLE void toggleHidden(const QUuid &entryID);
    Q_INVOKABLE void toggleLocked(const QUuid &entryID);
    Q_INVOKABLE void setLocked(const QUuid &entryID, bool locked);
    Q_INVOKABLE void takeIn(const QUuid &entryID);
    Q_INVOKABLE void takeOut(const QUuid &entryID);
    /// A layer, or a group with all its layers.
    Q_INVOKABLE void remove(const QUuid &entryID);

    /// The row that a dragged row is over. `translation` is in device-independent pixels, downward.
    Q_INVOKABLE int dropTarget(int source, double translation) const;
    /// The place between the rows where it would be put, counted from the top.
    static std::optional<int> dropSlot(int source, int target);
    /// The same for a view, -1 when the row would stay.
    Q_INVOKABLE int dropSlotAt(int source, double translation) const;
    /// Puts the row before the one that now stands at `slot`; a group moves as a block.
    Q_INVOKABLE void moveEntries(int source, int slot);

signals:
    /// Rows have come, gone, moved or changed their layers.
    void entriesChanged();
    /// Something that one row shows has changed.
    void entryChanged(const QUuid &entryID);
    /// How much of a row is to be seen; a running take tells it sixty times a second.
    void visibilityChanged(const QUuid &entryID);
    void countsChanged();

private:
    struct Counts
    {
        int onAir = 0;
        int cued = 0;
        int shownLayers = 0;

        bool operator==(const Counts &) const = default;
    };

    void followEntries();
    void followLayer(const QUuid &layerID);
    void followVisibility(const QUuid &layerID);
    void followCues();
    void followSelection();
    void followLayers(const QSet<QUuid> &layerIDs);
    void followAll();
    void recount();

    CanvasDocument &m_document;
    QList<VirtualLayerEntry> m_entries;
    QHash<QUuid, qsizetype> m_rowOfEntry;
    QHash<QUuid, QUuid> m_entryOfLayer;
    QMap<QUuid, bool> m_cueTargets;
    QSet<QUuid> m_selectedLayerIDs;
    Counts m_counts;
};

} // namespace tessara
