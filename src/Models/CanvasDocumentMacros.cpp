// What macros and history do to the document.
#include "Models/CanvasDocument.h"

#include "Models/LayerCapture.h"
#include "Models/LayerPropertyTable.h"

#include <algorithm>

namespace tessara {

void CanvasDocument::applyLayerPropertyMacro(const QUuid &id, const QString &key,
                                             const QString &value)
{
    if (const std::optional<CanvasLayerItem> item = layerItem(id))
        applyLayerProperty(*item, key, value);
}

void CanvasDocument::createLayerFromMacro(const QUuid &layerID, const QString &type,
                                          const QMap<QString, QString> &props)
{
    if (layerItem(layerID))
        return;
    if (const auto made = makeLayerFromProps(m_clock, layerID, type, props))
        addLayer(*made);
}

void CanvasDocument::takeLayerFromMacro(const QUuid &id, bool onAir)
{
    removeCue(id);
    m_takes.setLayerOnAir(id, onAir, {});
}

void CanvasDocument::moveInLayerOrder(const QUuid &id, qsizetype index)
{
    QList<QUuid> order = m_layerOrder;
    if (order.removeOne(id))
        order.insert(std::clamp(index, qsizetype(0), order.size()), id);
    if (replaceValue(m_layerOrder, order))
        emit layerOrderChanged();
}

void CanvasDocument::restoreLayerOrder(const QList<QUuid> &order)
{
    QList<QUuid> restored;
    const auto keep = [&](const QUuid &id) {
        if (m_itemsByID.contains(id) && !restored.contains(id))
            restored.append(id);
    };
    std::for_each(order.begin(), order.end(), keep);
    std::for_each(m_layerOrder.begin(), m_layerOrder.end(), keep);
    if (replaceValue(m_layerOrder, restored))
        emit layerOrderChanged();
}

} // namespace tessara
