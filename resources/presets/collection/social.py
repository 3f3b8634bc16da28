"""Social and stream: white cards, comment cards, countdown and credits."""
import pictures
from design import (BODY, CAPTION, LEAD, LEFT, NAME, RIGHT, SMALL, TITLE, WHITE, Office, Preset,
                    Social, faded, on_middle, rgb)


def subscribe():
    preset = Preset("Subscribe Card", "card", "social", ["subscribe", "channel", "youtube"],
                    ["round", "light"], transition="presetReveal", duration=0.5)
    preset.box("Plate", LEFT, 752, 1000, 184, Social.card, radius=92)
    preset.box("Ring", LEFT + 12, 764, 160, 160, Social.youtube, kind="ellipse")
    preset.box("Button", LEFT + 672, 800, 288, 88, Social.youtube, radius=44)
    face = pictures.portrait((0.86, 0.88, 0.91, 1), (0.47, 0.52, 0.58, 1))
    preset.photo("Profile Image", "profile_image", face, LEFT + 12, 764, 160, 6)
    preset.text("Title", "River Stories", LEFT + 204, 836, NAME, Social.ink, weight=800,
                key="title")
    preset.text("Subtitle", "128 thousand subscribers", LEFT + 204, 882, CAPTION, Social.grey,
                weight=500, key="subtitle")
    preset.text("Button", "SUBSCRIBE", LEFT + 816, on_middle(844, SMALL), SMALL, WHITE,
                weight=800, align="center", key="button_text")
    return preset


def comment(name, key, label, color, left):
    preset = Preset(name, "card", "social", ["comment", "viewer", "live"], ["card", "light"],
                    language="th-en", transition="presetReveal", duration=0.45)
    top, width, height = 704, 832, 232
    preset.box("Plate", left, top, width, height, Social.card, radius=16)
    preset.box("Label Plate", left, top - 28, 312, 56, color, radius=28)
    preset.box("Dot", left + 24, top - 8, 16, 16, WHITE, kind="ellipse")
    preset.text("Label", label, left + 56, on_middle(top, CAPTION), CAPTION, WHITE, weight=700,
                key=f"{key}_label")
    preset.text("Comment", "Viewer: comment will appear here", left + 32, top + 92, 38,
                Social.ink, weight=600, key=key, width=width - 64)
    return preset


def handles():
    preset = Preset("Social Handles", "card", "social", ["handles", "contact"], ["stack"],
                    transition="presetReveal", duration=0.45)
    chips = (("facebook", "Facebook", "riverstories", Social.facebook),
             ("youtube", "YouTube", "@riverstories", Social.youtube),
             ("web", "Web", "riverstories.example", Office.teal))
    for index, (key, network, handle, color) in enumerate(chips):
        top = 704 + index * 80
        preset.box(f"{network} Plate", LEFT, top, 736, 72, Social.night, radius=8)
        preset.box(f"{network} Chip", LEFT, top, 200, 72, color, radius=8)
        preset.text(f"{network} Label", network, LEFT + 100, on_middle(top + 36, CAPTION), CAPTION,
                    WHITE, weight=700, align="center", key=f"{key}_label")
        preset.text(f"{network} Handle", handle, LEFT + 232, on_middle(top + 36, BODY), BODY, WHITE,
                    weight=600, key=f"{key}_handle")
    return preset


def countdown():
    preset = Preset("Countdown Frame", "fullScreen", "general", ["countdown", "starting soon"],
                    ["calm", "dark"], transition="dissolve", duration=0.7)
    ground = pictures.shade(rgb("13283A", 0.97), rgb("070D14", 0.98))
    preset.art("Ground", ground, 0, 0, 1920, 1080)
    # A countdown layer of the default size, put in the middle, stands in this window.
    frame = pictures.blank(560, 240)
    pictures.fill_where(frame, pictures.pill(0, 0, 560, 240, 24), faded(WHITE, 0.07))
    outer, inner = pictures.pill(1, 1, 558, 238, 23), pictures.pill(4, 4, 552, 232, 20)
    pictures.fill_where(frame, pictures.within(outer, lambda x, y: -inner(x, y)), Office.aqua)
    preset.art("Window", pictures.png(frame), 680, 420, 560, 240)
    preset.text("Label", "STARTING SOON", 960, 220, BODY, Office.aqua, weight=800, align="center",
                key="countdown_label")
    preset.text("Title", "Evening of River Stories", 960, 326, 80, WHITE, weight=700,
                align="center", key="countdown_title")
    preset.text("Line", "We begin at 19:30. Find your seat, and silence your phone.", 960, 768,
                LEAD, faded(WHITE, 0.92), weight=400, align="center", key="countdown_line")
    preset.logo("Logo", "event_logo", pictures.logo(WHITE), 896, 880, 128, 128)
    return preset


def credits():
    preset = Preset("Credits Card", "fullScreen", "general", ["credits", "end"], ["calm", "dark"],
                    duration=0.8)
    preset.box("Ground", 0, 0, 1920, 1080, rgb("080C12", 0.9))
    preset.text("Heading", "River Stories", 960, 192, TITLE, WHITE, weight=700, align="center",
                key="credits_heading")
    preset.fading_stroke("Rule", 640, 240, 640, 3, Office.aqua, [(0, 0), (0.5, 1), (1, 0)])
    people = (("Director", "Anong Prasert"), ("Producer", "Daniel Weber"),
              ("Camera", "Somsak Rattana"), ("Sound", "Nadia Karim"),
              ("Graphics", "Kanokwan Srisuk"), ("Editor", "Arthit Chaiya"))
    for index, (role, name) in enumerate(people):
        baseline, key = 344 + index * 96, f"credit_{index + 1}"
        preset.text(f"Role {index + 1}", role, 928, baseline, LEAD, Office.aqua, weight=400,
                    align="trailing", key=f"{key}_role")
        preset.text(f"Name {index + 1}", name, 992, baseline, LEAD, WHITE, weight=700,
                    key=f"{key}_name")
    preset.text("Copyright", "© 2026 River Stories", 960, 984, CAPTION, faded(WHITE, 0.8),
                weight=400, align="center", key="credits_copyright")
    return preset


def presets():
    return [subscribe(),
            comment("Facebook Comment Card", "facebook_comment", "Facebook Live", Social.facebook,
                    LEFT),
            comment("YouTube Comment Card", "youtube_comment", "YouTube Live", Social.youtube,
                    RIGHT - 832),
            handles(), countdown(), credits()]
