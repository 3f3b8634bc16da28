#include "UI/presets/PresetThumbnailProvider.h"

#include "Rendering/PresetDrawing.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPainterPath>
#include <QRunnable>
#include <QThread>

#include <algorithm>

namespace tessara {

namespace {

using Flag = std::shared_ptr<std::atomic<bool>>;

QImage withRoundedTop(const QImage &picture, double radius)
{
    if (picture.isNull() || !(radius > 0))
        return picture;
    QImage rounded(picture.size(), QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainterPath outline; // the lower corners lie below the picture
    outline.addRoundedRect(QRectF(picture.rect()).adjusted(0, 0, 0, radius), radius, radius);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    painter.drawPath(outline);
    return rounded;
}

// Rests after each piece of work for some times as long as that took, so that output and windows
// find a processor at once and the fonts unlocked. A thread that ran only when nobody else wanted
// to would hold what it has locked until then.
class Pace
{
public:
    Pace() { m_working.start(); }

    void rest()
    {
        constexpr qint64 restPerWork = 4;
        constexpr qint64 longest = 100'000; // us
        const qint64 worked = m_working.nsecsElapsed() / 1000;
        QThread::usleep(std::min(restPerWork * worked, longest));
        m_working.start();
    }

private:
    QElapsedTimer m_working;
};

// The picture that a window waits for. It may be gone before the drawing ends.
class Response : public QQuickImageResponse
{
public:
    explicit Response(const Flag &isWanted)
        : m_isWanted(isWanted)
    {
    }

    void finish(const QImage &picture)
    {
        m_picture = picture;
        emit finished();
    }
    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_picture);
    }
    void cancel() override { *m_isWanted = false; }

private:
    Flag m_isWanted;
    QImage m_picture;
};

class Drawing : public QObject, public QRunnable
{
    Q_OBJECT

public:
    Drawing(std::shared_ptr<PresetThumbnails> thumbnails, const QString &id, QSize size,
            const Flag &isOpen, const Flag &isWanted)
        : m_thumbnails(std::move(thumbnails))
        , m_id(id)
        , m_size(size)
        , m_isOpen(isOpen)
        , m_isWanted(isWanted)
    {
    }

    void run() override { emit done(picture()); }

signals:
    void done(const QImage &picture);

private:
    QImage picture() const
    {
        const QString key =
            QStringLiteral("%1@%2x%3").arg(m_id).arg(m_size.width()).arg(m_size.height());
        const QImage kept = m_thumbnails->picture(key);
        const QStringList parts = m_id.split(QLatin1Char('/'));
        const auto preset = m_thumbnails->preset(parts.value(0).toInt());
        if (!kept.isNull() || !preset)
            return kept;
        Pace pace;
        const auto isWanted = [&] {
            pace.rest();
            return *m_isOpen && *m_isWanted;
        };
        const QImage drawn = isWanted() ? drawPreset(*preset, m_size, isWanted) : QImage();
        if (drawn.isNull())
            return {};
        const QImage rounded = withRoundedTop(drawn, parts.value(1).toDouble());
        m_thumbnails->keepPicture(key, rounded);
        return rounded;
    }

    std::shared_ptr<PresetThumbnails> m_thumbnails;
    QString m_id;
    QSize m_size;
    Flag m_isOpen;
    Flag m_isWanted;
};

} // namespace

PresetThumbnailProvider::PresetThumbnailProvider(std::shared_ptr<PresetThumbnails> thumbnails)
    : m_thumbnails(std::move(thumbnails))
{
    m_thread.setMaxThreadCount(1);
    m_thread.setExpiryTimeout(-1); // the fonts that it has opened stay open
}

PresetThumbnailProvider::~PresetThumbnailProvider()
{
    *m_isOpen = false;
    m_thread.clear();
}

QQuickImageResponse *PresetThumbnailProvider::requestImageResponse(const QString &id,
                                                                   const QSize &requestedSize)
{
    constexpr QSize usual{296, 167}; // px
    const auto isWanted = std::make_shared<std::atomic<bool>>(true);
    auto *response = new Response(isWanted);
    auto *drawing = new Drawing(m_thumbnails, id, requestedSize.isEmpty() ? usual : requestedSize,
                                m_isOpen, isWanted);
    // To the thread that asked, and to nobody when the response is gone.
    QObject::connect(drawing, &Drawing::done, response, &Response::finish);
    m_thread.start(drawing);
    return response;
}

} // namespace tessara

#include "PresetThumbnailProvider.moc"
