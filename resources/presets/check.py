#!/usr/bin/env python3
"""Checks BuiltInPresets.json: the format, the margins, the fonts, and that it is what is generated.

Texts are measured with the installed fonts. Whatever a text field holds now, lines that stand one
below the other must leave room for Thai, whose marks reach higher and lower than capitals do.
"""
import base64
import json
import pathlib
import re
import struct
import sys

import fontfile
import generate
import pictures
from design import CANVAS, FAMILIES

MARGIN_X, MARGIN_Y = CANVAS[0] * 0.05, CANVAS[1] * 0.05
PACKAGES = pathlib.Path(__file__).resolve().parent.parent.parent / "scripts/install-dependencies"
MARKS_TOP, MARKS_BOTTOM = 0.02, 1.335  # reach of Thai marks, in sizes from the line's top
THAI_LINE = 1.511  # from line to line as soon as one character is Thai
LEAST_SIZE = 26  # px; smaller is not read at arm's length

NUMBER, TEXT, TRUTH, LIST = (int, float), str, bool, list
PRESET = {"id": TEXT, "name": TEXT, "templateType": TEXT, "templateCategory": TEXT,
          "templateTags": LIST, "hasLogoPlaceholder": TRUTH, "language": TEXT,
          "styleKeywords": LIST, "preferredRunTransitionStyle": ("cut", "dissolve", "presetReveal"),
          "preferredRunDuration": NUMBER, "rects": LIST, "images": LIST, "entries": LIST}
ENTRY = {"name": TEXT, "text": TEXT, "fontSize": NUMBER, "color": "color", "outlineColor": "color",
         "outlineWidth": NUMBER, "position": "pair",
         "horizontalAlignment": ("leading", "center", "trailing")}
ENTRY_MORE = {"fontFamily": TEXT, "fontWeight": NUMBER, "textBoxSize": "pair", "fieldKey": TEXT,
              "fieldKind": ("text", "score", "timer", "image")}
RECT = {"name": TEXT, "position": "pair", "size": "pair", "color": "color", "cornerRadius": NUMBER,
        "opacity": NUMBER, "kind": ("rectangle", "ellipse", "triangle", "diamond", "star", "line",
                                    "custom")}
IMAGE = {"name": TEXT, "position": "pair", "size": "pair", "opacity": NUMBER,
         "isAspectRatioLocked": TRUTH, "contentMode": ("fillCrop", "fitInside"),
         "maskShape": ("rectangle", "roundedRectangle", "circle", "hexagon", "shield",
                       "customPolygon"),
         "maskPadding": NUMBER, "pngBase64": TEXT}
IMAGE_MORE = {"cropRectNormalized": "rectangle", "placeholderKey": TEXT}


def is_number(value):
    return isinstance(value, NUMBER) and not isinstance(value, bool)


def is_pair(value):
    return isinstance(value, list) and len(value) == 2 and all(map(is_number, value))


def is_color(value):
    return (isinstance(value, dict) and sorted(value) == ["alpha", "blue", "green", "red"]
            and all(is_number(part) and 0 <= part <= 1 for part in value.values()))


def fits(value, kind):
    if kind == "pair":
        return is_pair(value)
    if kind == "rectangle":
        return isinstance(value, list) and len(value) == 2 and all(map(is_pair, value))
    if kind == "color":
        return is_color(value)
    if kind is NUMBER:
        return is_number(value)
    if isinstance(kind, tuple):
        return value in kind
    return isinstance(value, kind)


def format_faults(record, needed, more=()):
    more = dict(more)
    for key in needed.keys() - record.keys():
        yield f"lacks {key}"
    for key, value in record.items():
        kind = needed.get(key, more.get(key))
        if kind is None:
            yield f"has a key {key} that the format does not know"
        elif not fits(value, kind):
            yield f"{key} is {value!r}"


def lines_of(entry):
    """The lines as drawn, broken at the box's width where there is one."""
    def width(text):
        return fontfile.width(text, entry.get("fontFamily"), entry.get("fontWeight"),
                              entry["fontSize"])

    room = entry.get("textBoxSize", [float("inf")])[0]
    lines = []
    for paragraph in entry["text"].split("\n"):
        lines.append("")
        for word in re.findall(r"\S+\s*", paragraph):
            if width((lines[-1] + word).rstrip()) > room:
                lines.append("")
            lines[-1] += word
    return [(line, width(line.rstrip())) for line in lines]


def text_area(entry, thai=False):
    """Left, top, right and bottom of what is drawn; with `thai`, of what may come to be drawn."""
    size = entry["fontSize"]
    ascent, descent = FAMILIES[entry.get("fontFamily")]
    lines = lines_of(entry)
    left, top = entry["position"]
    share = {"leading": 0, "center": 0.5, "trailing": 1}[entry["horizontalAlignment"]]
    widest = max(width for _, width in lines)
    if "textBoxSize" in entry:
        left += (entry["textBoxSize"][0] - widest) * share
    else:
        left -= widest * share
    if thai or any("\u0e00" <= character <= "\u0e7f" for character in entry["text"]):
        return (left, top + MARKS_TOP * size, left + widest,
                top + ((len(lines) - 1) * THAI_LINE + MARKS_BOTTOM) * size)
    return (left, top + (ascent - 0.75) * size, left + widest,
            top + (len(lines) - 1) * (ascent + descent) * size + (ascent + 0.21) * size)


def box_area(record):
    (x, y), (width, height) = record["position"], record["size"]
    return x, y, x + width, y + height


def is_within_margins(area):
    return (area[0] >= MARGIN_X - 0.5 and area[1] >= MARGIN_Y - 0.5
            and area[2] <= CANVAS[0] - MARGIN_X + 0.5 and area[3] <= CANVAS[1] - MARGIN_Y + 0.5)


def is_on_canvas(area):
    return area[0] >= 0 and area[1] >= 0 and area[2] <= CANVAS[0] and area[3] <= CANVAS[1]


def bleeds(area):
    return (area[0] == 0 or area[1] == 0 or area[2] == CANVAS[0] or area[3] == CANVAS[1])


def overlap(first, second):
    return (min(first[2], second[2]) - max(first[0], second[0]) > 0.5
            and min(first[3], second[3]) - max(first[1], second[1]) > 0.5)


def covers(upper, lower):
    return (upper[0] <= lower[0] and upper[1] <= lower[1] and upper[2] >= lower[2]
            and upper[3] >= lower[3])


def picture_faults(image):
    try:
        data = base64.b64decode(image["pngBase64"], validate=True)
    except ValueError:
        yield "its picture is no base64"
        return
    if data[:8] != b"\x89PNG\r\n\x1a\n" or data[-8:-4] != b"IEND":
        yield "its picture is no PNG"
        return
    if min(struct.unpack_from(">II", data, 16)) < 1 or min(image["size"]) < 1:
        yield "its picture is empty"
    if min(image["size"]) < pictures.LEAST_SIDE:
        yield f"it is thinner than {pictures.LEAST_SIDE} units, which no layer is"


def layout_faults(preset):
    """Where things stand."""
    fields = []
    for entry in preset["entries"]:
        label = f"text {entry['name']}"
        if not is_within_margins(text_area(entry)):
            yield f"{label} leaves the margins: {[round(edge) for edge in text_area(entry)]}"
        if entry["fontSize"] < LEAST_SIZE:
            yield f"{label} is {entry['fontSize']} px small"
        if "textBoxSize" in entry and not is_within_margins(
                box_area({"position": entry["position"], "size": entry["textBoxSize"]})):
            yield f"{label} has a box that leaves the margins"
        if "fieldKey" in entry:
            takes_thai = entry.get("fieldKind") == "text" and not re.fullmatch(
                r"[0-9:°]+", entry["text"])
            fields.append((label, text_area(entry, thai=takes_thai)))
    for index, (label, area) in enumerate(fields):
        for other, other_area in fields[index + 1:]:
            if overlap(area, other_area):
                yield f"{label} and {other} collide in Thai"
    for rect in preset["rects"]:
        for image in preset["images"]:
            if "placeholderKey" not in image and covers(box_area(image), box_area(rect)):
                yield f"{rect['name']} lies below the artwork {image['name']}"
    for record in preset["rects"] + preset["images"]:
        area = box_area(record)
        if preset["preferredRunTransitionStyle"] == "presetReveal" and covers(area, (0, 0, *CANVAS)):
            yield f"{record['name']} fills the canvas and would bare an edge as it slides"
        if not is_on_canvas(area):
            yield f"{record['name']} leaves the canvas"
        if not is_within_margins(area) and ("placeholderKey" in record or not bleeds(area)):
            yield f"{record['name']} leaves the margins without reaching the edge"


def font_faults(preset):
    installed = PACKAGES.read_text(encoding="utf-8").split()
    for entry in preset["entries"]:
        family = entry.get("fontFamily")
        if family not in FAMILIES:
            yield f"text {entry['name']}: the family {family} is not one of ours"
            continue
        package = fontfile.FAMILIES[family or "Inter"][0]
        style = fontfile.style_of(family, entry.get("fontWeight"))
        if package not in installed:
            yield f"text {entry['name']}: nothing installs {package}"
        if fontfile.file_of(family or "Inter", style) is None:
            yield f"text {entry['name']}: no face {style} of {family or 'Inter'}"
        if family and entry.get("fontWeight") not in (400, 700):
            yield f"text {entry['name']}: a named family has the weights 400 and 700 only"


def field_faults(preset):
    keys = {}
    for record in preset["entries"] + preset["images"]:
        key = record.get("fieldKey", record.get("placeholderKey"))
        if key is None:
            continue
        if not re.fullmatch(r"[a-z0-9_]+", key):
            yield f"the key {key} is not in its normal form"
        if key in keys:
            yield f"{keys[key]} and {record['name']} share the key {key}"
        keys[key] = record["name"]
    for entry in preset["entries"]:
        if ("fieldKey" in entry) != ("fieldKind" in entry):
            yield f"text {entry['name']} has a key or a kind alone"
    if preset["hasLogoPlaceholder"] != any("logo" in key for key in keys):
        yield "hasLogoPlaceholder is not what its pictures say"


def preset_faults(preset):
    faults = list(format_faults(preset, PRESET))
    for list_key, needed, more in (("entries", ENTRY, ENTRY_MORE), ("rects", RECT, ()),
                                   ("images", IMAGE, IMAGE_MORE)):
        for record in preset.get(list_key, []):
            faults += [f"{list_key} {record.get('name')}: {fault}"
                       for fault in format_faults(record, needed, more)]
    if faults:
        return faults  # the rest reads these keys
    for image in preset["images"]:
        faults += [f"picture {image['name']}: {fault}" for fault in picture_faults(image)]
    faults += font_faults(preset)
    if not faults:
        faults += layout_faults(preset)
    return faults + list(field_faults(preset))


def library_faults(presets):
    for key in ("id", "name"):
        values = [preset.get(key) for preset in presets]
        for value in {value for value in values if values.count(value) > 1}:
            yield f"the {key} {value} is there twice"
    for preset in presets:
        for fault in preset_faults(preset):
            yield f"{preset.get('name')}: {fault}"


def main():
    committed = generate.TARGET.read_text(encoding="utf-8")
    presets = json.loads(committed)
    faults = list(library_faults(presets))
    if committed != generate.library_text():
        faults.append(f"{generate.TARGET.name} is not what generate.py writes")
    for fault in faults:
        print(fault)
    print(f"{len(presets)} presets, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
