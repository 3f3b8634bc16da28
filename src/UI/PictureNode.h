// A picture in the scene graph.
#pragma once

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>

namespace tessara {

/// Goes to the graphics memory once: what is shown again is there already.
class PictureNode : public QSGNode
{
public:
    /// Null shows nothing. What isn't `isStretched` stands pixel by pixel.
    void show(QQuickWindow &window, const QImage &picture, const QRectF &rect, bool isStretched)
    {
        if (picture.isNull()) {
            delete m_node;
            m_node = nullptr;
            m_shown = 0;
            return;
        }
        if (m_shown != picture.cacheKey()) {
            QSGTexture *texture = window.createTextureFromImage(picture);
            if (!m_node) {
                m_node = window.createImageNode();
                m_node->setOwnsTexture(true);
                m_node->setTexture(texture);
                appendChildNode(m_node);
            } else {
                m_node->setTexture(texture);
            }
            m_shown = picture.cacheKey();
        }
        m_node->setFiltering(isStretched ? QSGTexture::Linear : QSGTexture::Nearest);
        m_node->setRect(rect);
    }

private:
    QSGImageNode *m_node = nullptr;
    qint64 m_shown = 0;
};

} // namespace tessara
