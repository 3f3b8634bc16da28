#include "LayerPropertyFixture.h"

#include "Base/RawString.h"
#include "Models/LayerCapture.h"

#include <QTemporaryDir>

#include <memory>

#include <sys/stat.h>

namespace tessara {
namespace {

using Props = QMap<QString, QString>;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

class LayerCaptureTest : public LayerPropertyFixture
{
protected:
    std::optional<CanvasLayerItem> make(const char *type, const Props &props)
    {
        const auto item = makeLayerFromProps(clock, id, latin(type), props);
        if (item)
            m_made.emplace_back(layerOf(*item));
        return item;
    }

    /// Null when there is none of this kind.
    template <typename Kind>
    Kind *makeKind(const char *type, const Props &props)
    {
        const auto item = make(type, props);
        return item && std::holds_alternative<Kind *>(*item) ? std::get<Kind *>(*item) : nullptr;
    }

    QString writePicture(const char *name)
    {
        QImage picture(40, 20, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::red);
        const QString path = folder.filePath(latin(name));
        EXPECT_TRUE(picture.save(path));
        return path;
    }

    QTemporaryDir folder;
    const QUuid id = QUuid::createUuid();

private:
    std::vector<std::unique_ptr<Layer>> m_made;
};

Props propsOf(std::initializer_list<std::pair<const char *, const char *>> pairs)
{
    Props props;
    for (const auto &[key, value] : pairs)
        props[latin(key)] = QString::fromUtf8(value);
    return props;
}

TEST_F(LayerCaptureTest, ATextIsCapturedWithoutWhatItDoesNotHave)
{
    const CapturedLayer captured = captureLayerProps(&layers.text);

    EXPECT_EQ(captured.type, QStringLiteral("text"));
    EXPECT_EQ(captured.props, propsOf({{"name", "Text"},
                                       {"text", "Hello"},
                                       {"fontSize", "98.00"},
                                       {"color", "1.000000,1.000000,1.000000,1.000000"},
                                       {"outlineColor", "0.000000,0.000000,0.000000,1.000000"},
                                       {"outlineWidth", "0.0000"},
                                       {"posX", "555.00"},
                                       {"posY", "123.00"},
                                       {"textAlign", "leading"}}));
}

TEST_F(LayerCaptureTest, ATextIsCapturedWithItsFontAndItsBox)
{
    layers.text.setFontFamily(QStringLiteral("Inter"));
    layers.text.setFontWeight(650);
    layers.text.setTextBoxSize(QSizeF(300.125, 40));

    const Props props = captureLayerProps(&layers.text).props;

    EXPECT_EQ(props.size(), 13);
    EXPECT_EQ(props[QStringLiteral("fontFamily")], QStringLiteral("Inter"));
    EXPECT_EQ(props[QStringLiteral("fontWeight")], QStringLiteral("650"));
    EXPECT_EQ(props[QStringLiteral("textBoxW")], QStringLiteral("300.12"));
    EXPECT_EQ(props[QStringLiteral("textBoxH")], QStringLiteral("40.00"));
}

TEST_F(LayerCaptureTest, EveryOtherKindIsCapturedByItsOwnKeys)
{
    Props box = propsOf({{"opacity", "1.0000"},
                         {"posX", "1.00"},
                         {"posY", "2.00"},
                         {"sizeW", "3.00"},
                         {"sizeH", "4.00"}});
    const auto with = [&box](std::initializer_list<std::pair<const char *, const char *>> pairs) {
        Props props = propsOf(pairs);
        props.insert(box);
        return props;
    };
    layers.image.setSourceURL(QUrl::fromLocalFile(QStringLiteral("/pictures/a #1 %20.png")));
    layers.web.setUrlString(QStringLiteral("https://example.org/?a=b#c"));

    EXPECT_EQ(captureLayerProps(&layers.web),
              (CapturedLayer{latin("web"),
                             with({{"name", "Web"}, {"url", "https://example.org/?a=b#c"}})}));
    EXPECT_EQ(captureLayerProps(&layers.shape),
              (CapturedLayer{latin("shape"), with({{"name", "Shape"},
                                                   {"color", "0.150000,0.150000,0.180000,0.850000"},
                                                   {"cornerRadius", "0.00"},
                                                   {"shapeKind", "rectangle"}})}));
    EXPECT_EQ(captureLayerProps(&layers.windowCapture),
              (CapturedLayer{latin("windowCapture"), with({{"name", "Window"}})}));
    EXPECT_EQ(captureLayerProps(&layers.image),
              (CapturedLayer{latin("image"),
                             with({{"name", "Image"}, {"url", "/pictures/a #1 %20.png"}})}));
    EXPECT_EQ(captureLayerProps(&layers.model),
              (CapturedLayer{latin("model"), with({{"name", "Model"}})}));
    EXPECT_EQ(captureLayerProps(&layers.score),
              (CapturedLayer{latin("score"), with({{"name", "Score"},
                                                   {"template", "compactStrip"},
                                                   {"sport", "futsal"},
                                                   {"homeTeam", "BKK FC"},
                                                   {"awayTeam", "CNX FC"},
                                                   {"homeScore", "3"},
                                                   {"awayScore", "2"},
                                                   {"period", "2ND"},
                                                   {"clock", "08:41"}})}));
    EXPECT_EQ(captureLayerProps(&layers.countdown),
              (CapturedLayer{latin("countdown"), with({{"name", "Countdown"},
                                                       {"totalSeconds", "300"},
                                                       {"fontSize", "96.00"},
                                                       {"fontWeight", "7"}})}));
}

TEST_F(LayerCaptureTest, AModelIsCapturedWithItsFile)
{
    layers.model.setFileURL(QUrl::fromLocalFile(QStringLiteral("/models/car 1.glb")));

    EXPECT_EQ(captureLayerProps(&layers.model).props[QStringLiteral("fileURL")],
              QStringLiteral("/models/car 1.glb"));
}

TEST_F(LayerCaptureTest, WhatIsCapturedIsMadeAgainUnderItsID)
{
    layers.text.setFontFamily(QStringLiteral("Inter"));
    layers.text.setFontWeight(650);
    layers.text.setTextBoxSize(QSizeF(300, 40));
    layers.text.setColor({0.1, 0.2, 0.3, 0.4});
    layers.text.setHorizontalAlignment(TextLayerHorizontalAlignment::trailing);
    layers.image.setSourceURL(QUrl::fromLocalFile(writePicture("a #1.png")));
    layers.shape.setKind(ShapeKind::star);
    layers.shape.setOpacity(0.5);
    layers.score.setHomeTeam(QString());
    layers.score.setAwayScore(-4);
    layers.web.setUrlString(QStringLiteral("https://example.org"));
    layers.model.setFileURL(QUrl::fromLocalFile(QStringLiteral("/models/car.glb")));
    layers.countdown.setTotalSeconds(61);
    layers.countdown.setFontWeight(2);
    layers.countdown.setFontSize(12.5);
    for (const CanvasLayerItem &item : layers.all()) {
        const CapturedLayer captured = captureLayerProps(item);

        const auto made = makeLayerFromProps(clock, id, captured.type, captured.props);

        ASSERT_TRUE(made) << captured.type.toStdString();
        const std::unique_ptr<Layer> owned(layerOf(*made));
        EXPECT_EQ(captureLayerProps(*made), captured);
        EXPECT_EQ(owned->id(), id);
        EXPECT_FALSE(owned->isHidden());
        EXPECT_FALSE(owned->isLocked());
        EXPECT_EQ(presetGroupID(*made), std::nullopt);
    }
}

TEST_F(LayerCaptureTest, AnUnknownTypeMakesNothing)
{
    for (const char *type : {"", "Text", "hologram", "text "})
        EXPECT_FALSE(make(type, propsOf({{"name", "Name"}})));
}

TEST_F(LayerCaptureTest, ATextOfNothingHasItsValuesAtTheStart)
{
    const auto *text = makeKind<TextLayer>("text", {});

    ASSERT_TRUE(text);
    EXPECT_EQ(text->name(), QString());
    EXPECT_EQ(text->text(), QString());
    EXPECT_EQ(text->color(), RGBAColor::white);
    EXPECT_EQ(text->outlineColor(), (RGBAColor{0, 0, 0, 1}));
    EXPECT_EQ(text->outlineWidth(), 0);
    EXPECT_EQ(text->fontSize(), 8);
    EXPECT_EQ(text->fontFamily(), std::nullopt);
    EXPECT_EQ(text->fontWeight(), std::nullopt);
    EXPECT_EQ(text->textBoxSize(), std::nullopt);
    EXPECT_EQ(text->horizontalAlignment(), TextLayerHorizontalAlignment::leading);
    EXPECT_EQ(text->position(), QPointF(0, 0));
}

TEST_F(LayerCaptureTest, ATextOfUnreadableValuesHasItsValuesAtTheStart)
{
    const auto *text = makeKind<TextLayer>("text", propsOf({{"color", "red"},
                                                            {"outlineColor", "nan,0,0,1"},
                                                            {"outlineWidth", "inf"},
                                                            {"fontSize", "nan"},
                                                            {"fontFamily", ""},
                                                            {"fontWeight", "nan"},
                                                            {"textBoxW", "100"},
                                                            {"textBoxH", "1e999"},
                                                            {"textAlign", "left"},
                                                            {"posX", "-inf"},
                                                            {"posY", "7"}}));

    ASSERT_TRUE(text);
    EXPECT_EQ(text->color(), RGBAColor::white);
    EXPECT_EQ(text->outlineColor(), (RGBAColor{0, 0, 0, 1}));
    EXPECT_EQ(text->outlineWidth(), 0);
    EXPECT_EQ(text->fontSize(), 8);
    EXPECT_EQ(text->fontFamily(), std::nullopt);
    EXPECT_EQ(text->fontWeight(), std::nullopt);
    EXPECT_EQ(text->textBoxSize(), std::nullopt);
    EXPECT_EQ(text->horizontalAlignment(), TextLayerHorizontalAlignment::leading);
    EXPECT_EQ(text->position(), QPointF(0, 7));
}

TEST_F(LayerCaptureTest, ATextBoxNeedsBothSidesAboveZero)
{
    const std::pair<const char *, const char *> boxes[] = {{"0", "10"}, {"10", "0"}, {"-1", "10"}};
    for (const auto &[width, height] : boxes) {
        const auto *text =
            makeKind<TextLayer>("text", propsOf({{"textBoxW", width}, {"textBoxH", height}}));
        EXPECT_EQ(text->textBoxSize(), std::nullopt) << width << ' ' << height;
    }
    const auto *text =
        makeKind<TextLayer>("text", propsOf({{"textBoxW", "0.5"}, {"textBoxH", "10"}}));
    EXPECT_EQ(text->textBoxSize(), QSizeF(0.5, 10));
}

TEST_F(LayerCaptureTest, AShapeOfNothingHasItsValuesAtTheStart)
{
    const auto *shape = makeKind<ShapeLayer>("shape", {});

    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->color(), (RGBAColor{0.15, 0.15, 0.18, 0.85}));
    EXPECT_EQ(shape->kind(), ShapeKind::rectangle);
    EXPECT_EQ(shape->frame(), QRectF(0, 0, 0, 0));
    EXPECT_EQ(shape->cornerRadius(), 0);
    EXPECT_EQ(shape->opacity(), 1);
    EXPECT_TRUE(shape->customPoints().isEmpty());
    EXPECT_EQ(shape->lockedAspectRatio(), 1.7777777777777777);
    EXPECT_TRUE(shape->isAspectRatioLocked());
}

TEST_F(LayerCaptureTest, ARatioIsWidthThroughHeightWhereThereIsAHeight)
{
    struct Ratio
    {
        const char *width, *height;
        double ratio;
    };
    constexpr Ratio ratios[] = {{"300", "200", 1.5},
                                {"0", "200", 0},
                                {"-100", "200", -0.5},
                                {"300", "0", standardAspectRatio},
                                {"300", "-1", standardAspectRatio},
                                {"1e308", "1e-300", standardAspectRatio}};
    for (const auto &[width, height, ratio] : ratios) {
        const Props props = propsOf({{"sizeW", width}, {"sizeH", height}});
        EXPECT_EQ(makeKind<ShapeLayer>("shape", props)->lockedAspectRatio(), ratio) << width;
        EXPECT_EQ(makeKind<WebLayer>("web", props)->lockedAspectRatio(), ratio) << width;
    }
}

TEST_F(LayerCaptureTest, AnOpacityOfNothingComesBackOpaque)
{
    const QString picture = writePicture("picture.png");
    const std::pair<const char *, double> opacities[] = {{"0.0000", 1},   {"-1", 1},    {"", 1},
                                                         {"x", 1},        {"nan", 1},   {"inf", 1},
                                                         {"0.001", 0.01}, {"0.5", 0.5}, {"2", 2}};
    for (const char *type :
         {"shape", "image", "score", "web", "model", "windowCapture", "countdown"}) {
        for (const auto &[text, opacity] : opacities) {
            Props props = propsOf({{"opacity", text}});
            props[QStringLiteral("url")] = picture;
            EXPECT_EQ(layerOpacity(*make(type, props)), opacity) << type << ' ' << text;
        }
    }
}

TEST_F(LayerCaptureTest, AScoreOfNothingIsThatOfItsSport)
{
    const auto *score = makeKind<ScoreLayer>("score", propsOf({{"sport", "volleyball"}}));

    ASSERT_TRUE(score);
    EXPECT_EQ(score->scoreTemplate(), ScoreTemplate::wideBroadcast);
    EXPECT_EQ(score->homeTeam(), QStringLiteral("THA"));
    EXPECT_EQ(score->awayTeam(), QStringLiteral("JPN"));
    EXPECT_EQ(score->homeScore(), 2);
    EXPECT_EQ(score->awayScore(), 1);
    EXPECT_EQ(score->period(), QStringLiteral("SET 3"));
    EXPECT_EQ(score->clock(), QStringLiteral("18-17"));
}

TEST_F(LayerCaptureTest, AScoreTakesWhatIsThereAndReadable)
{
    const auto *score = makeKind<ScoreLayer>("score", propsOf({{"template", "oval"},
                                                               {"sport", "chess"},
                                                               {"homeTeam", ""},
                                                               {"homeScore", "1.5"},
                                                               {"awayScore", "77"},
                                                               {"clock", "x"}}));

    ASSERT_TRUE(score);
    EXPECT_EQ(score->scoreTemplate(), ScoreTemplate::wideBroadcast);
    EXPECT_EQ(score->sportPreset(), ScoreSportPreset::football);
    EXPECT_EQ(score->homeTeam(), QString());
    EXPECT_EQ(score->awayTeam(), QStringLiteral("AWAY"));
    EXPECT_EQ(score->homeScore(), 1); // as football has it
    EXPECT_EQ(score->awayScore(), 77);
    EXPECT_EQ(score->clock(), QStringLiteral("x"));
}

TEST_F(LayerCaptureTest, ACountdownStartsWithItsWholeTime)
{
    const auto *countdown = makeKind<CountdownLayer>(
        "countdown", propsOf({{"totalSeconds", "61"}, {"fontSize", "12.5"}, {"fontWeight", "2"}}));

    ASSERT_TRUE(countdown);
    EXPECT_EQ(countdown->totalSeconds(), 61);
    EXPECT_EQ(countdown->remainingSeconds(), 61);
    EXPECT_EQ(countdown->fontSize(), 12.5);
    EXPECT_EQ(countdown->fontWeight(), 2);
    EXPECT_FALSE(countdown->isRunning());
}

TEST_F(LayerCaptureTest, ACountdownKeepsItsValuesAtTheStartInsteadOfBadOnes)
{
    for (const char *bad : {"", "0", "-5", "x", "nan", "inf"}) {
        const auto *countdown = makeKind<CountdownLayer>(
            "countdown",
            propsOf({{"totalSeconds", bad}, {"fontSize", bad}, {"fontWeight", "7.5"}}));

        ASSERT_TRUE(countdown);
        EXPECT_EQ(countdown->totalSeconds(), 300) << bad;
        EXPECT_EQ(countdown->remainingSeconds(), 300) << bad;
        EXPECT_EQ(countdown->fontSize(), 96) << bad;
        EXPECT_EQ(countdown->fontWeight(), 7) << bad;
    }
}

TEST_F(LayerCaptureTest, APictureIsLoadedFromItsFile)
{
    Props props = propsOf({{"name", "Logo"}, {"posX", "5"}, {"sizeW", "80"}, {"sizeH", "60"}});
    props[QStringLiteral("url")] = writePicture("logo 100%.png");

    const auto *image = makeKind<ImageLayer>("image", props);

    ASSERT_TRUE(image);
    EXPECT_EQ(image->image().size(), QSize(40, 20));
    EXPECT_EQ(image->sourceURL().toLocalFile(), props[QStringLiteral("url")]);
    EXPECT_EQ(image->name(), QStringLiteral("Logo"));
    EXPECT_EQ(image->frame(), QRectF(5, 0, 80, 60));
}

TEST_F(LayerCaptureTest, APictureThatCannotBeLoadedMakesNothing)
{
    QFile text(folder.filePath(QStringLiteral("text.png")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();

    EXPECT_FALSE(make("image", {}));
    for (const QString &path : {QString(), folder.path(), text.fileName(),
                                folder.filePath(QStringLiteral("gone.png")), latin("/dev/zero")})
        EXPECT_FALSE(make("image", {{latin("url"), path}})) << path.toStdString();
}

TEST_F(LayerCaptureTest, APipeIsNoPicture)
{
    const QString pipe = folder.filePath(QStringLiteral("pipe.png"));
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);

    EXPECT_FALSE(make("image", {{latin("url"), pipe}})); // to open it would wait for ever
}

TEST_F(LayerCaptureTest, AWindowCaptureWaitsForItsWindow)
{
    const auto *window = makeKind<WindowCaptureLayer>("windowCapture", propsOf({{"sizeW", "80"}}));

    ASSERT_TRUE(window);
    EXPECT_EQ(window->capturedWindowID(), std::nullopt);
    EXPECT_EQ(window->size(), QSizeF(80, 0));
}

TEST_F(LayerCaptureTest, AModelOfNothingHasNoFile)
{
    const auto *model = makeKind<Model3DLayer>("model", {});

    ASSERT_TRUE(model);
    EXPECT_EQ(model->fileURL(), std::nullopt);
}

} // namespace
} // namespace tessara
