#include "Models/LayerFactory.h"

#include "Models/LayerGeometry.h"

#include <QFileInfo>

#include <algorithm>

namespace tessara {

namespace {

constexpr double duplicateOffset = 24;     // canvas units, in both directions
constexpr double scoreBottomMargin = 130;  // canvas units
const QSizeF windowCaptureSize(1280, 720); // canvas units
const QSizeF countdownSize(480, 160);      // canvas units

struct ShapeDefaults
{
    QSizeF size;         // canvas units
    double cornerRadius; // canvas units
};

ShapeDefaults defaultsOf(ShapeKind kind)
{
    switch (kind) {
    case ShapeKind::rectangle:
        return {{400, 120}, 8};
    case ShapeKind::ellipse:
        return {{300, 300}, 0};
    case ShapeKind::triangle:
        return {{300, 260}, 0};
    case ShapeKind::diamond:
        return {{260, 260}, 0};
    case ShapeKind::star:
        return {{280, 280}, 0};
    case ShapeKind::line:
        return {{480, 12}, 6};
    case ShapeKind::custom:
        return {{300, 300}, 0};
    }
    Q_UNREACHABLE();
}

QString numbered(const char *name, qsizetype number)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(number);
}

QString duplicateName(const QString &name)
{
    const QString copy = QStringLiteral(" Copy");
    return name + (name.endsWith(copy) ? QStringLiteral(" 2") : copy);
}

std::optional<QRectF> sanitized(const std::optional<QRectF> &crop)
{
    return crop ? std::optional(sanitizedNormalizedRect(*crop)) : std::nullopt;
}

} // namespace

TextLayer *LayerFactory::text(qsizetype number) const
{
    const QString name = numbered("Text", number);
    return new TextLayer(QUuid::createUuid(), name, name);
}

ImageLayer *LayerFactory::image(const Picture &picture, const QUrl &source) const
{
    const QSizeF size = fittedImageSize(picture.size());
    return new ImageLayer(QUuid::createUuid(), QFileInfo(source.path()).completeBaseName(), picture,
                          source, centred(size), size);
}

ShapeLayer *LayerFactory::templateShape(ShapeKind kind, qsizetype number) const
{
    const ShapeDefaults defaults = defaultsOf(kind);
    const QString name = QStringLiteral("%1 %2").arg(displayName(kind)).arg(number);
    auto *shape =
        new ShapeLayer(QUuid::createUuid(), name, kind, centred(defaults.size), defaults.size);
    shape->setCornerRadius(defaults.cornerRadius);
    return shape;
}

ShapeLayer *LayerFactory::customShape(QPointF position, QSizeF size, const QList<QPointF> &points,
                                      qsizetype number) const
{
    auto *shape = new ShapeLayer(QUuid::createUuid(), numbered("Shape", number), ShapeKind::custom,
                                 position, size);
    shape->setCustomPoints(points);
    return shape;
}

WebLayer *LayerFactory::web(qsizetype number) const
{
    return new WebLayer(QUuid::createUuid(), numbered("Browser", number),
                        QStringLiteral("https://www.youtube.com"), centred(WebLayer::defaultSize));
}

WindowCaptureLayer *LayerFactory::windowCapture(qsizetype number) const
{
    return new WindowCaptureLayer(QUuid::createUuid(), numbered("Window Capture", number),
                                  centred(windowCaptureSize), windowCaptureSize);
}

CountdownLayer *LayerFactory::countdown(qsizetype number) const
{
    return new CountdownLayer(m_clock, QUuid::createUuid(), numbered("Countdown", number),
                              centred(countdownSize), countdownSize);
}

Model3DLayer *LayerFactory::model3D(const QUrl &file, qsizetype number) const
{
    auto *model = new Model3DLayer(QUuid::createUuid(), numbered("3D Model", number),
                                   centred(Model3DLayer::defaultSize));
    model->setFileURL(file);
    return model;
}

ScoreLayer *LayerFactory::score(ScoreTemplate scoreTemplate, ScoreSportPreset sportPreset,
                                qsizetype number) const
{
    const QSizeF size = ScoreLayer::templateSize(scoreTemplate);
    const QPointF position(
        centred(size).x(),
        std::max(m_canvasSize.height() - size.height() - scoreBottomMargin, 0.0));
    return new ScoreLayer(QUuid::createUuid(), numbered("Score", number), scoreTemplate,
                          sportPreset, position, size);
}

QSizeF LayerFactory::fittedImageSize(QSizeF image) const
{
    if (!aspectRatio(image))
        return {640, 360};
    const double scale = std::min({1.0, m_canvasSize.width() * 0.5 / image.width(),
                                   m_canvasSize.height() * 0.5 / image.height()});
    return image * scale;
}

QPointF LayerFactory::centred(QSizeF size) const
{
    return {(m_canvasSize.width() - size.width()) * 0.5,
            (m_canvasSize.height() - size.height()) * 0.5};
}

QPointF LayerFactory::nudgedPosition(const TextLayer &text) const
{
    return {std::min(text.position().x() + duplicateOffset, m_canvasSize.width() - 1),
            std::min(text.position().y() + duplicateOffset, m_canvasSize.height() - 1)};
}

QPointF LayerFactory::nudgedPosition(const SizedLayer &layer) const
{
    const auto nudged = [](double from, double canvas, double side) {
        return std::max(std::min(from + duplicateOffset, std::max(canvas - side, 0.0)), 0.0);
    };
    return {nudged(layer.position().x(), m_canvasSize.width(), layer.size().width()),
            nudged(layer.position().y(), m_canvasSize.height(), layer.size().height())};
}

CanvasLayerItem LayerFactory::duplicate(const CanvasLayerItem &source) const
{
    const QPointF position =
        std::visit([this](const auto *layer) { return nudgedPosition(*layer); }, source);
    return copy(source, {QUuid::createUuid(), duplicateName(layerOf(source)->name()), position});
}

CanvasLayerItem LayerFactory::replica(const CanvasLayerItem &source) const
{
    const Layer &original = *layerOf(source);
    const CanvasLayerItem item =
        copy(source, {original.id(), original.name(), original.position()});
    layerOf(item)->setIsHidden(original.isHidden());
    layerOf(item)->setIsLocked(original.isLocked());
    setPresetGroupID(item, presetGroupID(source));
    return item;
}

CanvasLayerItem LayerFactory::copy(const CanvasLayerItem &source, const Identity &identity) const
{
    return std::visit(
        [&](const auto *layer) -> CanvasLayerItem { return copyOf(*layer, identity); }, source);
}

TextLayer *LayerFactory::copyOf(const TextLayer &source, const Identity &identity) const
{
    auto *copy = new TextLayer(identity.id, identity.name, source.text(), identity.position);
    copy->setFontSize(source.fontSize());
    copy->setFontFamily(source.fontFamily());
    copy->setFontWeight(source.fontWeight());
    copy->setColor(source.color());
    copy->setOutlineColor(source.outlineColor());
    copy->setOutlineWidth(source.outlineWidth());
    copy->setTextBoxSize(source.textBoxSize());
    copy->setHorizontalAlignment(source.horizontalAlignment());
    copy->setFieldKey(source.fieldKey());
    copy->setFieldKind(source.fieldKind());
    return copy;
}

ImageLayer *LayerFactory::copyOf(const ImageLayer &source, const Identity &identity) const
{
    const ImageLayerOptions options{
        .opacity = source.opacity(),
        .isAspectRatioLocked = source.isAspectRatioLocked(),
        .cropRectNormalized = source.cropRectNormalized(),
        .placeholderKey = source.placeholderKey(),
        .contentMode = source.contentMode(),
        .maskShape = source.maskShape(),
        .maskPadding = source.maskPadding(),
        .presetGroupID = {},
    };
    auto *copy = new ImageLayer(identity.id, identity.name, source.image(), source.sourceURL(),
                                identity.position, source.size(), options);
    copy->setLockedAspectRatio(source.lockedAspectRatio());
    return copy;
}

ShapeLayer *LayerFactory::copyOf(const ShapeLayer &source, const Identity &identity) const
{
    auto *copy =
        new ShapeLayer(identity.id, identity.name, source.kind(), identity.position, source.size());
    copy->setColor(source.color());
    copy->setCornerRadius(source.cornerRadius());
    copy->setCustomPoints(source.customPoints());
    copy->setOpacity(source.opacity());
    copy->setIsAspectRatioLocked(source.isAspectRatioLocked());
    copy->setLockedAspectRatio(source.lockedAspectRatio());
    return copy;
}

ScoreLayer *LayerFactory::copyOf(const ScoreLayer &source, const Identity &identity) const
{
    auto *copy =
        new ScoreLayer(identity.id, identity.name, source.scoreTemplate(), source.sportPreset(),
                       identity.position, source.size(), sanitized(source.cropRectNormalized()));
    copy->setHomeTeam(source.homeTeam());
    copy->setAwayTeam(source.awayTeam());
    copy->setHomeScore(source.homeScore());
    copy->setAwayScore(source.awayScore());
    copy->setPeriod(source.period());
    copy->setClock(source.clock());
    copy->setOpacity(source.opacity());
    copy->setCustomPalette(source.customPalette());
    copy->setIsAspectRatioLocked(source.isAspectRatioLocked());
    copy->setLockedAspectRatio(source.lockedAspectRatio());
    return copy;
}

WebLayer *LayerFactory::copyOf(const WebLayer &source, const Identity &identity) const
{
    auto *copy = new WebLayer(identity.id, identity.name, source.urlString(), identity.position,
                              source.size());
    copy->setOpacity(source.opacity());
    copy->setCornerRadius(source.cornerRadius());
    copy->setIsInteractive(source.isInteractive());
    copy->setVolume(source.volume());
    copy->setIsMuted(source.isMuted());
    copy->setIsAspectRatioLocked(source.isAspectRatioLocked());
    copy->setLockedAspectRatio(source.lockedAspectRatio());
    return copy;
}

Model3DLayer *LayerFactory::copyOf(const Model3DLayer &source, const Identity &identity) const
{
    auto *copy = new Model3DLayer(identity.id, identity.name, identity.position, source.size());
    copy->setFileURL(source.fileURL());
    copy->setOpacity(source.opacity());
    copy->setCornerRadius(source.cornerRadius());
    copy->setCameraYaw(source.cameraYaw());
    copy->setCameraPitch(source.cameraPitch());
    copy->setCameraDistance(source.cameraDistance());
    copy->setCameraPanX(source.cameraPanX());
    copy->setCameraPanY(source.cameraPanY());
    copy->setShowsFloor(source.showsFloor());
    copy->setAutoFit(source.autoFit());
    return copy;
}

WindowCaptureLayer *LayerFactory::copyOf(const WindowCaptureLayer &source,
                                         const Identity &identity) const
{
    auto *copy =
        new WindowCaptureLayer(identity.id, identity.name, identity.position, source.size());
    copy->setOpacity(source.opacity());
    copy->setCornerRadius(source.cornerRadius());
    copy->setIsAspectRatioLocked(source.isAspectRatioLocked());
    copy->setCapturedWindowID(source.capturedWindowID());
    copy->setCapturedWindowTitle(source.capturedWindowTitle());
    copy->setCapturedAppName(source.capturedAppName());
    copy->setCapturedBundleID(source.capturedBundleID());
    if (source.cropRectNormalized())
        copy->setCropRectNormalized(*source.cropRectNormalized());
    return copy;
}

CountdownLayer *LayerFactory::copyOf(const CountdownLayer &source, const Identity &identity) const
{
    auto *copy =
        new CountdownLayer(m_clock, identity.id, identity.name, identity.position, source.size());
    copy->setOpacity(source.opacity());
    copy->setCornerRadius(source.cornerRadius());
    copy->setIsAspectRatioLocked(source.isAspectRatioLocked());
    copy->setTotalSeconds(source.totalSeconds());
    copy->setRemainingSeconds(source.remainingSeconds());
    copy->setFontSize(source.fontSize());
    copy->setTextColor(source.textColor());
    copy->setFontWeight(source.fontWeight());
    copy->setFontFamily(source.fontFamily());
    copy->setShowBackground(source.showBackground());
    copy->setBackgroundColor(source.backgroundColor());
    copy->setWarningThreshold(source.warningThreshold());
    copy->setWarningColor(source.warningColor());
    copy->setUrgentThreshold(source.urgentThreshold());
    copy->setUrgentColor(source.urgentColor());
    return copy;
}

} // namespace tessara
