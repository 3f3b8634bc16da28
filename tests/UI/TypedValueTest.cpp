#include "UI/WindowFixture.h"

#include <algorithm>

namespace tessara {
namespace {

/// What stands in a field of the inspector while something else changes.
class TypedValueTest : public WindowFixture
{
protected:
    TextLayer *text(const QUuid &id) const
    {
        return qobject_cast<TextLayer *>(document->layer(id));
    }
    ScoreLayer *score() const { return document->layersOf<ScoreLayer>().first(); }
    QQuickItem *sizeField() const
    {
        const QList<QQuickItem *> items = visibleItems();
        const auto found = std::find_if(items.begin(), items.end(), [](const QQuickItem *each) {
            return each->inherits("QQuickTextField")
                   && each->property("unit") == QStringLiteral("px");
        });
        return found == items.end() ? nullptr : *found;
    }
    void typeInto(QQuickItem *field, const QString &typed)
    {
        ASSERT_TRUE(field);
        click(field);
        type(typed);
    }
    void addScoreBar()
    {
        workspace->addScoreBar();
        settle();
    }

    const QUuid lower = addTitleNamed(QStringLiteral("lower"));
    const QUuid upper = addTitleNamed(QStringLiteral("upper"));
};

TEST_F(TypedValueTest, ASizeGoesToTheLayerThatItWasTypedFor)
{
    settle();
    typeInto(sizeField(), QStringLiteral("200"));

    click(inRow(QStringLiteral("lower"), QStringLiteral("entryName")));

    EXPECT_EQ(text(lower)->fontSize(), 98);
    EXPECT_EQ(text(upper)->fontSize(), 200);
    EXPECT_EQ(sizeField()->property("text").toString(), QStringLiteral("98"));
}

TEST_F(TypedValueTest, ANameGoesToTheLayerThatItWasTypedFor)
{
    settle();
    typeInto(item(QStringLiteral("nameField")), QStringLiteral("Headline"));

    click(inRow(QStringLiteral("lower"), QStringLiteral("entryName")));

    EXPECT_EQ(text(lower)->name(), QStringLiteral("lower"));
    EXPECT_EQ(text(upper)->name(), QStringLiteral("Headline"));
}

TEST_F(TypedValueTest, ASizeGoesWithALayerThatIsRemoved)
{
    settle();
    typeInto(sizeField(), QStringLiteral("200"));

    document->removeLayer(upper);
    settle();
    click(item(QStringLiteral("canvas")));
    EXPECT_EQ(text(lower)->fontSize(), 98);

    app->undoStack()->undo();
    ASSERT_TRUE(text(upper));
    EXPECT_EQ(text(upper)->fontSize(), 98);
}

TEST_F(TypedValueTest, UndoIsSeenInTheFieldThatIsTypedIn)
{
    addScoreBar();
    QQuickItem *field = item(QStringLiteral("homeTeam"));
    const QString before = score()->homeTeam();
    typeInto(field, QStringLiteral("Lions"));
    ASSERT_EQ(score()->homeTeam(), QStringLiteral("Lions"));

    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_EQ(score()->homeTeam(), before);
    EXPECT_EQ(field->property("text").toString(), before);

    type(QStringLiteral("!"));
    EXPECT_EQ(score()->homeTeam(), before + QLatin1Char('!'));
}

TEST_F(TypedValueTest, TheCursorStaysWhereItIsInAFieldThatShowsAtOnce)
{
    addScoreBar();
    QQuickItem *field = item(QStringLiteral("homeTeam"));
    typeInto(field, QStringLiteral("Lons"));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    press(Qt::Key_Left);

    type(QStringLiteral("i"));

    EXPECT_EQ(score()->homeTeam(), QStringLiteral("Lions"));
    EXPECT_EQ(field->property("cursorPosition").toInt(), 2);
}

} // namespace
} // namespace tessara
