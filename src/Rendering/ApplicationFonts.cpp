#include "Rendering/ApplicationFonts.h"

#include "Rendering/TextBlock.h"

#include <QDirIterator>
#include <QFontDatabase>

// Outside any namespace, as the macro wants it: a static library's resources are not found by
// themselves.
static void initialiseFontResource()
{
    Q_INIT_RESOURCE(fonts);
}

namespace tessara {

namespace {

// Finding and opening the faces takes longer than a frame may: now, and not with the first title.
void openFontFiles()
{
    const QString sample = QStringLiteral("Aก ا 🏆");
    for (const QFont::Weight weight : {QFont::Normal, QFont::DemiBold, QFont::Bold}) {
        (void)TextBlock(sample, systemFont(1, weight)).fill();
        (void)TextBlock(sample, monospacedDigitSystemFont(1, weight)).fill();
    }
}

} // namespace

void loadApplicationFonts()
{
    initialiseFontResource();
    QDirIterator fonts(QStringLiteral(":/fonts"));
    while (fonts.hasNext())
        QFontDatabase::addApplicationFont(fonts.next());
    openFontFiles();
}

} // namespace tessara
