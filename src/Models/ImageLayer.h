// A picture file on the canvas.
#pragma once

#include <QPainterPath>
#include <QUrl>

#include "Models/Layer.h"
#include "Models/LayerEnums.h"
#include "Models/Picture.h"

namespace tessara {

/// What a picture layer starts with, beyond its identity, its picture and its box.
struct ImageLayerOptions
{
    double opacity = 1;
    bool isHidden = false;
    bool isLocked = false;
    bool isAspectRatioLocked = true;
    std::optional<QRectF> cropRectNormalized;
    std::optional<QString> placeholderKey;
    /// None: a placeholder shows its picture whole, any other picture fills its frame.
    std::optional<ImageLayerContentMode> contentMode;
    ImageLayerMaskShape maskShape = ImageLayerMaskShape::rectangle;
    double maskPadding = 0; // canvas units
    std::optional<QUuid> presetGroupID;
};

class ImageLayer : public AspectLockedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(tessara::Picture, image, setImage)
    TESSARA_OBSERVABLE(QUrl, sourceURL, setSourceURL)
    /// The part that is shown, in fractions of the picture, y downward.
    TESSARA_OBSERVABLE(std::optional<QRectF>, cropRectNormalized, setCropRectNormalized)
    TESSARA_OBSERVABLE(std::optional<QString>, placeholderKey, setPlaceholderKey)
    TESSARA_OBSERVABLE(tessara::ImageLayerContentMode, contentMode, setContentMode,
                       ImageLayerContentMode::fillCrop)
    TESSARA_OBSERVABLE(tessara::ImageLayerMaskShape, maskShape, setMaskShape,
                       ImageLayerMaskShape::rectangle)
    TESSARA_OBSERVABLE(double, maskPadding, setMaskPadding, 0) // canvas units
    Q_PROPERTY(std::optional<QUuid> presetGroupID READ presetGroupID WRITE setPresetGroupID FINAL)

public:
    ImageLayer(const QUuid &id, const QString &name, const Picture &image, const QUrl &sourceURL,
               QPointF position, QSizeF size, const ImageLayerOptions &options = {});

    std::optional<QUuid> presetGroupID() const { return m_presetGroupID; }
    void setPresetGroupID(const std::optional<QUuid> &group) { m_presetGroupID = group; }

    /// The crop in fractions of the picture: the layer's own, or the one that fills `destination`.
    QRectF normalizedCropRect(QSizeF destination) const;
    /// Where in `rect` the picture stands, inside its padding.
    QRectF contentRect(QRectF rect) const;
    /// The outline of the mask in `rect`, y downward.
    QPainterPath maskPath(QRectF rect) const;

private:
    std::optional<QUuid> m_presetGroupID;
};

} // namespace tessara
