#include "UI/KindLook.h"

namespace tessara {

KindLook lookOf(const CanvasLayerItem &item)
{
    const auto look = [](const char *icon, const char *typeText, bool isLiveView = false) {
        return KindLook{QString::fromLatin1(icon), QString::fromLatin1(typeText), isLiveView};
    };
    return std::visit(
        Overloaded{[&](const TextLayer *text) {
                       return text->fieldKind() == TemplateFieldKind::timer
                                  ? look("clock-4", "TIMER")
                                  : look("type", "TEXT");
                   },
                   [&](const ImageLayer *) { return look("image", "IMAGE"); },
                   [&](const ShapeLayer *) { return look("shapes", "SHAPE"); },
                   [&](const ScoreLayer *) { return look("trophy", "SCORE"); },
                   [&](const WebLayer *) { return look("globe", "WEB", true); },
                   [&](const Model3DLayer *) { return look("box", "3D MODEL", true); },
                   [&](const WindowCaptureLayer *) { return look("app-window", "WINDOW", true); },
                   [&](const CountdownLayer *) { return look("timer", "COUNTDOWN"); }},
        item);
}

} // namespace tessara
