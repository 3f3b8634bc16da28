// Frames to files.
#pragma once

#include "Automation/ValueCodec.h"
#include "Models/RGBAColor.h"

#include <QObject>

namespace tessara {

class CanvasDocument;

class ScriptFrame : public QObject
{
    Q_OBJECT

public:
    explicit ScriptFrame(const CanvasDocument &document);

    /// One frame at canvas size: ".png" with straight alpha, ".rgba" the raw premultiplied bytes.
    Q_INVOKABLE tessara::ScriptResult render(const QString &path,
                                             const std::optional<tessara::RGBAColor> &background);
    /// The device bytes of a "fill", "key" or "externalKeyFill" frame, B G R A.
    Q_INVOKABLE tessara::ScriptResult make(const QString &kind, int width, int height,
                                           const QString &path);

private:
    const CanvasDocument &m_document;
};

/// In one step, or not at all; no bytes are no frame.
tl::expected<void, QString> writeFrame(const QString &path, const QByteArray &bytes);
/// With straight alpha, as the format has it; nothing when it can't be made.
QByteArray pngBytes(const QImage &image);

} // namespace tessara
