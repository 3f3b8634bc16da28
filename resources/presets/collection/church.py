"""Church and ceremony: cream, wine and gold, set in a serif."""
import pictures
from design import (BLACK, BODY, CAPTION, HEAD, LEAD, LEFT, SERIF, THAI, WHITE, Nave, Preset, faded)

SERIF_THAI = "Noto Serif Thai"


def lower_third():
    preset = Preset("Church Lower Third", "lowerThird", "church", ["name", "speaker", "service"],
                    ["serif", "calm"], transition="presetReveal", duration=0.6)
    preset.box("Plate", LEFT, 788, 992, 148, Nave.cream, radius=4)
    preset.box("Upper Rule", LEFT + 136, 804, 832, 2, faded(Nave.gold, 0.7), kind="line")
    preset.box("Lower Rule", LEFT + 136, 918, 832, 2, faded(Nave.gold, 0.7), kind="line")
    preset.box("Sign Plate", LEFT, 788, 112, 148, Nave.wine, radius=4)
    preset.box("Cross Upright", LEFT + 53, 820, 6, 84, Nave.light_gold)
    preset.box("Cross Beam", LEFT + 32, 842, 48, 6, Nave.light_gold)
    preset.text("Name", "Rev. Somchai Intharat", LEFT + 136, 858, 50, Nave.ink, weight=700,
                family=SERIF, key="name")
    preset.text("Role", "Pastor, Grace Chapel by the River", LEFT + 136, 903, 30,
                Nave.soft, weight=400, family=SERIF, key="role")
    return preset


def scripture():
    preset = Preset("Scripture Verse", "lowerThird", "church", ["verse", "reading", "text"],
                    ["serif", "calm", "scrim"], duration=0.8)
    scrim = pictures.fade(BLACK, [(0, 0), (0.4, 0.78), (1, 0.9)])
    preset.art("Scrim", scrim, 0, 540, 1920, 540)
    preset.stroke("Left Rule", 688, 703, 112, 2, faded(Nave.light_gold, 0.8))
    preset.stroke("Right Rule", 1120, 703, 112, 2, faded(Nave.light_gold, 0.8))
    preset.text("Verse", "And the light shineth in darkness; and the darkness comprehended it not.",
                960, 824, HEAD + 4, WHITE, weight=400, family=SERIF, align="center",
                key="verse_text", width=1408)
    preset.text("Reference", "John 1:5", 960, 716, BODY, Nave.light_gold, weight=700, family=SERIF,
                align="center", key="verse_reference")
    return preset


def lyrics():
    preset = Preset("Song Lyrics, Thai and English", "lowerThird", "church",
                    ["song", "lyrics", "thai"], ["scrim", "calm"], language="th-en", duration=0.6)
    scrim = pictures.fade(BLACK, [(0, 0), (0.5, 0.7), (1, 0.85)])
    preset.art("Scrim", scrim, 0, 600, 1920, 480)
    preset.text("Lyrics Thai", "แสงเช้าส่องเหนือสายน้ำ\nเราร้องเพลงด้วยใจยินดี", 960, 812, HEAD,
                WHITE, weight=700, family=THAI, align="center", key="lyrics_th")
    preset.text("Lyrics English", "Morning light above the river, gladly now our voices rise", 960,
                984, LEAD, faded(WHITE, 0.88), weight=500, align="center", key="lyrics")
    return preset


def welcome():
    preset = Preset("Service Welcome", "fullScreen", "church", ["welcome", "title", "service"],
                    ["serif", "calm"], language="th-en", duration=0.9)
    ground = pictures.shade(faded(Nave.wine, 0.96), faded(Nave.night, 0.97))
    preset.art("Ground", ground, 0, 0, 1920, 1080)
    cross = pictures.blank(96, 144)
    for left, top, right, bottom in ((44, 0, 52, 144), (8, 40, 88, 48)):
        corners = [(left, top), (right, top), (right, bottom), (left, bottom)]
        pictures.fill_convex(cross, corners, Nave.light_gold)
    preset.art("Cross", pictures.png(cross), 912, 168, 96, 144)
    preset.fading_stroke("Rule", 576, 676, 768, 3, Nave.light_gold, [(0, 0), (0.5, 0.9), (1, 0)])
    preset.text("Title", "Welcome to the Service", 960, 492, 112, WHITE, weight=700, family=SERIF,
                align="center", key="service_title")
    preset.text("Title Thai", "ยินดีต้อนรับสู่การนมัสการ", 960, 612, 60, Nave.light_gold,
                weight=400, family=SERIF_THAI, align="center", key="service_title_th")
    preset.text("Theme", "Rivers of Mercy", 960, 764, 52, WHITE, weight=400, family=SERIF,
                align="center", key="service_theme")
    preset.text("Time", "Sunday 10:00 · Grace Chapel by the River", 960, 836, BODY,
                faded(WHITE, 0.85), weight=400, family=SERIF, align="center", key="service_time")
    return preset


def presets():
    return [lower_third(), scripture(), lyrics(), welcome()]
