#include "LayerPropertyFixture.h"

#include "Models/LayerPropertyTable.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <map>

namespace tessara {
namespace {

struct ExpectedRow
{
    const char *key;
    const char *property;
    int debounceMs;
    const char *undoName;
    const char *otherValue; // one that no layer has at the start, as the row writes it

    bool operator==(const ExpectedRow &other) const
    {
        return qstrcmp(key, other.key) == 0 && qstrcmp(property, other.property) == 0
               && debounceMs == other.debounceMs && qstrcmp(undoName, other.undoName) == 0;
    }
};

std::ostream &operator<<(std::ostream &stream, const ExpectedRow &row)
{
    return stream << row.key << ' ' << row.property << ' ' << row.debounceMs << ' ' << row.undoName;
}

using ExpectedRows = std::vector<ExpectedRow>;

const ExpectedRows plainRows = {{"name", "name", 500, "Rename Layer", "Other"},
                                {"opacity", "opacity", 300, "Change Opacity", "0.1250"}};

const std::map<QString, ExpectedRows> expectedRows = {
    {QStringLiteral("text"),
     {{"text", "text", 500, "Edit Text", " two\nlines "},
      {"name", "name", 500, "Rename Layer", "Other"},
      {"color", "color", 300, "Change Color", "0.100000,0.200000,0.300000,0.400000"},
      {"outlineColor", "outlineColor", 300, "Change Outline Color",
       "0.500000,0.600000,0.700000,0.800000"},
      {"outlineWidth", "outlineWidth", 300, "Change Outline", "2.5000"},
      {"fontSize", "fontSize", 300, "Change Font Size", "41.50"},
      {"fontFamily", "fontFamily", 500, "Change Font", "Inter"},
      {"fontWeight", "fontWeight", 500, "Change Font Weight", "650"},
      {"posX", "position", 500, "Move Layer", "12.25"},
      {"posY", "position", 500, "Move Layer", "-12.75"},
      {"textAlign", "horizontalAlignment", 300, "Change Alignment", "trailing"}}},
    {QStringLiteral("image"),
     {{"name", "name", 500, "Rename Layer", "Other"},
      {"opacity", "opacity", 300, "Change Opacity", "0.1250"},
      {"posX", "position", 500, "Move Layer", "12.25"},
      {"posY", "position", 500, "Move Layer", "-12.75"},
      {"sizeW", "size", 500, "Resize Layer", "99.50"},
      {"sizeH", "size", 500, "Resize Layer", "88.25"}}},
    {QStringLiteral("shape"),
     {{"name", "name", 500, "Rename Layer", "Other"},
      {"color", "color", 300, "Change Color", "0.100000,0.200000,0.300000,0.400000"},
      {"opacity", "opacity", 300, "Change Opacity", "0.1250"},
      {"cornerRadius", "cornerRadius", 300, "Change Corner Radius", "7.75"},
      {"posX", "position", 500, "Move Layer", "12.25"},
      {"posY", "position", 500, "Move Layer", "-12.75"},
      {"sizeW", "size", 500, "Resize Layer", "99.50"},
      {"sizeH", "size", 500, "Resize Layer", "88.25"},
      {"shapeKind", "kind", 300, "Change Shape", "star"}}},
    {QStringLiteral("score"),
     {{"name", "name", 500, "Rename Layer", "Other"},
      {"homeTeam", "homeTeam", 400, "Edit Team", "REDS"},
      {"awayTeam", "awayTeam", 400, "Edit Team", "BLUES"},
      {"homeScore", "homeScore", 200, "Edit Score", "-17"},
      {"awayScore", "awayScore", 200, "Edit Score", "9007199254740993"},
      {"period", "period", 400, "Edit Period", "OT"},
      {"clock", "clock", 400, "Edit Clock", "00:01"},
      {"opacity", "opacity", 300, "Change Opacity", "0.1250"},
      {"posX", "position", 500, "Move Layer", "12.25"},
      {"posY", "position", 500, "Move Layer", "-12.75"}}},
    {QStringLiteral("web"), plainRows},
    {QStringLiteral("model"), plainRows},
    {QStringLiteral("windowCapture"), plainRows},
    {QStringLiteral("countdown"), plainRows}};

class LayerPropertyTableTest : public LayerPropertyFixture
{
protected:
    using Values = QMap<QString, QString>;

    static Values valuesOf(const CanvasLayerItem &item)
    {
        Values values;
        for (const LayerPropertyRow &row : layerPropertyRows(item))
            values[row.key] = row.encode(*layerOf(item));
        return values;
    }

    static QString valueOf(const CanvasLayerItem &item, const char *key)
    {
        return valuesOf(item).value(QLatin1String(key));
    }

    /// Every property as Qt sees it, also those that no row holds.
    static QVariantMap everythingOf(const CanvasLayerItem &item)
    {
        QVariantMap everything;
        const QMetaObject *description = layerOf(item)->metaObject();
        for (int index = 0; index < description->propertyCount(); ++index) {
            const QMetaProperty property = description->property(index);
            everything[QLatin1String(property.name())] = property.read(layerOf(item));
        }
        return everything;
    }

    static void apply(const CanvasLayerItem &item, const char *key, const char *value)
    {
        applyLayerProperty(item, QLatin1String(key), QString::fromUtf8(value));
    }
};

TEST_F(LayerPropertyTableTest, EachKindHasItsRowsInOrder)
{
    for (const CanvasLayerItem &item : layers.all()) {
        ExpectedRows rows;
        for (const LayerPropertyRow &row : layerPropertyRows(item))
            rows.push_back({row.key.data(), row.property, row.debounceMs, row.undoName.data(), ""});

        EXPECT_EQ(rows, expectedRows.at(layerTypeOf(item)));
    }
}

TEST_F(LayerPropertyTableTest, ThereAre44Rows)
{
    std::size_t count = 0;
    for (const CanvasLayerItem &item : layers.all())
        count += layerPropertyRows(item).size();

    EXPECT_EQ(count, 44);
}

TEST_F(LayerPropertyTableTest, EveryRowNamesAPropertyThatTellsOfItsChanges)
{
    for (const CanvasLayerItem &item : layers.all()) {
        for (const LayerPropertyRow &row : layerPropertyRows(item)) {
            Layer *layer = layerOf(item);
            const QMetaProperty property =
                layer->metaObject()->property(layer->metaObject()->indexOfProperty(row.property));
            ASSERT_TRUE(property.hasNotifySignal()) << row.property;
            QSignalSpy changes(layer, property.notifySignal());

            for (const ExpectedRow &expected : expectedRows.at(layerTypeOf(item))) {
                if (row.key == QLatin1String(expected.key))
                    row.apply(*layer, QString::fromUtf8(expected.otherValue));
            }

            EXPECT_EQ(changes.size(), 1) << row.key.data();
        }
    }
}

TEST_F(LayerPropertyTableTest, AValueIsReadBackAsItIsWrittenAndChangesItsRowAlone)
{
    for (const CanvasLayerItem &item : layers.all()) {
        for (const ExpectedRow &row : expectedRows.at(layerTypeOf(item))) {
            Values expected = valuesOf(item);
            EXPECT_NE(expected[QLatin1String(row.key)], QString::fromUtf8(row.otherValue));

            apply(item, row.key, row.otherValue);

            expected[QLatin1String(row.key)] = QString::fromUtf8(row.otherValue);
            EXPECT_EQ(valuesOf(item), expected) << row.key;
        }
    }
}

TEST_F(LayerPropertyTableTest, TheValuesOfOneLayerMakeAFreshOneEqual)
{
    Layers fresh(clock);
    for (int index = 0; index < layers.all().size(); ++index) {
        const CanvasLayerItem source = layers.all()[index];
        const CanvasLayerItem target = fresh.all()[index];
        for (const ExpectedRow &row : expectedRows.at(layerTypeOf(source)))
            apply(source, row.key, row.otherValue);

        const Values values = valuesOf(source);
        for (auto value = values.begin(); value != values.end(); ++value)
            applyLayerProperty(target, value.key(), value.value());

        EXPECT_EQ(valuesOf(target), values);
    }
}

TEST_F(LayerPropertyTableTest, AKeyOfNoKindOrOfAnotherKindDoesNothing)
{
    const char *const strangers[] = {"",         "Name", "isHidden", "urlString", "url",     "kind",
                                     "position", "id",   "size",     "textBoxW",  "template"};
    for (const CanvasLayerItem &item : layers.all()) {
        QStringList keys;
        for (const char *stranger : strangers)
            keys << QLatin1String(stranger);
        for (const auto &[type, rows] : expectedRows) {
            for (const ExpectedRow &row : rows)
                keys << QLatin1String(row.key);
        }
        const Values own = valuesOf(item);
        const QVariantMap before = everythingOf(item);

        for (const QString &key : keys) {
            if (!own.contains(key))
                applyLayerProperty(item, key, QStringLiteral("1"));
        }

        EXPECT_EQ(everythingOf(item), before);
    }
}

TEST_F(LayerPropertyTableTest, AValueThatCannotBeReadChangesNothing)
{
    const std::pair<const char *, std::vector<const char *>> badValues[] = {
        {"fontSize", {"", "big", "12 pt", "1,5", "nan", "inf", "-inf", "1e999"}},
        {"outlineWidth", {"", "x", "nan"}},
        {"opacity", {"", "x", "nan", "inf"}},
        {"cornerRadius", {"", "x", "inf"}},
        {"posX", {"", "x", "nan", "1e999"}},
        {"posY", {"", "x", "-inf"}},
        {"sizeW", {"", "x", "nan"}},
        {"sizeH", {"", "x", "inf"}},
        {"homeScore", {"", "x", "1.5", "nan", "9223372036854775808"}},
        {"awayScore", {"", "x", "1e2"}},
        {"color", {"", "red", "0,0,0", "0,0,0,0,0", "nan,0,0,1", "0,inf,0,1"}},
        {"outlineColor", {"", "0,0,0"}},
        {"fontWeight", {"nan", "inf", "-inf", "1e999"}},
        {"textAlign", {"", "left", "Leading", "center "}},
        {"shapeKind", {"", "Star", "ShapeKind::star", "square"}}};
    layers.text.setFontWeight(300);
    for (const CanvasLayerItem &item : layers.all()) {
        const QVariantMap before = everythingOf(item);
        for (const auto &[key, values] : badValues) {
            for (const char *value : values) {
                apply(item, key, value);
                EXPECT_EQ(everythingOf(item), before) << key << ' ' << value;
            }
        }
    }
}

TEST_F(LayerPropertyTableTest, ANumberIsNeverClamped)
{
    apply(&layers.shape, "opacity", "2");
    apply(&layers.shape, "sizeW", "-5");
    apply(&layers.shape, "posX", "1e308");
    apply(&layers.text, "fontSize", "-1e9");
    apply(&layers.text, "outlineWidth", "1000");

    EXPECT_EQ(layers.shape.opacity(), 2);
    EXPECT_EQ(layers.shape.size().width(), -5);
    EXPECT_EQ(layers.shape.position().x(), 1e308);
    EXPECT_EQ(layers.text.fontSize(), -1e9);
    EXPECT_EQ(layers.text.outlineWidth(), 1000);
}

TEST_F(LayerPropertyTableTest, ANumberIsAppliedWithAllItsDigits)
{
    apply(&layers.text, "fontSize", "41.123456789");

    EXPECT_EQ(layers.text.fontSize(), 41.123456789);
    EXPECT_EQ(valueOf(&layers.text, "fontSize"), QStringLiteral("41.12"));
}

TEST_F(LayerPropertyTableTest, ACoordinateKeepsTheOther)
{
    layers.image.setPosition({0.123456789, 0.5});
    layers.image.setSize({10, 0.987654321});

    apply(&layers.image, "posY", "7");
    apply(&layers.image, "sizeW", "8");

    EXPECT_TRUE(isSame(layers.image.position(), QPointF(0.123456789, 7)));
    EXPECT_TRUE(isSame(layers.image.size(), QSizeF(8, 0.987654321)));
}

TEST_F(LayerPropertyTableTest, AnEmptyFamilyIsNone)
{
    layers.text.setFontFamily(QStringLiteral("Inter"));

    apply(&layers.text, "fontFamily", "");

    EXPECT_EQ(layers.text.fontFamily(), std::nullopt);
    EXPECT_EQ(valueOf(&layers.text, "fontFamily"), QString());
}

TEST_F(LayerPropertyTableTest, AWeightThatCannotBeReadIsNone)
{
    for (const char *value : {"", "bold", "1,5"}) {
        layers.text.setFontWeight(300);

        apply(&layers.text, "fontWeight", value);

        EXPECT_EQ(layers.text.fontWeight(), std::nullopt) << value;
    }
    EXPECT_EQ(valueOf(&layers.text, "fontWeight"), QString());
}

TEST_F(LayerPropertyTableTest, TextsAreTakenAsTheyStand)
{
    const QString text = QStringLiteral(" \t\n\"ü\u0000🎬");

    applyLayerProperty(&layers.text, QStringLiteral("text"), text);
    applyLayerProperty(&layers.score, QStringLiteral("homeTeam"), text);
    applyLayerProperty(&layers.web, QStringLiteral("name"), QString());

    EXPECT_EQ(layers.text.text(), text);
    EXPECT_EQ(layers.score.homeTeam(), text);
    EXPECT_EQ(layers.web.name(), QString());
}

TEST_F(LayerPropertyTableTest, AValueThatIsNotFiniteHasATextThatChangesNothing)
{
    for (const double opacity : {std::nan(""), -std::numeric_limits<double>::infinity()}) {
        layers.image.setOpacity(opacity);
        const QString text = valueOf(&layers.image, "opacity");
        layers.image.setOpacity(0.25);

        applyLayerProperty(&layers.image, QStringLiteral("opacity"), text);

        EXPECT_EQ(layers.image.opacity(), 0.25);
    }
}

} // namespace
} // namespace tessara
