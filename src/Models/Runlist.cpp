#include "Models/Runlist.h"

#include "Models/CanvasDocument.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

template <typename Predicate>
bool anyLayer(const VirtualLayerEntry &entry, Predicate isSo)
{
    return std::any_of(entry.begin(), entry.end(),
                       [&](const CanvasLayerItem &item) { return isSo(*layerOf(item)); });
}

bool isShown(const Layer &layer)
{
    return !layer.isHidden();
}

} // namespace

QString text(RunlistState state)
{
    switch (state) {
    case RunlistState::off:
        return QStringLiteral("OFF");
    case RunlistState::onAir:
        return QStringLiteral("ON AIR");
    case RunlistState::cuedIn:
        return QStringLiteral("CUED IN");
    case RunlistState::cuedOut:
        return QStringLiteral("CUED OUT");
    }
    Q_UNREACHABLE();
}

Runlist::Runlist(CanvasDocument &document)
    : m_document(document)
{
    connect(&document, &CanvasDocument::layerOrderChanged, this, &Runlist::followEntries);
    connect(&document, &CanvasDocument::presetGroupsChanged, this, &Runlist::followEntries);
    connect(&document, &CanvasDocument::layerChanged, this, &Runlist::followLayer);
    connect(&document, &CanvasDocument::visibilityChanged, this, &Runlist::followVisibility);
    connect(&document, &CanvasDocument::cueTargetsChanged, this, &Runlist::followCues);
    connect(&document, &CanvasDocument::selectedLayerIDsChanged, this, &Runlist::followSelection);
    connect(&document, &CanvasDocument::layerRunSettingsChanged, this, &Runlist::followAll);
    followEntries();
}

// What the rows are

void Runlist::followEntries()
{
    QList<CanvasLayerItem> layers = m_document.orderedLayers();
    std::reverse(layers.begin(), layers.end());
    QList<VirtualLayerEntry> entries = virtualEntries(layers, m_document.presetGroupNames());
    if (entries != m_entries) {
        m_entries = std::move(entries);
        m_rowOfEntry.clear();
        m_entryOfLayer.clear();
        for (const VirtualLayerEntry &entry : std::as_const(m_entries)) {
            m_rowOfEntry.insert(entry.id(), m_rowOfEntry.size());
            for (const QUuid &id : entry.layerIDs())
                m_entryOfLayer.insert(id, entry.id());
        }
        emit entriesChanged();
    }
    followAll();
}

void Runlist::followLayer(const QUuid &layerID)
{
    const QUuid known = m_entryOfLayer.value(layerID);
    if (known != m_document.presetGroupID(layerID).value_or(layerID)) {
        followEntries();
        return;
    }
    emit entryChanged(known);
    recount();
}

void Runlist::followVisibility(const QUuid &layerID)
{
    if (const auto known = m_entryOfLayer.constFind(layerID); known != m_entryOfLayer.constEnd())
        emit visibilityChanged(*known);
}

void Runlist::followCues()
{
    const QMap<QUuid, bool> old = std::exchange(m_cueTargets, m_document.cueTargets());
    QSet<QUuid> changed;
    const auto collect = [&](const QMap<QUuid, bool> &one, const QMap<QUuid, bool> &other) {
        for (auto cue = one.begin(); cue != one.end(); ++cue) {
            if (!other.contains(cue.key()) || other.value(cue.key()) != cue.value())
                changed.insert(cue.key());
        }
    };
    collect(old, m_cueTargets);
    collect(m_cueTargets, old);
    followLayers(changed);
}

void Runlist::followSelection()
{
    const QSet<QUuid> old = std::exchange(m_selectedLayerIDs, m_document.selectedLayerIDs());
    followLayers((old - m_selectedLayerIDs) + (m_selectedLayerIDs - old));
}

void Runlist::followLayers(const QSet<QUuid> &layerIDs)
{
    QSet<QUuid> entries;
    for (const QUuid &id : layerIDs) {
        if (const auto known = m_entryOfLayer.constFind(id); known != m_entryOfLayer.constEnd())
            entries.insert(*known);
    }
    for (const QUuid &entryID : std::as_const(entries))
        emit entryChanged(entryID);
    recount();
}

void Runlist::followAll()
{
    for (const VirtualLayerEntry &entry : std::as_const(m_entries))
        emit entryChanged(entry.id());
    recount();
}

void Runlist::recount()
{
    Counts counts;
    for (const VirtualLayerEntry &entry : std::as_const(m_entries)) {
        counts.onAir += isOnAir(entry);
        counts.cued += hasCue(entry);
        for (const CanvasLayerItem &item : entry)
            counts.shownLayers += isShown(*layerOf(item));
    }
    if (replaceValue(m_counts, counts))
        emit countsChanged();
}

QList<QUuid> Runlist::entryIDs() const
{
    QList<QUuid> ids;
    for (const VirtualLayerEntry &entry : m_entries)
        ids.append(entry.id());
    return ids;
}

const VirtualLayerEntry *Runlist::entry(const QUuid &id) const
{
    const auto row = m_rowOfEntry.constFind(id);
    return row == m_rowOfEntry.constEnd() ? nullptr : &m_entries.at(*row);
}

// How they stand

bool Runlist::isOnAir(const VirtualLayerEntry &entry) const
{
    return anyLayer(entry, isShown);
}

bool Runlist::isLocked(const VirtualLayerEntry &entry) const
{
    return !anyLayer(entry, [](const Layer &layer) { return !layer.isLocked(); });
}

bool Runlist::hasCue(const VirtualLayerEntry &entry) const
{
    return anyLayer(
        entry, [this](const Layer &layer) { return m_document.cueTargets().contains(layer.id()); });
}

RunlistState Runlist::state(const VirtualLayerEntry &entry) const
{
    const std::optional<bool> cue =
        std::visit(Overloaded{[&](const SingleEntry &single) -> std::optional<bool> {
                                  const auto target =
                                      m_document.cueTargets().constFind(layerOf(single.item)->id());
                                  return target == m_document.cueTargets().constEnd()
                                             ? std::nullopt
                                             : std::optional(*target);
                              },
                              [&](const GroupEntry &group) {
                                  return m_document.cueTargetForPresetGroup(group.groupID);
                              }},
                   entry.content);
    if (cue)
        return *cue ? RunlistState::cuedIn : RunlistState::cuedOut;
    return isOnAir(entry) ? RunlistState::onAir : RunlistState::off;
}

QString Runlist::helpText(const VirtualLayerEntry &entry, bool isCueMode, bool isRowLocked) const
{
    if (isRowLocked)
        return tr("Runlist is locked");
    if (isCueMode)
        return entry.isGroup() ? tr("Click to cue preset in/out") : tr("Click to cue in/out");
    if (isOnAir(entry))
        return entry.isGroup() ? tr("Click to take preset OFF AIR") : tr("Click to take OFF AIR");
    return entry.isGroup() ? tr("Click to take preset ON AIR") : tr("Click to take ON AIR");
}

// What can be done with them

void Runlist::click(const QUuid &entryID, bool isCueMode, bool isRowLocked)
{
    const VirtualLayerEntry *clicked = entry(entryID);
    if (!clicked || isRowLocked)
        return;
    const bool isGroup = clicked->isGroup();
    if (isCueMode && isGroup) {
        m_document.toggleCueForPresetGroup(entryID);
    } else if (isCueMode) {
        m_document.toggleCue(entryID);
    } else if (isGroup) {
        m_document.clearCueForPresetGroup(entryID);
        m_document.togglePresetGroupInRunlist(entryID);
    } else {
        m_document.toggleLayerInRunlist(entryID);
    }
}

void Runlist::takeAllOut()
{
    const QList<VirtualLayerEntry> entries = m_entries;
    for (const VirtualLayerEntry &entry : entries) {
        const bool stays = !entry.isGroup() && isLocked(entry);
        if (isOnAir(entry) && !stays)
            takeOut(entry.id());
    }
}

void Runlist::toggleHidden(const QUuid &entryID)
{
    const VirtualLayerEntry *toggled = entry(entryID);
    if (!toggled)
        return;
    const bool hidden = isOnAir(*toggled);
    for (const QUuid &id : toggled->layerIDs())
        m_document.setLayerHidden(id, hidden);
}

void Runlist::toggleLocked(const QUuid &entryID)
{
    if (const VirtualLayerEntry *toggled = entry(entryID))
        setLocked(entryID, !isLocked(*toggled));
}

void Runlist::setLocked(const QUuid &entryID, bool locked)
{
    const VirtualLayerEntry *changed = entry(entryID);
    if (!changed)
        return;
    for (const QUuid &id : changed->layerIDs())
        m_document.setLayerLocked(id, locked);
}

void Runlist::takeIn(const QUuid &entryID)
{
    const VirtualLayerEntry *taken = entry(entryID);
    if (taken && taken->isGroup())
        m_document.takePresetGroupInNow(entryID);
    else
        m_document.takeLayerInNow(entryID);
}

void Runlist::takeOut(const QUuid &entryID)
{
    const VirtualLayerEntry *taken = entry(entryID);
    if (taken && taken->isGroup())
        m_document.takePresetGroupOutNow(entryID);
    else
        m_document.takeLayerOutNow(entryID);
}

void Runlist::remove(const QUuid &entryID)
{
    const VirtualLayerEntry *removed = entry(entryID);
    if (removed && removed->isGroup())
        m_document.removePresetGroup(entryID);
    else
        m_document.removeLayer(entryID);
}

// Reordering

int Runlist::dropTarget(int source, double translation) const
{
    const double last = double(m_entries.size()) - 1;
    const double target = source + std::round(translation / rowPitch);
    return int(std::max(0.0, std::min(target, last)));
}

std::optional<int> Runlist::dropSlot(int source, int target)
{
    if (source == target)
        return std::nullopt;
    return source < target ? target + 1 : target;
}

int Runlist::dropSlotAt(int source, double translation) const
{
    return dropSlot(source, dropTarget(source, translation)).value_or(-1);
}

void Runlist::moveEntries(int source, int slot)
{
    if (source < 0 || source >= m_entries.size() || slot < 0 || slot > m_entries.size())
        return;
    const QList<QUuid> moving = m_entries[source].layerIDs();
    const QList<QUuid> order = m_document.layerOrder();
    QList<QUuid> remaining;
    for (auto id = order.rbegin(); id != order.rend(); ++id) {
        if (!moving.contains(*id))
            remaining.append(*id);
    }
    qsizetype above = 0;
    for (int row = 0; row < slot; ++row)
        above += row == source ? 0 : m_entries[row].layerIDs().size();
    above = std::min(above, remaining.size());
    m_document.reorderLayers(remaining.first(above) + moving + remaining.sliced(above));
}

} // namespace tessara
