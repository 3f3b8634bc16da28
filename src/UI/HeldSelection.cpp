#include "UI/HeldSelection.h"

#include "Models/CanvasDocument.h"

namespace tessara {

HeldSelection::HeldSelection(CanvasDocument &document)
    : m_document(document)
{
    connect(&document, &CanvasDocument::layerRemoved, this, [this](const QUuid &id) {
        if (m_ids.contains(id))
            emit broken();
    });
}

void HeldSelection::hold()
{
    m_ids = m_document.selectedLayerIDs().values();
    m_canGroup = m_document.canGroupSelection();
    emit held();
}

void HeldSelection::remove()
{
    const QList<QUuid> ids = m_ids;
    for (const QUuid &id : ids)
        m_document.removeLayer(id);
}

bool HeldSelection::group(const QString &name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return false;
    m_document.groupLayers(m_ids, trimmed);
    return true;
}

} // namespace tessara
