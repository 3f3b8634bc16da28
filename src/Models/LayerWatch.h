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
///
/// Only what the operator writes is told. Whose a write is, is asked when it happens: by the end of
/// its quiet time a macro may long be over, or have begun. What the operator wrote is told before
/// another writes over it.
class LayerWatch : public QObject
{
    Q_OBJECT

public:
    /// The row, and its value as text.
    using Deliver = std::function<void(const LayerPropertyRow &, const QString &)>;

    /// The layer outlives the watch.
    LayerWatch(Clock &clock, const CanvasLayerItem &item, std::function<bool()> isOperatorWriting,
               const Deliver &deliver);

    /// The number of the change that has waited longest, lower than that of any later change.
    std::optional<quint64> oldestWaiting() const;
    /// Tells of that change without waiting for its quiet time.
    void tellOldest();

private:
    Q_SLOT void read();

    const Layer &m_layer;
    std::function<bool()> m_isOperatorWriting;
    std::span<const LayerPropertyRow> m_rows;
    std::vector<Debounce<QVariant>> m_values; // one a row
};

} // namespace tessara
