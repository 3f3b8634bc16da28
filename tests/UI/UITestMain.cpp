// The tests of the windows run in real ones. `--pictures DIR` keeps what they looked like.
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include "DeckLink/DeckLinkAPIDispatch.h"
#include "UI/WindowEngine.h"
#include "UI/WindowFixture.h"

#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(TessaraPlugin)

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    tessara::preparePlatform();
    const QGuiApplication application(argc, argv);
    tessara::useDeckLinkLibrary(QStringLiteral(VIRTUAL_CARD_LIBRARY));
    const QStringList arguments = QGuiApplication::arguments();
    if (const qsizetype at = arguments.indexOf(QStringLiteral("--pictures")); at > 0)
        tessara::WindowFixture::keepPicturesIn(arguments.value(at + 1));
    return RUN_ALL_TESTS();
}
