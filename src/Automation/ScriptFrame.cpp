#include "Automation/ScriptFrame.h"

#include "Base/WholeFile.h"
#include "DeckLink/DeckLinkFrameBuffer.h"
#include "Models/CanvasDocument.h"
#include "Rendering/RenderEngine.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QJsonObject>

namespace tessara {

namespace {

using MakeFrame = DeckLinkFrameBuffer::Result (*)(const QImage &, int, int);

MakeFrame makerNamed(const QString &kind)
{
    if (kind == QStringLiteral("fill"))
        return &DeckLinkFrameBuffer::make;
    if (kind == QStringLiteral("key"))
        return &DeckLinkFrameBuffer::makeAlphaKey;
    if (kind == QStringLiteral("externalKeyFill"))
        return &DeckLinkFrameBuffer::makeExternalKeyFill;
    return nullptr;
}

QByteArray rawBytes(const QImage &image)
{
    return {reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()};
}

QJsonObject measured(int width, int height, const QElapsedTimer &timer)
{
    return {{QStringLiteral("width"), width},
            {QStringLiteral("height"), height},
            {QStringLiteral("seconds"), double(timer.nsecsElapsed()) / 1e9}};
}

} // namespace

tl::expected<void, QString> writeFrame(const QString &path, const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return tl::unexpected(QStringLiteral("%1: no picture could be made").arg(path));
    return writeFile(path, bytes).map_error([&](const QString &reason) {
        return QStringLiteral("%1: %2").arg(path, reason);
    });
}

QByteArray pngBytes(const QImage &image)
{
    QBuffer buffer;
    return image.save(&buffer, "PNG") ? buffer.data() : QByteArray();
}

ScriptFrame::ScriptFrame(const CanvasDocument &document)
    : m_document(document)
{
}

ScriptResult ScriptFrame::render(const QString &path, const std::optional<RGBAColor> &background)
{
    const bool isPicture = path.endsWith(QStringLiteral(".png"));
    if (!isPicture && !path.endsWith(QStringLiteral(".rgba")))
        return tl::unexpected(QStringLiteral("a frame is written as .png or .rgba"));
    QElapsedTimer timer;
    timer.start();
    const auto frame = RenderEngine().render(
        m_document, background ? std::optional(background->color()) : std::nullopt);
    if (!frame)
        return tl::unexpected(text(frame.error()));
    const QJsonObject result = measured(frame->width(), frame->height(), timer);
    return writeFrame(path, isPicture ? pngBytes(*frame) : rawBytes(*frame)).map([&] {
        return QJsonValue(result);
    });
}

ScriptResult ScriptFrame::make(const QString &kind, int width, int height, const QString &path)
{
    const MakeFrame maker = makerNamed(kind);
    if (!maker)
        return tl::unexpected(
            QStringLiteral("no frame of kind '%1': wanted fill, key or externalKeyFill").arg(kind));
    constexpr int largestSide = 32767; // px
    if (width > largestSide || height > largestSide)
        return tl::unexpected(QStringLiteral("no frame of %1 x %2").arg(width).arg(height));
    QElapsedTimer timer;
    timer.start();
    const auto frame = RenderEngine().render(m_document, std::nullopt);
    if (!frame)
        return tl::unexpected(text(frame.error()));
    const DeckLinkFrameBuffer::Result made = maker(*frame, width, height);
    if (!made)
        return tl::unexpected(text(made.error()));
    const QJsonObject result = measured(made->width, made->height, timer);
    const QByteArray bytes(reinterpret_cast<const char *>(made->data.data()), made->data.size());
    return writeFrame(path, bytes).map([&] { return QJsonValue(result); });
}

} // namespace tessara
