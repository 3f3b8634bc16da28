#include "UI/WindowFixture.h"

#include "DeckLink/VirtualCard.h"

#include <QImage>

namespace tessara {
namespace {

/// A choice that waits for its answer ends when what it is for has changed.
class OpenPopupTest : public WindowFixture
{
};

TEST_F(OpenPopupTest, AChoiceClosesWhenAnotherLayerIsEdited)
{
    TextLayer *other = document->addTextLayer();
    TextLayer *title = document->addTextLayer();
    settle();
    click(item(QStringLiteral("fontWeight")));
    ASSERT_TRUE(itemWithText(QStringLiteral("Heavy")));

    title->setFontSize(120); // a change of the same layer closes nothing
    settle();
    ASSERT_TRUE(itemWithText(QStringLiteral("Heavy")));

    document->setSelectedLayerIDs({other->id()});
    settle();
    EXPECT_FALSE(itemWithText(QStringLiteral("Heavy")));
}

TEST_F(OpenPopupTest, TheKeysAreThoseOfTheMenuThatIsOpen)
{
    TextLayer *title = document->addTextLayer();
    title->setFontWeight(700);
    settle();
    QQuickItem *name = item(QStringLiteral("nameField"));
    click(name);
    click(item(QStringLiteral("fontWeight")));

    press(Qt::Key_Down);
    press(Qt::Key_Return);

    EXPECT_EQ(title->fontWeight(), 800.0);
    EXPECT_TRUE(name->hasActiveFocus());
}

TEST_F(OpenPopupTest, NoOtherChoiceIsMadeBesideAnOpenMenu)
{
    click(item(QStringLiteral("outputButton")));
    OutputModel &output = *workspace->output();
    ASSERT_EQ(output.fillDevice(), 0);
    item(QStringLiteral("fillDevice"))->forceActiveFocus(Qt::TabFocusReason);
    click(item(QStringLiteral("routing")));

    press(Qt::Key_Down);
    press(Qt::Key_Escape);

    EXPECT_EQ(output.fillDevice(), 0);
    EXPECT_EQ(output.routing(), 0);
    EXPECT_TRUE(item(QStringLiteral("fillDevice"))->hasActiveFocus());
}

TEST_F(OpenPopupTest, TheChoiceOfADeviceClosesWhenTheDevicesChange)
{
    click(item(QStringLiteral("outputButton")));
    click(item(QStringLiteral("fillDevice")));
    ASSERT_TRUE(itemWithText(QStringLiteral("Virtual Card 2")));

    QObject *picker = item(QStringLiteral("fillDevice"));
    picker->setProperty("choices", QStringList{QStringLiteral("Virtual Card 2")});
    settle();

    EXPECT_FALSE(picker->property("popup").value<QObject *>()->property("visible").toBool());
}

TEST_F(OpenPopupTest, TheDialogForAPictureClosesWhenItsFieldGoes)
{
    const QString file = data.filePath(QStringLiteral("logo.png"));
    QImage picture(40, 40, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    ASSERT_TRUE(picture.save(file));
    addTitleNamed(QStringLiteral("title"));
    ImageLayer *layer = *document->addImageLayer(QUrl::fromLocalFile(file));
    layer->setPlaceholderKey(QStringLiteral("logo"));
    settle();
    click(item(QStringLiteral("field_logo_choose")));
    const auto *dialog = window->findChild<QObject *>(QStringLiteral("fieldPictureDialog"));
    ASSERT_TRUE(until([&] { return dialog->property("visible").toBool(); }));

    document->removeLayer(layer->id());
    settle();

    EXPECT_FALSE(dialog->property("visible").toBool());
}

} // namespace
} // namespace tessara
