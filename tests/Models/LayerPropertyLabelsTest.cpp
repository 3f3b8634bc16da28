#include "Models/LayerPropertyLabels.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

TEST(LayerPropertyLabelsTest, EveryKeyHasItsLabelAndItsIcon)
{
    struct Look
    {
        const char *key, *label, *icon;
    };
    constexpr Look looks[] = {
        {"text", "Text", "text.cursor"},
        {"name", "Rename", "pencil"},
        {"color", "Color", "paintbrush.fill"},
        {"outlineColor", "Outline Color", "paintbrush.fill"},
        {"outlineWidth", "Outline Width", "pencil.tip"},
        {"fontSize", "Font Size", "textformat.size"},
        {"fontFamily", "Font Family", "textformat"},
        {"fontWeight", "Font Weight", "bold"},
        {"opacity", "Opacity", "circle.lefthalf.filled"},
        {"posX", "Position X", "arrow.up.and.down.and.arrow.left.and.right"},
        {"posY", "Position Y", "arrow.up.and.down.and.arrow.left.and.right"},
        {"sizeW", "Width", "arrow.left.and.right"},
        {"sizeH", "Height", "arrow.left.and.right"},
        {"cornerRadius", "Corner Radius", "rectangle.roundedtop"},
        {"textAlign", "Alignment", "text.aligncenter"},
        {"shapeKind", "Shape", "square.on.circle"},
        {"homeTeam", "Home Team", "person.2"},
        {"awayTeam", "Away Team", "person.2"},
        {"homeScore", "Home Score", "sportscourt"},
        {"awayScore", "Away Score", "sportscourt"},
        {"period", "Period", "clock"},
        {"clock", "Clock", "clock"},
        {"textBoxW", "textBoxW", "slider.horizontal.3"},
        {"Text", "Text", "slider.horizontal.3"},
        {"", "", "slider.horizontal.3"},
    };
    for (const auto &[key, label, icon] : looks) {
        EXPECT_EQ(propKeyLabel(latin(key)), latin(label)) << key;
        EXPECT_EQ(propKeyIcon(latin(key)), latin(icon)) << key;
    }
}

TEST(LayerPropertyLabelsTest, EveryValueIsShownInItsUnit)
{
    struct Shown
    {
        const char *key, *value, *label;
    };
    constexpr Shown values[] = {
        {"opacity", "0.5000", "50%"},
        {"opacity", "0.1250", "12%"}, // a tie, to the even neighbour
        {"opacity", "2", "200%"},
        {"fontSize", "41.50", "41.5 pt"},
        {"fontSize", "98", "98.0 pt"},
        {"outlineWidth", "2.5500", "2.5"},
        {"posX", "-12.75", "-12.8"},
        {"posY", "3", "3.0"},
        {"cornerRadius", "7.75", "8"},
        {"sizeW", "99.50", "100"},
        {"sizeH", "88.25", "88"},
        {"color", "1.000000,0.500000,0.000000,1.000000", "#FF7F00"},
        {"outlineColor", "0.15,0.15,0.18,0.85", "#26262D"},
        {"color", "1,1,1", "#FFFFFF"},
        {"color", "red,1,x,0,,1", "#FF00FF"},
        {"color", "2,0,0,1", "#1FE0000"},
        {"textAlign", "leading", "Left"},
        {"textAlign", "center", "Center"},
        {"textAlign", "trailing", "Right"},
        {"text", " Hello ", " Hello "},
        {"name", "0.5", "0.5"},
        {"fontFamily", "Inter", "Inter"},
        {"fontWeight", "650", "650"},
        {"shapeKind", "star", "star"},
        {"homeTeam", "REDS", "REDS"},
        {"awayTeam", "BLUES", "BLUES"},
        {"homeScore", "3", "3"},
        {"awayScore", "4", "4"},
        {"period", "Q4", "Q4"},
        {"clock", "12:00", "12:00"},
        {"unknown", "0.5000", "0.5000"},
    };
    for (const auto &[key, value, label] : values)
        EXPECT_EQ(propValueLabel(latin(key), latin(value)), latin(label)) << key << ' ' << value;
}

TEST(LayerPropertyLabelsTest, AValueThatDoesNotReadIsShownAsItIs)
{
    const char *const numericKeys[] = {"opacity", "fontSize",     "outlineWidth", "posX",
                                       "posY",    "cornerRadius", "sizeW",        "sizeH"};
    for (const char *key : numericKeys) {
        for (const char *value : {"", "wide", "1 pt", "nan", "inf", "1e999"})
            EXPECT_EQ(propValueLabel(latin(key), latin(value)), latin(value)) << key;
    }
    for (const char *value : {"", "red", "1,1", "1,1,x", "nan,0,0,1", "1e300,0,0,1"})
        EXPECT_EQ(propValueLabel(latin("color"), latin(value)), latin(value));
    for (const char *value : {"", "left", "Center"})
        EXPECT_EQ(propValueLabel(latin("textAlign"), latin(value)), latin(value));
}

TEST(LayerPropertyLabelsTest, EveryLayerTypeHasItsLabelItsNameAndItsIcon)
{
    struct Look
    {
        const char *type, *label, *name, *icon;
    };
    constexpr Look looks[] = {
        {"text", "Text", "Text Layer", "text.bubble"},
        {"shape", "Shape", "Shape Layer", "square.on.circle"},
        {"image", "Image", "Image Layer", "photo"},
        {"score", "Score", "Score Layer", "sportscourt"},
        {"web", "Web", "Web Layer", "globe"},
        {"model", "3D Model", "3D Model Layer", "cube"},
        {"windowCapture", "Window Capture", "Window Capture Layer", "macwindow"},
        {"countdown", "Countdown", "Countdown Layer", "timer"},
        {"hologram", "hologram", "hologram Layer", "plus.square"},
        {"", "", " Layer", "plus.square"},
    };
    for (const auto &[type, label, name, icon] : looks) {
        EXPECT_EQ(layerTypeLabel(latin(type)), latin(label));
        EXPECT_EQ(layerTypeName(latin(type)), latin(name));
        EXPECT_EQ(layerTypeIcon(latin(type)), latin(icon));
    }
}

} // namespace
} // namespace tessara
