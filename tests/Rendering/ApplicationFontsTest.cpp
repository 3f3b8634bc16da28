#include "Rendering/ApplicationFonts.h"

#include "Models/FontResolution.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace tessara {
namespace {

TEST(ApplicationFontsTest, AFamilyAndItsFacesAreFoundFromWhenTheyAreLoadedUntilTheyGo)
{
    const auto isThere = [](const char *name) {
        return familyFont(QLatin1String(name), 40, QFont::Normal).has_value();
    };
    const auto isFound = [&] {
        EXPECT_EQ(isThere("InterTabular-SemiBold"), isThere("Inter Tabular"));
        return isThere("Inter Tabular");
    };
    loadApplicationFonts();
    EXPECT_TRUE(isFound());

    QFontDatabase::removeAllApplicationFonts();
    EXPECT_FALSE(isFound());

    loadApplicationFonts();
    EXPECT_TRUE(isFound());
}

} // namespace
} // namespace tessara
