#include "UI/DeleteKey.h"

#include "Models/CanvasDocument.h"

namespace tessara {

DeleteKey::DeleteKey(CanvasDocument &document)
    : m_document(document)
    , m_chosen(document.selectedLayerIDs())
{
    document.addHooks(this);
    connect(&document, &CanvasDocument::selectedLayerIDsChanged, this, &DeleteKey::followSelection);
    connect(&document, &CanvasDocument::layerRemoved, this, [this] { m_isRemoval = false; });
}

DeleteKey::~DeleteKey()
{
    m_document.removeHooks(this);
}

void DeleteKey::followSelection()
{
    if (m_isRemoval)
        m_chosen &= m_document.selectedLayerIDs();
    else
        chooseSelected();
}

void DeleteKey::chooseSelected()
{
    m_chosen = m_document.selectedLayerIDs();
}

void DeleteKey::press()
{
    bool hasRemoved = false;
    const QList<QUuid> order = m_document.layerOrder();
    for (const QUuid &id : order) {
        const Layer *layer = m_chosen.contains(id) ? m_document.layer(id) : nullptr;
        if (!layer || layer->isLocked())
            continue;
        m_document.removeLayer(id);
        hasRemoved = true;
    }
    if (hasRemoved)
        m_document.setSelectedLayerIDs(m_chosen);
}

} // namespace tessara
