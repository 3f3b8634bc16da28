// The properties of one layer, watched for what history and macros keep.
#pragma once

#include <QObject>
#include <QVariant>

#include "Base/Debounce.h"
#include "Models/LayerPropertyTable.h"

#include <vector>

namespace tessara {

/// Tells of each row of the layer's kind once its value has been quiet for the row's time. A change
/// within that time of the watch's beginning is taken for the value at the start and not told.
class LayerWatch : public QObject
{
    Q_OBJECT

public:
    /// The row, and its value as text.
    using Deliver = std::function<void(const LayerPropertyRow &, const QString &)>;

    /// The layer outlives the watch.
    LayerWatch(Clock &clock, const CanvasLayerItem &item, const Deliver &deliver);

private:
    Q_SLOT void read();

    const Layer &m_layer;
    std::span<const LayerPropertyRow> m_rows;
    std::vector<Debounce<QVariant>> m_values; // one a row
};

} // namespace tessara
