"""What check.py needs of the installed fonts: which there are, and how wide a text is in them.

Reads the tables of the font files themselves. Widths are sums of advances, with no kerning.
"""
import functools
import pathlib
import struct

FOLDERS = ("/usr/share/fonts/opentype/inter", "/usr/share/fonts/truetype/noto")
# By family: the package that installs it, and the name that its files begin with
FAMILIES = {
    "Inter": ("fonts-inter", "Inter"),
    "Noto Sans": ("fonts-noto-core", "NotoSans"),
    "Noto Serif": ("fonts-noto-core", "NotoSerif"),
    "Noto Sans Thai": ("fonts-noto-core", "NotoSansThai"),
    "Noto Serif Thai": ("fonts-noto-core", "NotoSerifThai"),
}
FALLBACKS = ("Noto Sans Thai", "Noto Sans")
# As the program steps them, each up to its limit
WEIGHTS = ((250, "ExtraLight"), (350, "Light"), (450, "Regular"), (550, "Medium"),
           (650, "SemiBold"), (750, "Bold"), (850, "ExtraBold"), (1000, "Black"))


def file_of(family, style):
    for folder in FOLDERS:
        for ending in ("otf", "ttf"):
            file = pathlib.Path(folder, f"{FAMILIES[family][1]}-{style}.{ending}")
            if file.exists():
                return file
    return None


def style_of(family, weight):
    """A named family has a bold and a regular face; the system face, None, has all."""
    if family is None:
        return next(name for limit, name in WEIGHTS if (weight or 600) < limit)
    return "Bold" if (weight or 600) >= 650 else "Regular"


@functools.cache
def advances(family, style):
    """Advance widths by character, in parts of the size."""
    data = file_of(family, style).read_bytes()
    tables = {}
    for index in range(struct.unpack_from(">H", data, 4)[0]):
        tag, _, offset, _ = struct.unpack_from(">4sIII", data, 12 + 16 * index)
        tables[tag] = offset
    unit = struct.unpack_from(">H", data, tables[b"head"] + 18)[0]
    count = struct.unpack_from(">H", data, tables[b"hhea"] + 34)[0]
    metrics = tables[b"hmtx"]

    def advance(glyph):
        return struct.unpack_from(">H", data, metrics + 4 * min(glyph, count - 1))[0] / unit

    return {code: advance(glyph) for code, glyph in _characters(data, tables[b"cmap"]).items()}


def _characters(data, cmap):
    """The map of the basic plane (format 4)."""
    for index in range(struct.unpack_from(">H", data, cmap + 2)[0]):
        at = cmap + struct.unpack_from(">HHI", data, cmap + 4 + 8 * index)[2]
        if struct.unpack_from(">H", data, at)[0] == 4:
            return _segments(data, at)
    raise ValueError("no character map of format 4")


def _segments(data, at):
    count = struct.unpack_from(">H", data, at + 6)[0] // 2
    ends, starts = at + 14, at + 16 + 2 * count
    deltas, offsets = starts + 2 * count, starts + 4 * count
    found = {}
    for index in range(count):
        end, start, delta, offset = (struct.unpack_from(">H", data, base + 2 * index)[0]
                                     for base in (ends, starts, deltas, offsets))
        for code in range(start, min(end, 0xFFFE) + 1):
            glyph = code
            if offset:
                place = offsets + 2 * index + offset + 2 * (code - start)
                glyph = struct.unpack_from(">H", data, place)[0]
            if glyph or not offset:
                found[code] = (glyph + delta) & 0xFFFF
    return found


def width(text, family, weight, size):
    """The width of one line, each character from the first face that has it."""
    faces = [advances(family or "Inter", style_of(family, weight))]
    bold = "Bold" if (weight or 600) >= 550 else "Regular"
    faces += [advances(name, bold) for name in FALLBACKS]
    return size * sum(next((face[ord(c)] for face in faces if ord(c) in face), 0.6) for c in text)
