#include "UI/LayerRecord.h"

#include "Models/CanvasDocument.h"
#include "UI/KindLook.h"

namespace tessara {

LayerRecord::LayerRecord(CanvasDocument &document, const QUuid &id)
    : m_document(document)
    , m_id(id)
{
    if (const std::optional<CanvasLayerItem> item = document.layerItem(id)) {
        const KindLook look = lookOf(*item);
        m_icon = look.icon;
        m_typeText = look.typeText;
        m_isLiveView = look.isLiveView;
        m_kind = kindName(*item);
    }
}

QString LayerRecord::name() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer ? layer->name() : QString();
}

bool LayerRecord::isOnAir() const
{
    return m_document.takes().isOnAir(m_id);
}

double LayerRecord::visibility() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer ? m_document.effectiveVisibility(m_id, layer->isHidden()) : 0;
}

bool LayerRecord::isSelected() const
{
    return m_document.selectedLayerIDs().contains(m_id);
}

bool LayerRecord::isLocked() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer && layer->isLocked();
}

void LayerRecord::toggleOnAir()
{
    if (!isLocked())
        m_document.toggleLayerInRunlist(m_id);
}

void LayerRecord::select()
{
    m_document.setSelectedLayerIDs({m_id});
}

void LayerRecord::toggleSelected()
{
    m_document.toggleLayerSelection(m_id);
}

void LayerRecord::toggleLocked()
{
    m_document.toggleLayerLocked(m_id);
}

void LayerRecord::rename(const QString &name)
{
    m_document.renameLayer(m_id, name);
}

void LayerRecord::duplicate()
{
    m_document.duplicateLayer(m_id);
}

void LayerRecord::remove()
{
    m_document.removeLayer(m_id);
}

} // namespace tessara
