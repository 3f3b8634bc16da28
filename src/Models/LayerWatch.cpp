#include "Models/LayerWatch.h"

#include <QMetaMethod>
#include <QMetaProperty>

#include <algorithm>

namespace tessara {

LayerWatch::LayerWatch(Clock &clock, const CanvasLayerItem &item,
                       std::function<bool()> isOperatorWriting, const Deliver &deliver)
    : m_layer(*layerOf(item))
    , m_isOperatorWriting(std::move(isOperatorWriting))
    , m_rows(layerPropertyRows(item))
{
    const QMetaObject *kind = m_layer.metaObject();
    const QMetaMethod reader = staticMetaObject.method(staticMetaObject.indexOfMethod("read()"));
    m_values.reserve(m_rows.size()); // an alarm holds the place of its value
    for (const LayerPropertyRow &row : m_rows) {
        m_values.emplace_back(
            clock, std::chrono::milliseconds{row.debounceMs}, row.value(m_layer),
            [&row, deliver](const QVariant &value) { deliver(row, row.text(value)); });
        const QMetaProperty property = kind->property(kind->indexOfProperty(row.property));
        connect(&m_layer, property.notifySignal(), this, reader, Qt::UniqueConnection);
    }
}

void LayerWatch::read()
{
    const bool isOperatorWriting = m_isOperatorWriting();
    for (size_t index = 0; index < m_rows.size(); ++index) {
        const QVariant value = m_rows[index].value(m_layer);
        isOperatorWriting ? m_values[index].push(value) : m_values[index].passOver(value);
    }
}

std::optional<quint64> LayerWatch::oldestWaiting() const
{
    std::optional<quint64> oldest;
    for (const Debounce<QVariant> &value : m_values) {
        if (const std::optional<quint64> waiting = value.waiting())
            oldest = std::min(oldest.value_or(*waiting), *waiting);
    }
    return oldest;
}

void LayerWatch::tellOldest()
{
    const std::optional<quint64> oldest = oldestWaiting();
    const auto found = std::ranges::find(m_values, oldest, &Debounce<QVariant>::waiting);
    if (oldest && found != m_values.end())
        found->passNow();
}

} // namespace tessara
