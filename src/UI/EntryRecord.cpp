#include "UI/EntryRecord.h"

#include "Models/CanvasDocument.h"
#include "Models/Runlist.h"
#include "UI/KindLook.h"

#include <algorithm>

namespace tessara {

EntryRecord::EntryRecord(CanvasDocument &document, Runlist &runlist, const QUuid &id)
    : m_document(document)
    , m_runlist(runlist)
    , m_id(id)
{
    const VirtualLayerEntry *entry = runlist.entry(id);
    m_isGroup = entry && entry->isGroup();
}

QString EntryRecord::name() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry ? entry->name() : QString();
}

QString EntryRecord::icon() const
{
    const std::optional<CanvasLayerItem> layer = m_document.layerItem(m_id);
    return layer ? lookOf(*layer).icon : QStringLiteral("group");
}

QString EntryRecord::typeText() const
{
    const std::optional<CanvasLayerItem> layer = m_document.layerItem(m_id);
    return layer ? lookOf(*layer).typeText : QString();
}

QString EntryRecord::detail() const
{
    if (!m_isGroup)
        return typeText();
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    const qsizetype count = entry ? entry->size() : 0;
    return count == 1 ? tr("1 layer") : tr("%1 layers").arg(count);
}

QString EntryRecord::kind() const
{
    const std::optional<CanvasLayerItem> layer = m_document.layerItem(m_id);
    return layer ? kindName(*layer) : QString();
}

bool EntryRecord::isOnAir() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry && m_runlist.isOnAir(*entry);
}

double EntryRecord::visibility() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    if (!entry)
        return 0;
    double most = 0;
    for (const CanvasLayerItem &item : *entry) {
        const Layer *layer = layerOf(item);
        most = std::max(most, m_document.effectiveVisibility(layer->id(), layer->isHidden()));
    }
    return most;
}

QString EntryRecord::stateText() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry ? text(m_runlist.state(*entry)) : QString();
}

bool EntryRecord::isCued() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    if (!entry)
        return false;
    const RunlistState state = m_runlist.state(*entry);
    return state == RunlistState::cuedIn || state == RunlistState::cuedOut;
}

QString EntryRecord::autoOutText() const
{
    const LayerRunSettings settings =
        m_isGroup ? m_document.presetGroupRunSettings(m_id) : m_document.runSettings(m_id);
    return settings.autoOutDuration > 0 ? tr("Auto Out %1").arg(settings.autoOutDuration)
                                        : QString();
}

bool EntryRecord::isSelected() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry && std::all_of(entry->begin(), entry->end(), [this](const CanvasLayerItem &item) {
               return m_document.selectedLayerIDs().contains(layerOf(item)->id());
           });
}

bool EntryRecord::isLocked() const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry && m_runlist.isLocked(*entry);
}

bool EntryRecord::isLiveView() const
{
    const std::optional<CanvasLayerItem> layer = m_document.layerItem(m_id);
    return layer && lookOf(*layer).isLiveView;
}

QString EntryRecord::helpText(bool isCueMode, bool isRowLocked) const
{
    const VirtualLayerEntry *entry = m_runlist.entry(m_id);
    return entry ? m_runlist.helpText(*entry, isCueMode, isRowLocked) : QString();
}

void EntryRecord::click(bool isCueMode, bool isRowLocked)
{
    m_runlist.click(m_id, isCueMode, isRowLocked);
}

void EntryRecord::takeIn()
{
    m_runlist.takeIn(m_id);
}

void EntryRecord::takeOut()
{
    m_runlist.takeOut(m_id);
}

void EntryRecord::toggleHidden()
{
    m_runlist.toggleHidden(m_id);
}

void EntryRecord::toggleLocked()
{
    m_runlist.toggleLocked(m_id);
}

void EntryRecord::setLocked(bool locked)
{
    m_runlist.setLocked(m_id, locked);
}

void EntryRecord::select()
{
    if (m_isGroup)
        m_document.selectPresetGroup(m_id);
    else
        m_document.setSelectedLayerIDs({m_id});
}

void EntryRecord::toggleSelected()
{
    if (m_isGroup)
        m_document.selectPresetGroup(m_id);
    else
        m_document.toggleLayerSelection(m_id);
}

void EntryRecord::rename(const QString &name)
{
    m_document.renameLayer(m_id, name);
}

void EntryRecord::duplicate()
{
    m_document.duplicateLayer(m_id);
}

void EntryRecord::remove()
{
    m_runlist.remove(m_id);
}

void EntryRecord::ungroup()
{
    m_document.ungroupPreset(m_id);
}

} // namespace tessara
