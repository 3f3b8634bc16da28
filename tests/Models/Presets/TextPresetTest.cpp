#include "Models/Presets/PresetFixture.h"

#include <QMetaProperty>

#include <cmath>

namespace tessara {
namespace {

/// Every property of a full record, put back to its start, makes it another record.
template <typename Record>
void expectEveryFieldCounts(const Record &full)
{
    const QMetaObject &type = Record::staticMetaObject;
    const Record start;
    EXPECT_EQ(full, Record(full));
    for (int index = 0; index < type.propertyCount(); ++index) {
        Record other = full;
        const QVariant value = type.property(index).readOnGadget(&start);
        ASSERT_TRUE(type.property(index).writeOnGadget(&other, value));
        EXPECT_FALSE(other == full) << type.property(index).name();
    }
}

TEST(TextPresetTest, EveryFieldCountsInAComparison)
{
    expectEveryFieldCounts(fullPreset());
    expectEveryFieldCounts(fullRect());
    expectEveryFieldCounts(fullImage());
    expectEveryFieldCounts(fullText());
}

TEST(TextPresetTest, TheLastBitOfGeometryCounts)
{
    PresetRectEntry moved = fullRect();
    moved.position.setX(std::nextafter(moved.position.x(), 100));
    PresetImageEntry cropped = fullImage();
    cropped.cropRectNormalized->setWidth(std::nextafter(0.3, 1));
    TextPresetEntry widened = fullText();
    widened.textBoxSize->setWidth(std::nextafter(640, 1000));

    EXPECT_FALSE(moved == fullRect());
    EXPECT_FALSE(cropped == fullImage());
    EXPECT_FALSE(widened == fullText());
}

TEST(TextPresetTest, EveryKeyOfTheFormatIsAProperty)
{
    const auto expectProperties = [](const QJsonObject &json, const QMetaObject &type) {
        QStringList names;
        for (int index = 0; index < type.propertyCount(); ++index)
            names.append(type.property(index).name());
        names.sort();
        EXPECT_EQ(names, json.keys());
    };

    const QJsonObject json = jsonOf(fullPreset());

    expectProperties(json, TextPreset::staticMetaObject);
    expectProperties(json["rects"][0].toObject(), PresetRectEntry::staticMetaObject);
    expectProperties(json["images"][0].toObject(), PresetImageEntry::staticMetaObject);
    expectProperties(json["entries"][0].toObject(), TextPresetEntry::staticMetaObject);
}

} // namespace
} // namespace tessara
