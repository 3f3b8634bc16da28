// Saves one preset over and over, in two versions, until it is killed.
#include <QCoreApplication>

#include "Base/RealClock.h"
#include "Core/Presets/SavedVersions.h"
#include "Core/Presets/TemplatePresetStore.h"

#include <cstdio>

using namespace tessara;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 2)
        return 2;
    const RealClock clock;
    const TemplatePresetStore store(ApplicationSupport(arguments[1]), clock);
    TextPreset versions[2];
    for (int version = 0; version < 2; ++version) {
        versions[version] = {.id = QStringLiteral("a"), .name = QStringLiteral("A")};
        versions[version].images = {{.pngBase64 = pictureOf(version)}};
    }
    for (int round = 0;; ++round) {
        if (!store.save(versions[round % 2]))
            return 1;
        if (round == 0) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}
