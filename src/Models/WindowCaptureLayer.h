// Another application's window on the canvas.
#pragma once

#include "Models/Layer.h"

namespace tessara {

class WindowCaptureLayer : public SizedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(double, cornerRadius, setCornerRadius, 0) // canvas units
    TESSARA_OBSERVABLE(bool, isAspectRatioLocked, setIsAspectRatioLocked, true)
    TESSARA_OBSERVABLE(std::optional<quint32>, capturedWindowID, setCapturedWindowID)
    TESSARA_OBSERVABLE(QString, capturedWindowTitle, setCapturedWindowTitle)
    TESSARA_OBSERVABLE(QString, capturedAppName, setCapturedAppName)
    TESSARA_OBSERVABLE(QString, capturedBundleID, setCapturedBundleID)
    Q_PROPERTY(std::optional<QRectF> cropRectNormalized READ cropRectNormalized NOTIFY
                   cropRectNormalizedChanged FINAL)

public:
    WindowCaptureLayer(const QUuid &id, const QString &name, QPointF position, QSizeF size);

    const std::optional<QRectF> &cropRectNormalized() const { return m_cropRectNormalized; }
    /// Cut to the window, in fractions of it; the whole window clears the crop.
    Q_INVOKABLE void setCropRectNormalized(QRectF rect);
    void clearCrop();
    /// Width through height, 16 : 9 for a box without height.
    double aspectRatio() const;

    Q_SIGNAL void cropRectNormalizedChanged();

private:
    void storeCrop(const std::optional<QRectF> &crop);

    std::optional<QRectF> m_cropRectNormalized;
};

} // namespace tessara
