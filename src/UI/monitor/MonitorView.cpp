#include "UI/monitor/MonitorView.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>

namespace tessara {

namespace {

constexpr int lookInterval = 40;   // ms; the air is sent, not watched, at its full rate
constexpr int rateInterval = 1000; // ms
constexpr int deviceCount = 2;
constexpr int checkerCell = 40; // px of the picture

QImage checkerboard(QSize size)
{
    QImage board(size, QImage::Format_RGB32);
    board.fill(QColor(70, 70, 70));
    QPainter painter(&board);
    for (int y = 0; y < size.height(); y += checkerCell) {
        for (int x = (y / checkerCell % 2) * checkerCell; x < size.width(); x += 2 * checkerCell)
            painter.fillRect(x, y, checkerCell, checkerCell, QColor(46, 46, 46));
    }
    return board;
}

} // namespace

MonitorView::MonitorView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setChannel({});
    m_countedSince.start();
    connect(&m_timer, &QTimer::timeout, this, &MonitorView::look);
    connect(this, &MonitorView::settingsChanged, this, [this] { m_status = {}; });
    m_timer.start(lookInterval);
}

void MonitorView::setChannel(const QString &channel)
{
    m_channel = channel;
    m_readers.clear();
    for (int device = 0; device < deviceCount; ++device)
        m_readers.emplace_back(device, channel);
    emit channelChanged();
}

void MonitorView::setBackground(const QUrl &picture)
{
    m_background = picture;
    m_backgroundPicture = QImage(picture.toLocalFile());
    emit settingsChanged();
}

QString MonitorView::description() const
{
    if (!hasSignal())
        return m_status.isOutputEnabled ? tr("Waiting for the first frame") : QString();
    return tr("%1   frame %2   %3 fps")
        .arg(m_status.modeName)
        .arg(m_status.number)
        .arg(m_measuredRate, 0, 'f', 2);
}

void MonitorView::look()
{
    SharedFrameReader &reader = m_readers[std::size_t(std::clamp(m_device, 0, deviceCount - 1))];
    const SharedFrameStatus status = reader.status().value_or(SharedFrameStatus{});
    if (status == m_status)
        return;
    const bool isNewFrame = status.number != m_status.number;
    m_status = status;
    if (m_countedSince.elapsed() >= rateInterval) {
        const double seconds = double(m_countedSince.restart()) / 1000;
        m_measuredRate = double(status.number - std::min(m_countedFrom, status.number)) / seconds;
        m_countedFrom = status.number;
    }
    if (hasSignal() && isNewFrame) {
        if (const std::optional<SharedFrame> frame = reader.newestFrame())
            show(*frame);
    }
    emit statusChanged();
    update();
}

void MonitorView::show(const SharedFrame &frame)
{
    const QImage key = keyFor(frame);
    if (m_mode == QStringLiteral("key"))
        m_picture = key.isNull() ? QImage(1, 1, QImage::Format_RGB32) : key;
    else if (m_mode == QStringLiteral("composite") && !key.isNull())
        m_picture = composite(frame.fill, key);
    else
        m_picture = frame.fill;
    m_isPictureNew = true;
}

QImage MonitorView::keyFor(const SharedFrame &frame)
{
    if (!frame.key.isNull())
        return frame.key;
    SharedFrameReader &other = m_readers[m_device == 0 ? 1 : 0];
    const std::optional<SharedFrameStatus> status = other.status();
    if (!status || !status->isOutputEnabled)
        return {};
    const std::optional<SharedFrame> keyFrame = other.newestFrame();
    return keyFrame ? keyFrame->fill : QImage();
}

// As a keyer does it with a premultiplied fill: the fill, plus what the key leaves of the
// background.
QImage MonitorView::composite(const QImage &fill, const QImage &key) const
{
    QImage result = m_backgroundPicture.isNull()
                        ? checkerboard(fill.size())
                        : m_backgroundPicture.scaled(fill.size(), Qt::IgnoreAspectRatio,
                                                     Qt::SmoothTransformation);
    result = result.convertToFormat(QImage::Format_RGB32);
    const QImage colour = fill.convertToFormat(QImage::Format_RGB32);
    const QImage grey = key.scaled(fill.size()).convertToFormat(QImage::Format_Grayscale8);
    for (int y = 0; y < result.height(); ++y) {
        auto *under = reinterpret_cast<QRgb *>(result.scanLine(y));
        const auto *over = reinterpret_cast<const QRgb *>(colour.constScanLine(y));
        const uchar *share = grey.constScanLine(y);
        for (int x = 0; x < result.width(); ++x) {
            const int rest = 255 - share[x];
            const auto mix = [rest](int top, int bottom) {
                return std::min(255, top + (bottom * rest + 127) / 255);
            };
            under[x] =
                qRgb(mix(qRed(over[x]), qRed(under[x])), mix(qGreen(over[x]), qGreen(under[x])),
                     mix(qBlue(over[x]), qBlue(under[x])));
        }
    }
    return result;
}

QSGNode *MonitorView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (!hasSignal() || m_picture.isNull()) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        image->setFiltering(QSGTexture::Linear);
        m_isPictureNew = true;
    }
    if (m_isPictureNew)
        image->setTexture(
            window()->createTextureFromImage(m_picture, QQuickWindow::TextureIsOpaque));
    m_isPictureNew = false;
    const QSizeF fitted = QSizeF(m_picture.size()).scaled(size(), Qt::KeepAspectRatio);
    image->setRect(
        QRectF(QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted));
    return image;
}

} // namespace tessara
