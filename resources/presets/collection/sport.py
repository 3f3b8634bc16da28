"""Sport: coal plates that lean, amber for our own, blue and red for the sides."""
import pictures
from design import (BODY, CAPTION, DISPLAY, FIGURES, LEAD, LEFT, NAME, SMALL, TITLE, TOP, WHITE,
                    Arena, Preset, faded, on_middle, rgb)


def lower_third():
    preset = Preset("Sport Lower Third", "lowerThird", "sport", ["player", "name", "number"],
                    ["slanted", "dynamic"], transition="presetReveal", duration=0.4)
    plate = pictures.slanted(1128, 176, [
        (176, 1080, 0, 108, 32, Arena.coal), (144, 840, 112, 176, 19, Arena.iron),
        (0, 152, 0, 176, 52, Arena.amber)])
    preset.art("Plates", plate, LEFT, 760, 1128, 176)
    preset.text("Number", "10", LEFT + 102, on_middle(848, DISPLAY), DISPLAY, Arena.ink,
                weight=900, align="center", key="player_number")
    preset.text("Name", "ARTHIT CHAIYA", LEFT + 240, on_middle(814, 60), 60, WHITE, weight=800,
                key="player_name")
    preset.text("Detail", "Midfield · Harbour FC", LEFT + 206, on_middle(904, SMALL), SMALL, WHITE,
                weight=500, key="player_detail")
    return preset


def score_strip():
    preset = Preset("Score Strip", "strip", "sport", ["score", "match", "clock"], ["compact"],
                    transition="dissolve", duration=0.3)
    middle = TOP + 36
    preset.box("Clock Plate", LEFT, TOP, 160, 72, Arena.iron)
    preset.box("Teams Plate", LEFT + 160, TOP, 568, 72, Arena.coal)
    preset.box("Home Colour", LEFT + 160, TOP, 12, 72, Arena.home)
    preset.box("Away Colour", LEFT + 716, TOP, 12, 72, Arena.away)
    preset.box("Scores Plate", LEFT + 348, TOP, 192, 72, WHITE)
    preset.box("Scores Rule", LEFT + 443, TOP + 16, 2, 40, faded(Arena.ink, 0.25))
    preset.box("Period Plate", LEFT, TOP + 72, 160, 44, Arena.amber)
    preset.text("Clock", "67:12", LEFT + 80, on_middle(middle, 42, 0.714), 42, WHITE, weight=700,
                family=FIGURES, align="center", key="match_clock")
    preset.text("Period", "2ND HALF", LEFT + 80, on_middle(TOP + 94, 26), 26, Arena.ink,
                weight=800, align="center", key="match_period")
    preset.text("Home", "HBR", LEFT + 260, on_middle(middle, 44), 44, WHITE, weight=800,
                align="center", key="home_team")
    preset.text("Away", "NKN", LEFT + 628, on_middle(middle, 44), 44, WHITE, weight=800,
                align="center", key="away_team")
    preset.text("Home Score", "2", LEFT + 396, on_middle(middle, 52, 0.714), 52, Arena.ink,
                weight=700, family=FIGURES, align="center", key="home_score", kind="score")
    preset.text("Away Score", "1", LEFT + 492, on_middle(middle, 52, 0.714), 52, Arena.ink,
                weight=700, family=FIGURES, align="center", key="away_score", kind="score")
    return preset


def versus():
    preset = Preset("Versus Card", "fullScreen", "sport", ["match", "teams", "preview"],
                    ["slanted", "dynamic"], duration=0.55)
    rows = pictures.blank(1920, 1080)
    pictures.fill_convex(rows, [(0, 0), (1104, 0), (800, 1080), (0, 1080)],
                         rgb("1B4BB0", 0.97), rgb("0A1C48", 0.97))
    pictures.fill_convex(rows, [(1120, 0), (1920, 0), (1920, 1080), (816, 1080)],
                         rgb("B02433", 0.97), rgb("430B14", 0.97))
    pictures.fill_convex(rows, [(1104, 0), (1120, 0), (816, 1080), (800, 1080)], Arena.amber)
    preset.art("Sides", pictures.png(rows), 0, 0, 1920, 1080)
    mark = pictures.logo(WHITE, 360, 360)
    preset.logo("Home Logo", "home_logo", mark, 320, 232, 336, 336)
    preset.logo("Away Logo", "away_logo", mark, 1264, 232, 336, 336)
    badge = pictures.blank(240, 240)
    pictures.fill_convex(badge, [(120, 0), (240, 120), (120, 240), (0, 120)], Arena.ink)
    pictures.fill_convex(badge, [(120, 14), (226, 120), (120, 226), (14, 120)], Arena.amber)
    preset.art("Badge", pictures.png(badge), 840, 420, 240, 240)
    preset.text("Versus", "VS", 960, on_middle(540, 80), 80, Arena.ink, weight=900,
                align="center", key="versus_word")
    preset.text("Competition", "CITY CUP · SEMI-FINAL", LEFT, TOP + 44, SMALL, WHITE, weight=700,
                key="match_competition")
    preset.text("Home", "Harbour FC", 488, 696, TITLE, WHITE, weight=800, align="center",
                key="home_name")
    preset.text("Away", "North City", 1432, 696, TITLE, WHITE, weight=800, align="center",
                key="away_name")
    preset.text("Home Form", "W W D W L", 488, 760, BODY, faded(WHITE, 0.85), weight=600,
                align="center", key="home_form")
    preset.text("Away Form", "W D W W W", 1432, 760, BODY, faded(WHITE, 0.85), weight=600,
                align="center", key="away_form")
    preset.text("Kick-Off", "Kick-off 19:30", LEFT, 1004, LEAD, WHITE, weight=700,
                key="match_kick_off")
    preset.text("Venue", "Harbour Stadium", 1824, 1004, LEAD, WHITE, weight=700,
                align="trailing", key="match_venue")
    return preset


def result():
    preset = Preset("Match Result", "strip", "sport", ["score", "result", "full time"],
                    ["slanted", "wide"], transition="dissolve", duration=0.4)
    left, top = 240, 744
    plate = pictures.slanted(1440, 192, [
        (0, 596, 0, 120, 36, Arena.coal), (808, 1404, 0, 120, 36, Arena.coal),
        (596, 808, 0, 120, 36, WHITE),
        (0, 20, 0, 120, 36, Arena.home), (1384, 1404, 0, 120, 36, Arena.away),
        (579, 791, 124, 176, 16, Arena.amber)])
    preset.art("Plates", plate, left, top, 1440, 192)
    middle = top + 60
    preset.text("Home", "Harbour FC", 808, on_middle(middle, NAME), NAME, WHITE, weight=800,
                align="trailing", key="home_name")
    preset.text("Away", "North City", 1104, on_middle(middle, NAME), NAME, WHITE, weight=800,
                key="away_name")
    for name, text, x, kind in (("Home Score", "2", 902, "score"), ("Dash", "–", 960, None),
                                ("Away Score", "1", 1018, "score")):
        preset.text(name, text, x, on_middle(middle, 72, 0.714), 72, Arena.ink, weight=700,
                    family=FIGURES, align="center", kind=kind,
                    key=name.lower().replace(" ", "_") if kind else None)
    preset.text("Status", "FULL TIME", 933, on_middle(top + 150, CAPTION), CAPTION, Arena.ink,
                weight=800, align="center", key="match_period")
    return preset


def presets():
    return [lower_third(), score_strip(), versus(), result()]
