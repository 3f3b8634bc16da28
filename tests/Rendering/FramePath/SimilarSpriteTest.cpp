#include "Rendering/FramePath/Dice.h"
#include "Rendering/FramePath/SpriteFixture.h"

namespace tessara {
namespace {

constexpr QRect area(0, 0, 320, 240);

/// Letters of straight lines, as a long title is made of them.
class SimilarSpriteTest : public testing::Test
{
protected:
    using Letter = PlacedShape;

    Letter letter(int line)
    {
        QPolygonF corners;
        for (int corner = 0; corner < 7; ++corner)
            corners << QPointF(dice.between(0, 14), dice.between(0, 22));
        corners << corners.first();
        return letter(corners, {dice.between(-20, 330), 24 * line + dice.between(-4, 4)});
    }
    static Letter letter(const QPolygonF &corners, QPointF position)
    {
        QPainterPath path;
        path.addPolygon(corners);
        return {OutlineShape::of(path), position};
    }
    std::vector<Letter> text()
    {
        std::vector<Letter> letters;
        for (int line = 0; line < 10; ++line) {
            for (int index = 0; index < 8; ++index)
                letters.push_back(letter(line));
        }
        return letters;
    }
    Primitive outline(const std::vector<Letter> &letters, QPointF place = {})
    {
        const Outline outline = outlineOf(letters);
        Primitive primitive = fillOf(outline.path, place);
        std::get<FilledPath>(primitive.what).parts = outline.parts;
        return primitive;
    }
    /// Another letter somewhere, one more, or some less.
    void edit(std::vector<Letter> &letters)
    {
        const int at = dice.below(int(letters.size()));
        const int line = int(letters[std::size_t(at)].position.y() / 24);
        switch (dice.below(4)) {
        case 0:
            letters.insert(letters.begin() + at, letter(line));
            break;
        case 1:
            if (letters.size() > 60)
                letters.erase(letters.begin() + at,
                              letters.begin() + std::min(at + 8, int(letters.size())));
            break;
        default:
            letters[std::size_t(at)] = letter(line);
        }
    }

    Dice dice{4711};
};

std::shared_ptr<const Sprite> madeOf(const Primitive &primitive, const Sprite *similar = nullptr,
                                     const QRect &pixels = area)
{
    return Sprite::make(primitive, QTransform(), pixels, similar);
}

TEST_F(SimilarSpriteTest, AnEditGivesWhatIsDrawnFromNothing)
{
    std::vector<Letter> letters = text();
    std::shared_ptr<const Sprite> sprite = madeOf(outline(letters));
    for (int round = 0; round < 300; ++round) {
        edit(letters);
        const Primitive edited = outline(letters);

        sprite = madeOf(edited, sprite.get());

        ASSERT_EQ(unpacked(*sprite, area), painted(edited, area)) << "round " << round;
    }
}

// What is kept of it may reach further to the right than there is anything.
TEST_F(SimilarSpriteTest, RowsOutsideTheEditAreTakenOver)
{
    std::vector<Letter> letters = text();
    letters[70] = letter(QPolygonF({{1, 0}, {310, 10}, {300, 20}, {1, 0}}), {0, 200});
    const auto sprite = madeOf(outline(letters));
    letters.erase(letters.begin() + 60, letters.end());
    const auto shorter = madeOf(outline(letters), sprite.get());

    EXPECT_EQ(shorter->bounds().left(), sprite->bounds().left());
    EXPECT_EQ(shorter->bounds().right(), sprite->bounds().right());
    EXPECT_LT(shorter->bounds().bottom(), sprite->bounds().bottom());
    EXPECT_EQ(unpacked(*shorter, area), painted(outline(letters), area));
}

TEST_F(SimilarSpriteTest, OneFromAnotherPlaceOrAnotherPartIsOfNoUse)
{
    const std::vector<Letter> letters = text();
    const auto sprite = madeOf(outline(letters));
    const Primitive moved = outline(letters, {0.5, 20});
    const QRect part(40, 50, 100, 120);

    EXPECT_EQ(unpacked(*madeOf(moved, sprite.get()), area), painted(moved, area));
    EXPECT_EQ(unpacked(*madeOf(outline(letters), sprite.get(), part), part),
              painted(outline(letters), part));
}

TEST_F(SimilarSpriteTest, AnythingMayComeAfterAnything)
{
    const Primitive picture = pictureOf(gradient({64, 40}), {10, 20, 64, 40});
    const Primitive nothing = fillOf({});
    const Primitive circle = fillOf(ellipse({10, 10, 200, 100}));
    const Primitive title = outline(text());
    const Primitive beyond = outline(text(), {0, 5000});
    for (const Primitive &first : {picture, nothing, circle, title, beyond}) {
        const auto sprite = madeOf(first);
        for (const Primitive &second : {picture, nothing, circle, title, beyond})
            EXPECT_EQ(unpacked(*madeOf(second, sprite.get()), area), painted(second, area));
    }
}

} // namespace
} // namespace tessara
