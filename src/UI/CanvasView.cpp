#include "UI/CanvasView.h"

#include "Core/AppState.h"
#include "UI/PictureNode.h"

#include <QQuickWindow>
#include <QSGTransformNode>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tessara {

namespace {

constexpr std::chrono::milliseconds pauseAtRest{16};   // between two repaints
constexpr std::chrono::milliseconds pauseOnOutput{66}; // the frames of the air come first
constexpr std::chrono::milliseconds pauseForSprites{10};
constexpr int mostWaits = 25;                       // for what changes faster than sprites are made
constexpr std::chrono::milliseconds stillness{100}; // a window that is dragged never rests so long

// The bytes are not written again until the last copy of the image has gone, on any thread.
QImage imageOver(const FrameBytes &bytes, const FrameTarget &target)
{
    return {bytes.data(),
            target.size.width(),
            target.size.height(),
            target.rowBytes,
            QImage::Format_ARGB32_Premultiplied,
            [](void *held) { delete static_cast<FrameBytes *>(held); },
            new FrameBytes(bytes)};
}

/// From the lowest to the highest.
struct CanvasNode : QSGTransformNode
{
    CanvasNode()
    {
        for (PictureNode *child : {&checkerboard, &frame, &selection}) {
            child->setFlag(OwnedByParent, false);
            appendChildNode(child);
        }
    }
    ~CanvasNode() override { removeAllChildNodes(); }

    PictureNode checkerboard;
    PictureNode frame;
    PictureNode selection;
};

QMatrix4x4 stretch(const QRectF &from, const QRectF &to)
{
    QMatrix4x4 matrix;
    matrix.translate(float(to.x()), float(to.y()));
    matrix.scale(float(to.width() / from.width()), float(to.height() / from.height()));
    matrix.translate(float(-from.x()), float(-from.y()));
    return matrix;
}

} // namespace

CanvasView::CanvasView(QQuickItem *parent)
    : QQuickItem(parent)
    , m_frames(1) // the other cores belong to the air
{
    setFlag(ItemHasContents);
    for (QTimer *timer : {&m_pause, &m_resizing})
        timer->setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isDirty)
            repaintNow();
    });
    connect(&m_resizing, &QTimer::timeout, this, &CanvasView::contentChanged);
    connect(this, &CanvasView::canvasRectChanged, this, &CanvasView::contentChanged);
}

CanvasDocument *CanvasView::document() const
{
    return m_workspace ? m_workspace->app().document() : nullptr;
}

void CanvasView::setWorkspace(Workspace *workspace)
{
    if (m_workspace == workspace)
        return;
    m_workspace = workspace;
    if (CanvasDocument *shown = document()) {
        connect(shown, &CanvasDocument::changed, this, &CanvasView::contentChanged);
        connect(shown, &CanvasDocument::sizeChanged, this, [this] {
            m_resizing.stop(); // that was the window, which may go on: this is a step
            emit canvasRectChanged();
        });
    }
    emit workspaceChanged();
    emit canvasRectChanged();
}

double CanvasView::canvasScale() const
{
    const CanvasDocument *shown = document();
    if (!shown || shown->size().isEmpty())
        return 0;
    const double across = (width() - 2 * m_margin) / shown->size().width();
    const double down = (height() - 2 * m_margin) / shown->size().height();
    return std::max(0.0, std::min(across, down));
}

double CanvasView::pixelRatio() const
{
    return window() ? window()->effectiveDevicePixelRatio() : 1;
}

QRectF CanvasView::canvasRect() const
{
    const double ratio = pixelRatio();
    const auto whole = [ratio](double units) { return std::round(units * ratio) / ratio; };
    const QPointF origin = mapToScene(QPointF());
    const CanvasDocument *shown = document();
    const QSizeF size = shown ? shown->size() * canvasScale() : QSizeF(0, 0);
    return {whole(origin.x() + (width() - size.width()) / 2) - origin.x(),
            whole(origin.y() + (height() - size.height()) / 2) - origin.y(), whole(size.width()),
            whole(size.height())};
}

CanvasView::Place CanvasView::placeNow() const
{
    return {canvasRect(), boundingRect(), canvasScale(), pixelRatio()};
}

// A new size makes all sprites anew. While it changes, the pictures that there are get stretched.
CanvasView::Place CanvasView::nextPlace() const
{
    return m_resizing.isActive() && m_isShown ? m_place : placeNow();
}

FrameGeometry CanvasView::geometryOf(const Place &place) const
{
    const double scale = place.scale * place.pixelRatio;
    return {(place.canvas.size() * place.pixelRatio).toSize(), QTransform::fromScale(scale, scale),
            DrawingStyle::canvas};
}

bool CanvasView::isOnOutput() const
{
    return m_workspace && m_workspace->app().isDeckLinkOutputRunning();
}

// Many sprites take longer than the air has between two frames.
bool CanvasView::mayDraw()
{
    const Place place = nextPlace();
    const bool isReady = !isOnOutput() || m_frame.isNull() || place.canvas.isEmpty()
                         || m_frames.prepare(*document(), geometryOf(place))
                         || m_waits >= mostWaits;
    m_waits += isReady ? 0 : 1;
    return isReady;
}

void CanvasView::contentChanged()
{
    m_isDirty = true;
    if (!m_pause.isActive())
        repaintNow();
}

// A window that nobody sees keeps the wish until somebody does.
void CanvasView::repaintNow()
{
    const bool isSeen = document() && window() && window()->isExposed();
    m_isDirty = isSeen && !mayDraw();
    if (m_isDirty) {
        m_pause.start(pauseForSprites);
        return;
    }
    m_pause.start(isOnOutput() ? pauseOnOutput : pauseAtRest);
    polish();
}

void CanvasView::updatePolish()
{
    if (!document())
        return;
    if (!mayDraw())
        return contentChanged(); // much has changed since, or while nobody saw it
    m_waits = 0;
    if (const Place place = nextPlace(); !(place == m_place)) {
        m_place = place;
        m_selected.clear();
        m_selection = {};
        update();
    }
    if (m_place.canvas.isEmpty())
        return;
    const bool hasNewFrame = drawFrame();
    const bool hasNewSelection = drawSelection();
    if (!hasNewFrame && !hasNewSelection)
        return;
    update();
    emit drawn();
}

bool CanvasView::drawFrame()
{
    const FrameGeometry geometry = geometryOf(m_place);
    const FrameTarget target{FrameContent::fill, FrameFormat::bgra, geometry.pixels,
                             rowBytesOf(FrameFormat::bgra, geometry.pixels.width())};
    const FramePath::Result frames =
        m_frames.render(*document(), geometry, std::nullopt, {&target, 1});
    // Held here, the bytes of the last frame were not written since.
    if (!frames || frames->front().data() == m_frame.constBits())
        return false;
    m_frame = imageOver(frames->front(), target);
    if (m_checkerboard.size() != geometry.pixels)
        m_checkerboard = checkerboard(m_place.canvas.size(), m_place.pixelRatio);
    return true;
}

bool CanvasView::drawSelection()
{
    std::vector<SelectionFrame> selected = selectionFrames(*document(), m_texts);
    if (selected == m_selected)
        return false;
    m_selected = std::move(selected);
    m_selection = selectionPicture(m_selected, m_place.canvas, m_place.scale, m_place.item,
                                   m_place.pixelRatio);
    return true;
}

QSGNode *CanvasView::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const QRectF canvas = canvasRect();
    if (m_frame.isNull() || canvas.isEmpty()) {
        delete old;
        return nullptr;
    }
    auto *node = static_cast<CanvasNode *>(old);
    if (!node)
        node = new CanvasNode;
    node->setMatrix(stretch(m_place.canvas, canvas));
    const bool isStretched = canvas.size() != m_place.canvas.size();
    node->checkerboard.show(*window(), m_checkerboard, m_place.canvas, isStretched);
    node->frame.show(*window(), m_frame, m_place.canvas, isStretched);
    node->selection.show(*window(), m_selection.image, m_selection.rect, isStretched);
    m_isShown = true;
    return node;
}

void CanvasView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() == oldGeometry.size())
        return;
    m_resizing.start(stillness);
    update();
    emit canvasRectChanged();
}

void CanvasView::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        emit canvasRectChanged();
    QQuickItem::itemChange(change, data);
}

} // namespace tessara
