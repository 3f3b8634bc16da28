#include "UI/WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tessara {
namespace {

class LongTextWindowTest : public WindowFixture
{
protected:
    static QString repeated(const QString &piece)
    {
        return piece.repeated(1'000'000 / piece.size());
    }

    TextLayer *title() const { return document->layersOf<TextLayer>().first(); }

    QQuickItem *area() const
    {
        return item(QStringLiteral("textContent"))->findChild<QQuickItem *>(QStringLiteral("area"));
    }

    void pasteIntoTitle(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        click(area());
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_V, Qt::ControlModifier);
    }
};

TEST_F(LongTextWindowTest, AMegabyteIsPastedIntoATitleAndItsFieldShowsTheBeginning)
{
    const QString word = repeated(QStringLiteral("severeweather"));
    addTitle();
    EXPECT_FALSE(item(QStringLiteral("tooLongNote"))->isVisible());

    pasteIntoTitle(word);

    EXPECT_EQ(title()->text(), word);
    ASSERT_TRUE(until([&] { return item(QStringLiteral("tooLongNote"))->isVisible(); }));
    EXPECT_TRUE(item(QStringLiteral("textNote"))->isVisible());
    EXPECT_LT(area()->property("text").toString().size(), 1'100);
    keepPicture(QStringLiteral("long-text"));
    click(area());
    type(QStringLiteral("x"));
    EXPECT_EQ(title()->text(), word);
}

TEST_F(LongTextWindowTest, WhatWasPastedStandsWhereItWasPasted)
{
    const QString lines = repeated(QStringLiteral("The coast road is closed\n"));
    addTitle();
    pasteIntoTitle(QStringLiteral("ab"));
    ASSERT_EQ(title()->text(), QStringLiteral("ab"));
    press(Qt::Key_Left);
    QGuiApplication::clipboard()->setText(lines);

    press(Qt::Key_V, Qt::ControlModifier);

    EXPECT_EQ(title()->text(), QLatin1Char('a') + lines + QLatin1Char('b'));
}

TEST_F(LongTextWindowTest, ALongTextIsClearedAndThenTypedAsAnyOther)
{
    addTitle();
    pasteIntoTitle(repeated(QStringLiteral("severeweather")));
    ASSERT_TRUE(until([&] { return item(QStringLiteral("clearLongText"))->isVisible(); }));

    click(item(QStringLiteral("clearLongText")));
    EXPECT_EQ(title()->text(), QString());
    click(area());
    type(QStringLiteral("Rain"));

    EXPECT_EQ(title()->text(), QStringLiteral("Rain"));
    EXPECT_FALSE(item(QStringLiteral("tooLongNote"))->isVisible());
}

TEST_F(LongTextWindowTest, ALongNameIsShownInPartAndStaysAsItIs)
{
    const QString name = repeated(QStringLiteral("Headline"));
    addTitle();
    title()->setName(name);
    ASSERT_TRUE(until([&] {
        return item(QStringLiteral("entryName"))->property("text").toString().size() == 301;
    }));

    click(item(QStringLiteral("nameField")));
    click(area());

    EXPECT_EQ(title()->name(), name);
    EXPECT_EQ(item(QStringLiteral("nameField"))->property("text").toString().size(), 2'000);
}

} // namespace
} // namespace tessara
