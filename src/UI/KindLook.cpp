#include "UI/KindLook.h"

namespace tessara {

KindLook lookOf(const CanvasLayerItem &item)
{
    const auto look = [](const char *icon, const char *typeText, bool isLiveView = false) {
        return KindLook{QString::fromLatin1(icon), QString::fromLatin1(typeText), isLiveView};
    };
    return std::visit(
        Overloaded{[&](const TextLayer *) { return look("type", "TEXT"); },
                   [&](const ImageLayer *) { return look("image", "IMAGE"); },
                   [&](const ShapeLayer *) { return look("shapes", "SHAPE"); },
                   [&](const ScoreLayer *) { return look("trophy", "SCORE"); },
                   [&](const WebLayer *) { return look("globe", "", true); },
                   [&](const Model3DLayer *) { return look("box", "", true); },
                   [&](const WindowCaptureLayer *) { return look("app-window", "", true); },
                   [&](const CountdownLayer *) { return look("timer", "TIMER"); }},
        item);
}

} // namespace tessara
