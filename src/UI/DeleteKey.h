// What the Delete key removes.
#pragma once

#include <QObject>
#include <QSet>
#include <QUuid>

#include "Models/DocumentHooks.h"

namespace tessara {

class CanvasDocument;

/// Removes the selected layers but the locked ones, and leaves nothing else selected, so that
/// another press removes nothing. When the last selected layer goes, the document selects the
/// front-most one in its place: nobody has chosen that one, and the key lets it be.
class DeleteKey : public QObject, private DocumentHooks
{
    Q_OBJECT

public:
    /// Outlived by the document.
    explicit DeleteKey(CanvasDocument &document);
    ~DeleteKey() override;

    /// The operator has chosen what is selected, even if it was selected before.
    void chooseSelected();
    void press();

private:
    void layerRemoved(const QUuid &) override { m_isRemoval = true; }
    void followSelection();

    CanvasDocument &m_document;
    QSet<QUuid> m_chosen;
    bool m_isRemoval = false; // is what changes the selection
};

} // namespace tessara
