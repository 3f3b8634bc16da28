"""Corporate and conference: white plates, ink, a line of teal; and plain ones without a plate."""
import pictures
from design import (BLACK, BODY, CAPTION, DISPLAY, HEAD, LEAD, LEFT, NAME, POSTER, RIGHT, SMALL,
                    TOP, WHITE, Office, Preset, faded, on_middle)


def lower_third():
    preset = Preset("Corporate Lower Third", "lowerThird", "corporate",
                    ["name", "company", "logo"], ["clean", "light"], transition="presetReveal",
                    duration=0.45)
    preset.box("Plate", LEFT, 792, 1040, 144, Office.paper, radius=12)
    preset.box("Divider", LEFT + 168, 820, 4, 88, Office.teal)
    preset.logo("Logo", "company_logo", pictures.logo(Office.teal), LEFT + 32, 812, 104, 104)
    preset.text("Name", "Malee Suwannarat", LEFT + 204, 859, NAME, Office.ink, weight=700,
                key="name")
    preset.text("Role", "Chief Engineer, Meridian Rail", LEFT + 204, 908, 30, Office.grey,
                weight=500, key="role")
    return preset


def pair():
    preset = Preset("Name and Title Pair", "lowerThird", "corporate",
                    ["name", "interview", "two"], ["clean", "light"], transition="presetReveal",
                    duration=0.45)
    people = (("Left", LEFT, "guest_1", "Anong Prasert", "Host, The Long Table"),
              ("Right", 1104, "guest_2", "Daniel Weber", "Author, Quiet Cities"))
    for side, left, key, name, role in people:
        mirrored = side == "Right"
        align, anchor = ("trailing", left + 680) if mirrored else ("leading", left + 40)
        preset.box(f"{side} Plate", left, 816, 720, 120, Office.paper)
        preset.box(f"{side} Accent", left + 712 if mirrored else left, 816, 8, 120, Office.teal)
        preset.text(f"{side} Name", name, anchor, 870, 44, Office.ink, weight=700, align=align,
                    key=f"{key}_name")
        preset.text(f"{side} Role", role, anchor, 915, CAPTION, Office.grey, weight=500,
                    align=align, key=f"{key}_role")
    return preset


def minimal():
    preset = Preset("Minimal Lower Third", "lowerThird", "minimal", ["name"],
                    ["no plate", "scrim"], transition="presetReveal", duration=0.6)
    scrim = pictures.fade(BLACK, [(0, 0), (0.6, 0.62), (1, 0.8)])
    preset.art("Scrim", scrim, 0, 660, 1920, 420)
    preset.stroke("Line", LEFT, 824, 4, 112, WHITE)
    preset.text("Name", "Nadia Karim", LEFT + 32, 872, HEAD, WHITE, weight=600, key="name")
    preset.text("Role", "Cellist", LEFT + 32, 926, 34, faded(WHITE, 0.9), weight=400, key="role")
    return preset


def strap():
    preset = Preset("Minimal Caption", "lowerThird", "minimal", ["caption", "place"],
                    ["no frills", "centred"], duration=0.4)
    preset.box("Plate", 520, 864, 880, 72, Office.slate[:3] + (0.86,), radius=36)
    preset.text("Caption", "Old harbour, early morning", 960, on_middle(900, BODY), BODY, WHITE,
                weight=500, align="center", key="caption")
    return preset


def title():
    preset = Preset("Full-Screen Title", "fullScreen", "corporate", ["title", "opening"],
                    ["scrim", "bold"], duration=0.6)
    scrim = pictures.fade(BLACK, [(0, 0.88), (0.35, 0.84), (1, 0.25)], horizontal=True)
    preset.art("Scrim", scrim, 0, 0, 1920, 1080)
    preset.stroke("Accent", LEFT, 344, 120, 8, Office.aqua)
    preset.text("Kicker", "ANNUAL FORUM 2026", LEFT, 312, BODY, Office.aqua, weight=700,
                key="screen_kicker")
    preset.text("Title", "Building the\nquiet city", LEFT, 504, POSTER, WHITE, weight=800,
                key="screen_title")
    preset.text("Subtitle", "Three days on streets, rail and rivers", LEFT, 784, 44,
                faded(WHITE, 0.92), weight=400, key="screen_subtitle")
    preset.logo("Logo", "event_logo", pictures.logo(WHITE), LEFT, 888, 112, 112)
    preset.text("Place", "Harbour Hall, Bangkok", LEFT + 144, 938, SMALL, WHITE, weight=600,
                key="screen_place")
    preset.text("Date", "20 to 22 November", LEFT + 144, 984, SMALL, faded(WHITE, 0.85),
                weight=400, key="screen_date")
    return preset


def chapter():
    preset = Preset("Chapter Card", "fullScreen", "minimal", ["chapter", "section"],
                    ["light", "calm"], duration=0.6)
    preset.box("Ground", 0, 0, 1920, 1080, Office.paper)
    preset.box("Line", 512, 352, 4, 376, Office.teal, kind="line")
    preset.text("Number", "02", 448, 520, 200, Office.teal, weight=300, align="trailing",
                key="chapter_number")
    preset.text("Title", "What the river\nremembers", 580, 456, 112, Office.ink, weight=700,
                key="chapter_title")
    preset.text("Summary", "Forty years of floods, told by those who stayed", 580, 712, LEAD,
                Office.grey, weight=400, key="chapter_summary")
    return preset


def agenda():
    preset = Preset("Agenda", "fullScreen", "corporate", ["agenda", "schedule", "list"],
                    ["panel", "light"], transition="presetReveal", duration=0.5)
    preset.box("Panel", 0, 0, 1120, 1080, Office.paper)
    preset.box("Panel Edge", 1120, 0, 8, 1080, Office.teal)
    preset.text("Heading", "Agenda", LEFT, 172, DISPLAY, Office.ink, weight=800,
                key="agenda_heading")
    preset.text("Subheading", "Day one, main hall", LEFT, 246, BODY, Office.grey, weight=500,
                key="agenda_subheading")
    items = (("09:00", "Registration and coffee"), ("09:30", "Opening: the quiet city"),
             ("10:15", "Rail under rivers"), ("11:30", "Panel: who pays for shade"),
             ("13:00", "Lunch on the terrace"), ("14:15", "Workshops"))
    for index, (time, item) in enumerate(items):
        upper, key = 304 + index * 116, f"agenda_{index + 1}"
        preset.box(f"Rule {index + 1}", LEFT, upper, 960, 2, Office.line, kind="line")
        baseline = on_middle(upper + 58, LEAD)
        preset.text(f"Time {index + 1}", time, LEFT, baseline, LEAD, Office.teal, weight=700,
                    family="Noto Sans", key=f"{key}_time")
        preset.text(f"Item {index + 1}", item, LEFT + 184, baseline, LEAD, Office.ink, weight=600,
                    key=f"{key}_item")
    return preset


def sponsors():
    preset = Preset("Sponsor Strip", "strip", "corporate", ["sponsor", "logo"],
                    ["full width", "light"], duration=0.5)
    preset.box("Strip", 0, 872, 1920, 152, Office.paper)
    preset.box("Strip Edge", 0, 868, 1920, 4, Office.teal)
    preset.box("Divider", LEFT + 256, 904, 2, 88, Office.line)
    preset.text("Label 1", "WITH THE", LEFT, 938, CAPTION, Office.grey, weight=600,
                key="sponsor_label_1")
    preset.text("Label 2", "SUPPORT OF", LEFT, 976, CAPTION, Office.grey, weight=600,
                key="sponsor_label_2")
    for index, bars in enumerate((3, 4, 5, 2)):
        preset.logo(f"Sponsor {index + 1}", f"sponsor_{index + 1}_logo",
                    pictures.wordmark(faded(Office.ink, 0.72), bars),
                    LEFT + 320 + index * 360, 900, 296, 96)
    return preset


def quote():
    preset = Preset("Quote", "fullScreen", "general", ["quote", "portrait"], ["serif", "calm"],
                    transition="dissolve", duration=0.7)
    preset.box("Ground", 0, 0, 1920, 1080, faded(Office.slate, 0.94))
    preset.box("Ring", 160, 316, 448, 448, Office.aqua, kind="ellipse")
    face = pictures.portrait((0.26, 0.36, 0.44, 1), (0.78, 0.84, 0.88, 1))
    preset.photo("Portrait", "quote_portrait", face, 160, 316, 448, 8)
    preset.text("Mark", "“", 720, 400, 240, Office.aqua, weight=700, family="Noto Serif")
    preset.text("Quote",
                "A city is quiet when everybody who lives in it has somewhere to be heard.",
                728, 436, 72, WHITE, weight=400, family="Noto Serif", key="quote_text",
                width=1096)
    preset.box("Rule", 728, 736, 96, 4, Office.aqua, kind="line")
    preset.text("Author", "Malee Suwannarat", 728, 808, 44, WHITE, weight=700, key="quote_author")
    preset.text("Role", "Chief Engineer, Meridian Rail", 728, 864, SMALL, faded(WHITE, 0.85),
                weight=400, key="quote_role")
    return preset


def logo_corner():
    preset = Preset("Logo Corner", "corner", "general", ["logo", "bug"], ["compact"],
                    duration=0.5)
    preset.logo("Logo", "channel_logo", pictures.logo(faded(WHITE, 0.85)), RIGHT - 112, TOP, 112,
                112)
    return preset


def presets():
    return [lower_third(), pair(), minimal(), strap(), title(), chapter(), agenda(), sponsors(),
            quote(), logo_corner()]
