"""The design language: canvas, type, palettes, and the builder that all presets are made with.

Text is set by its baseline, as a designer thinks of it; the format wants the line's upper edge.
"""
import base64
import uuid

import pictures

CANVAS = (1920, 1080)
LEFT, RIGHT = 96, 1824  # the 5 % margins, where texts and logos end
TOP, BOTTOM = 56, 1024
LOWER = 936  # where lower thirds end: the ticker begins below

# The type scale, px
CAPTION, SMALL, BODY, LEAD, NAME, HEAD, TITLE, DISPLAY, POSTER = 28, 32, 36, 40, 48, 56, 72, 96, 124

# Families by their ascent and descent in parts of the size. None is the system face, Inter, which
# alone has all weights; a named family has regular and bold only.
FAMILIES = {
    None: (0.96875, 0.2415),
    "Inter": (0.96875, 0.2415),
    "Noto Sans": (1.069, 0.293),
    "Noto Serif": (1.069, 0.293),
    "Noto Sans Thai": (1.061, 0.45),
    "Noto Serif Thai": (1.064, 0.534),
}
THAI = "Noto Sans Thai"
SERIF = "Noto Serif"
FIGURES = "Noto Sans"  # its digits are of one width: for scores and running times

NAMESPACE = uuid.UUID("6d0b7d53-7b0e-5c0f-9f0c-1a8f7a5c2e41")


def rgb(code, alpha=1.0):
    return tuple(int(code[index:index + 2], 16) / 255 for index in (0, 2, 4)) + (alpha,)


def faded(color, alpha):
    return color[:3] + (alpha,)


WHITE = rgb("FFFFFF")
BLACK = rgb("000000")


class News:
    navy = rgb("0A1428", 0.94)
    deep = rgb("050B18", 0.94)
    steel = rgb("1B2B4B", 0.96)
    paper = rgb("FFFFFF", 0.97)
    ink = rgb("0A1428")
    red = rgb("C8202F")
    mist = rgb("C3CEE2")


class Arena:
    coal = rgb("101318", 0.95)
    iron = rgb("262C36", 0.96)
    amber = rgb("FFB81C")
    ink = rgb("101318")
    home = rgb("1F55C4")
    away = rgb("C42A38")
    haze = rgb("C9CED8")


class Nave:
    cream = rgb("F8F4EA", 0.97)
    ink = rgb("2C2430")
    soft = rgb("5D5263")
    gold = rgb("A87F35")
    light_gold = rgb("E3C583")
    wine = rgb("3B1526")
    night = rgb("1A0E18")


class Office:
    paper = rgb("FFFFFF", 0.96)
    fog = rgb("EAEFF2")
    ink = rgb("17202C")
    grey = rgb("4B5866")
    teal = rgb("00727F")
    aqua = rgb("5FD0D6")
    slate = rgb("101B27")
    line = rgb("17202C", 0.14)


class Social:
    card = rgb("FFFFFF", 0.97)
    ink = rgb("14181F")
    grey = rgb("535C69")
    facebook = rgb("1663D6")
    youtube = rgb("CC1414")
    night = rgb("12161D", 0.93)


def line_height(family, size):
    ascent, descent = FAMILIES[family]
    return (ascent + descent) * size


def _number(value):
    rounded = round(float(value), 4)
    return int(rounded) if rounded == int(rounded) else rounded


def _pair(first, second):
    return [_number(first), _number(second)]


def _color(color):
    return dict(zip(("red", "green", "blue", "alpha"), (_number(part) for part in color)))


class Preset:
    """One preset in the making. Within each kind, what is added later lies above.

    Between the kinds the order is fixed: shapes, artwork, replaceable pictures, texts.
    """

    def __init__(self, name, kind, category, tags=(), keywords=(), language="en",
                 transition="dissolve", duration=0.4):
        self.record = {
            "id": str(uuid.uuid5(NAMESPACE, name)).upper(),
            "name": name,
            "templateType": kind,
            "templateCategory": category,
            "templateTags": list(tags),
            "styleKeywords": list(keywords),
            "language": language,
            "hasLogoPlaceholder": False,
            "preferredRunTransitionStyle": transition,
            "preferredRunDuration": duration,
            "rects": [],
            "images": [],
            "entries": [],
        }

    def box(self, name, x, y, width, height, color, radius=0, kind="rectangle"):
        """A shape. The colour's alpha says how much of the video shows through."""
        self.record["rects"].append({
            "name": name, "kind": kind, "position": _pair(x, y), "size": _pair(width, height),
            "color": _color(faded(color, 1)), "opacity": _number(color[3]),
            "cornerRadius": _number(radius)})

    def art(self, name, png, x, y, width, height, opacity=1.0):
        """Fixed artwork, stretched to its place."""
        self._image(name, png, x, y, width, height, opacity=opacity, isAspectRatioLocked=False,
                    cropRectNormalized=[[0, 0], [1, 1]], contentMode="fillCrop",
                    maskShape="rectangle", maskPadding=0)

    def stroke(self, name, x, y, width, height, color):
        """A bar of one colour that lies above the artwork, where a shape would lie below."""
        self.fading_stroke(name, x, y, width, height, color, [(0, 1), (1, 1)])

    def fading_stroke(self, name, x, y, width, height, color, stops):
        """A stroke whose alpha follows `stops` from left to right, (place from 0 to 1, share) each."""
        png = pictures.bar(width, height,
                           lambda place: (*color[:3], color[3] * pictures.eased(stops, place)))
        self.art(name, png, x, y, max(width, pictures.LEAST_SIDE),
                 max(height, pictures.LEAST_SIDE))

    def logo(self, name, key, png, x, y, width, height, mask="rectangle"):
        """A logo that the operator replaces; it is shown whole."""
        self.record["hasLogoPlaceholder"] = True
        self._image(name, png, x, y, width, height, placeholderKey=key, contentMode="fitInside",
                    maskShape=mask, maskPadding=0)

    def icon(self, name, key, png, x, y, size):
        """A symbol that the operator replaces."""
        self._image(name, png, x, y, size, size, placeholderKey=key, contentMode="fitInside",
                    maskShape="rectangle", maskPadding=0)

    def photo(self, name, key, png, x, y, size, padding):
        """A round photo that the operator replaces; the padding leaves a ring of what is below."""
        self._image(name, png, x, y, size, size, placeholderKey=key, contentMode="fillCrop",
                    maskShape="circle", maskPadding=_number(padding))

    def _image(self, name, png, x, y, width, height, opacity=1.0, **more):
        self.record["images"].append({
            "name": name, "position": _pair(x, y), "size": _pair(width, height),
            "opacity": _number(opacity), "isAspectRatioLocked": True,
            "pngBase64": base64.b64encode(png).decode("ascii"), **more})

    def text(self, name, text, x, baseline, size, color, weight=None, family=None,
             align="leading", key=None, kind="text", width=None):
        """A text that stands on `baseline`; with `width` it is broken into lines from there down.

        The box of a broken text is one line high: the renderer centres by the height of one line,
        so the first line stays where it is however many follow.
        """
        ascent, _ = FAMILIES[family]
        upper = baseline - ascent * size
        left = x
        entry = {"name": name, "text": text, "fontSize": _number(size), "color": _color(color),
                 "outlineColor": _color(BLACK), "outlineWidth": 0, "horizontalAlignment": align}
        if width is not None:
            left = x - width * {"leading": 0, "center": 0.5, "trailing": 1}[align]
            entry["textBoxSize"] = _pair(width, int(line_height(family, size)))
        entry["position"] = [_number(round(left, 1)), _number(round(upper, 1))]
        if weight is not None:
            entry["fontWeight"] = weight
        if family is not None:
            entry["fontFamily"] = family
        if key is not None:
            entry["fieldKey"] = key
            entry["fieldKind"] = kind
        self.record["entries"].append(entry)


def on_middle(middle, size, cap=0.727):
    """The baseline that puts the capitals of this size around `middle`."""
    return middle + cap * size / 2
