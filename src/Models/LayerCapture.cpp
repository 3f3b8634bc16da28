#include "Models/LayerCapture.h"

#include "Models/LayerPropertyTable.h"
#include "Models/PropertyText.h"

#include "Base/RawString.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

using Props = QMap<QString, QString>;

constexpr double smallestFontSize = 8;   // canvas units
constexpr double smallestOpacity = 0.01; // a new layer can always be seen

// Writing: what stands beside the rows of the property table.

QString length(double value)
{
    return encNumber(value, 2);
}

void addBox(Props &props, const SizedLayer &layer)
{
    props[QStringLiteral("posX")] = length(layer.position().x());
    props[QStringLiteral("posY")] = length(layer.position().y());
    props[QStringLiteral("sizeW")] = length(layer.size().width());
    props[QStringLiteral("sizeH")] = length(layer.size().height());
}

void addMore(Props &props, const TextLayer &text)
{
    // Written only when they are there, unlike in a step that changes them.
    if (!text.fontFamily())
        props.remove(QStringLiteral("fontFamily"));
    if (!text.fontWeight())
        props.remove(QStringLiteral("fontWeight"));
    if (text.textBoxSize()) {
        props[QStringLiteral("textBoxW")] = length(text.textBoxSize()->width());
        props[QStringLiteral("textBoxH")] = length(text.textBoxSize()->height());
    }
}

void addMore(Props &props, const ImageLayer &image)
{
    props[QStringLiteral("url")] = image.sourceURL().path();
}

void addMore(Props &, const ShapeLayer &) {}

void addMore(Props &props, const ScoreLayer &score)
{
    addBox(props, score);
    props[QStringLiteral("template")] = rawString(score.scoreTemplate());
    props[QStringLiteral("sport")] = rawString(score.sportPreset());
}

void addMore(Props &props, const WebLayer &web)
{
    addBox(props, web);
    props[QStringLiteral("url")] = web.urlString();
}

void addMore(Props &props, const Model3DLayer &model)
{
    addBox(props, model);
    if (model.fileURL())
        props[QStringLiteral("fileURL")] = model.fileURL()->path();
}

void addMore(Props &props, const WindowCaptureLayer &window)
{
    addBox(props, window);
}

void addMore(Props &props, const CountdownLayer &countdown)
{
    addBox(props, countdown);
    props[QStringLiteral("totalSeconds")] = encNumber(countdown.totalSeconds(), 0);
    props[QStringLiteral("fontSize")] = length(countdown.fontSize());
    props[QStringLiteral("fontWeight")] = QString::number(countdown.fontWeight());
}

// Reading.

/// The props of one layer, mended where they are read.
class PropsReader
{
public:
    explicit PropsReader(const Props &props)
        : m_props(props)
    {
    }

    /// Empty when missing.
    QString text(const char *key) const { return m_props.value(QLatin1String(key)); }
    std::optional<QString> optionalText(const char *key) const
    {
        const auto found = m_props.find(QLatin1String(key));
        return found != m_props.end() ? std::optional(*found) : std::nullopt;
    }
    std::optional<double> optionalNumber(const char *key) const
    {
        return parseFiniteNumber(text(key));
    }
    double number(const char *key) const { return optionalNumber(key).value_or(0); }
    std::optional<qint64> integer(const char *key) const { return parseInteger(text(key)); }
    std::optional<RGBAColor> color(const char *key) const { return parseColor(text(key)); }
    template <typename Enum>
    std::optional<Enum> caseName(const char *key) const
    {
        return fromRawString<Enum>(text(key));
    }

    QString name() const { return text("name"); }
    QPointF position() const { return {number("posX"), number("posY")}; }
    QSizeF size() const { return {number("sizeW"), number("sizeH")}; }
    double opacity() const
    {
        const double opacity = number("opacity");
        return std::max(opacity > 0 ? opacity : 1, smallestOpacity);
    }

private:
    const Props &m_props;
};

// Unlike `aspectRatio()` it keeps a width of 0 and below.
double lockedRatio(QSizeF size)
{
    const double ratio = size.height() > 0 ? size.width() / size.height() : standardAspectRatio;
    return std::isfinite(ratio) ? ratio : standardAspectRatio;
}

std::optional<QSizeF> textBox(const PropsReader &props)
{
    const QSizeF box(props.number("textBoxW"), props.number("textBoxH"));
    return box.width() > 0 && box.height() > 0 ? std::optional(box) : std::nullopt;
}

std::optional<CanvasLayerItem> makeText(Clock &, const QUuid &id, const PropsReader &props)
{
    auto *text = new TextLayer(id, props.name(), props.text("text"), props.position());
    text->setColor(props.color("color").value_or(RGBAColor::white));
    text->setOutlineColor(props.color("outlineColor").value_or(RGBAColor{0, 0, 0, 1}));
    text->setOutlineWidth(props.number("outlineWidth"));
    text->setFontSize(std::max(props.number("fontSize"), smallestFontSize));
    if (const QString family = props.text("fontFamily"); !family.isEmpty())
        text->setFontFamily(family);
    text->setFontWeight(props.optionalNumber("fontWeight"));
    text->setTextBoxSize(textBox(props));
    text->setHorizontalAlignment(props.caseName<TextLayerHorizontalAlignment>("textAlign")
                                     .value_or(TextLayerHorizontalAlignment::leading));
    return text;
}

std::optional<CanvasLayerItem> makeImage(Clock &, const QUuid &id, const PropsReader &props)
{
    const QString path = props.text("url");
    const auto picture = Picture::load(path);
    if (!picture)
        return std::nullopt;
    auto *image = new ImageLayer(id, props.name(), *picture, QUrl::fromLocalFile(path),
                                 props.position(), props.size());
    image->setOpacity(props.opacity());
    return image;
}

std::optional<CanvasLayerItem> makeShape(Clock &, const QUuid &id, const PropsReader &props)
{
    const ShapeKind kind = props.caseName<ShapeKind>("shapeKind").value_or(ShapeKind::rectangle);
    auto *shape = new ShapeLayer(id, props.name(), kind, props.position(), props.size());
    shape->setColor(props.color("color").value_or(RGBAColor{0.15, 0.15, 0.18, 0.85}));
    shape->setCornerRadius(props.number("cornerRadius"));
    shape->setOpacity(props.opacity());
    shape->setLockedAspectRatio(lockedRatio(props.size()));
    return shape;
}

std::optional<CanvasLayerItem> makeScore(Clock &, const QUuid &id, const PropsReader &props)
{
    auto *score = new ScoreLayer(
        id, props.name(),
        props.caseName<ScoreTemplate>("template").value_or(ScoreTemplate::wideBroadcast),
        props.caseName<ScoreSportPreset>("sport").value_or(ScoreSportPreset::football),
        props.position(), props.size());
    score->setOpacity(props.opacity());
    // What is missing stays as the sport's preset has it.
    score->setHomeTeam(props.optionalText("homeTeam").value_or(score->homeTeam()));
    score->setAwayTeam(props.optionalText("awayTeam").value_or(score->awayTeam()));
    score->setPeriod(props.optionalText("period").value_or(score->period()));
    score->setClock(props.optionalText("clock").value_or(score->clock()));
    score->setHomeScore(props.integer("homeScore").value_or(score->homeScore()));
    score->setAwayScore(props.integer("awayScore").value_or(score->awayScore()));
    return score;
}

std::optional<CanvasLayerItem> makeWeb(Clock &, const QUuid &id, const PropsReader &props)
{
    auto *web = new WebLayer(id, props.name(), props.text("url"), props.position(), props.size());
    web->setOpacity(props.opacity());
    web->setLockedAspectRatio(lockedRatio(props.size()));
    return web;
}

std::optional<CanvasLayerItem> makeModel(Clock &, const QUuid &id, const PropsReader &props)
{
    auto *model = new Model3DLayer(id, props.name(), props.position(), props.size());
    if (const std::optional<QString> file = props.optionalText("fileURL"))
        model->setFileURL(QUrl::fromLocalFile(*file));
    model->setOpacity(props.opacity());
    return model;
}

std::optional<CanvasLayerItem> makeWindowCapture(Clock &, const QUuid &id, const PropsReader &props)
{
    auto *window = new WindowCaptureLayer(id, props.name(), props.position(), props.size());
    window->setOpacity(props.opacity());
    return window;
}

std::optional<CanvasLayerItem> makeCountdown(Clock &clock, const QUuid &id,
                                             const PropsReader &props)
{
    auto *countdown = new CountdownLayer(clock, id, props.name(), props.position(), props.size());
    countdown->setOpacity(props.opacity());
    if (const double seconds = props.number("totalSeconds"); seconds > 0) {
        countdown->setTotalSeconds(seconds);
        countdown->setRemainingSeconds(seconds);
    }
    if (const double fontSize = props.number("fontSize"); fontSize > 0)
        countdown->setFontSize(fontSize);
    countdown->setFontWeight(props.integer("fontWeight").value_or(countdown->fontWeight()));
    return countdown;
}

struct LayerMaker
{
    QLatin1String type;
    std::optional<CanvasLayerItem> (*make)(Clock &, const QUuid &, const PropsReader &);
};

constexpr LayerMaker makers[] = {{QLatin1String("text"), makeText},
                                 {QLatin1String("image"), makeImage},
                                 {QLatin1String("shape"), makeShape},
                                 {QLatin1String("score"), makeScore},
                                 {QLatin1String("web"), makeWeb},
                                 {QLatin1String("model"), makeModel},
                                 {QLatin1String("windowCapture"), makeWindowCapture},
                                 {QLatin1String("countdown"), makeCountdown}};

} // namespace

CapturedLayer captureLayerProps(const CanvasLayerItem &item)
{
    CapturedLayer captured{layerTypeOf(item), {}};
    for (const LayerPropertyRow &row : layerPropertyRows(item))
        captured.props[row.key] = row.encode(*layerOf(item));
    std::visit([&](const auto *layer) { addMore(captured.props, *layer); }, item);
    return captured;
}

std::optional<CanvasLayerItem> makeLayerFromProps(Clock &clock, const QUuid &id,
                                                  const QString &type, const Props &props)
{
    const auto *maker = std::ranges::find(makers, type, &LayerMaker::type);
    if (maker == std::end(makers))
        return std::nullopt;
    return maker->make(clock, id, PropsReader(props));
}

} // namespace tessara
