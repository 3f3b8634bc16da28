#include "Rendering/ApplicationFonts.h"

#include <QDirIterator>
#include <QFontDatabase>

// Outside any namespace, as the macro wants it: a static library's resources are not found by themselves.
static void initialiseFontResource()
{
    Q_INIT_RESOURCE(fonts);
}

namespace tessara {

void loadApplicationFonts()
{
    initialiseFontResource();
    QDirIterator fonts(QStringLiteral(":/fonts"));
    while (fonts.hasNext())
        QFontDatabase::addApplicationFont(fonts.next());
}

} // namespace tessara
