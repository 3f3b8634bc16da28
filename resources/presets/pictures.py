"""Small pictures, drawn here: flat artwork with slanted edges, soft gradients, placeholders.

A picture is a list of rows of RGBA bytes until `png` packs it. Everything is drawn with plain
arithmetic, so that the same picture is the same bytes on every run.
"""
import math
import struct
import zlib


def blank(width, height):
    return [bytearray(4 * width) for _ in range(height)]


def png(rows):
    """A whole PNG file. The row filter that packs best is used for all rows."""
    width = len(rows[0]) // 4
    header = struct.pack(">IIBBBBB", width, len(rows), 8, 6, 0, 0, 0)
    packed = min((zlib.compress(body, 9) for body in _filtered(rows)), key=len)
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"IDAT", packed)
            + _chunk(b"IEND", b""))


def _chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def _filtered(rows):
    yield b"".join(b"\0" + bytes(row) for row in rows)
    above = bytes(len(rows[0]))
    lines = []
    for row in rows:
        lines.append(b"\2" + bytes((now - up) & 255 for now, up in zip(row, above)))
        above = row
    yield b"".join(lines)


def _over(row, index, color, coverage):
    """One pixel of `color` over what is there, with straight alpha."""
    alpha = color[3] * coverage
    if alpha <= 0:
        return
    at = 4 * index
    below = row[at + 3] / 255 * (1 - alpha)
    total = alpha + below
    for channel in range(3):
        value = (color[channel] * alpha + row[at + channel] / 255 * below) / total
        row[at + channel] = round(255 * value)
    row[at + 3] = round(255 * total)


def mixed(first, second, share):
    return tuple(a + (b - a) * share for a, b in zip(first, second))


def fill_convex(rows, corners, top_color, bottom_color=None):
    """A convex polygon with smooth edges, shaded from top to bottom."""
    width = len(rows[0]) // 4
    bottom_color = bottom_color or top_color
    low = min(y for _, y in corners)
    high = max(y for _, y in corners)
    for y in range(max(0, math.floor(low)), min(len(rows), math.ceil(high))):
        spans = [span for step in range(8) if (span := _span(corners, y + (step + 0.5) / 8))]
        if not spans:
            continue
        share = min(max((y + 0.5 - low) / (high - low), 0), 1)
        _fill_row(rows[y], width, spans, mixed(top_color, bottom_color, share))


def _span(corners, y):
    crossings = []
    for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
        if min(y1, y2) <= y < max(y1, y2):
            crossings.append(x1 + (y - y1) * (x2 - x1) / (y2 - y1))
    return (min(crossings), max(crossings)) if crossings else None


def _fill_row(row, width, spans, color):
    outer = (math.floor(min(s[0] for s in spans)), math.ceil(max(s[1] for s in spans)))
    inner = (math.ceil(max(s[0] for s in spans)), math.floor(min(s[1] for s in spans)))
    x = max(outer[0], 0)
    while x < min(outer[1], width):
        if len(spans) == 8 and inner[0] <= x < inner[1]:
            end = min(inner[1], width)
            if not any(row[4 * x:4 * end]):
                row[4 * x:4 * end] = bytes(round(255 * part) for part in color) * (end - x)
            else:
                for covered in range(x, end):
                    _over(row, covered, color, 1)
            x = end
            continue
        share = sum(max(0, min(x + 1, right) - max(x, left)) for left, right in spans) / 8
        _over(row, x, color, share)
        x += 1


def fill_where(rows, distance, color):
    """All pixels whose signed distance to a form is below zero, with an edge one pixel soft."""
    for y, row in enumerate(rows):
        for x in range(len(row) // 4):
            _over(row, x, color, min(max(0.5 - distance(x + 0.5, y + 0.5), 0), 1))


def disc(x, y, radius):
    return lambda px, py: math.hypot(px - x, py - y) - radius


def ring(x, y, radius, thickness):
    return lambda px, py: abs(math.hypot(px - x, py - y) - radius) - thickness / 2


def pill(x, y, width, height, radius):
    """A rectangle with round corners, by its upper left corner."""
    def distance(px, py):
        dx = abs(px - x - width / 2) - width / 2 + radius
        dy = abs(py - y - height / 2) - height / 2 + radius
        return math.hypot(max(dx, 0), max(dy, 0)) + min(max(dx, dy), 0) - radius
    return distance


def union(*forms):
    return lambda px, py: min(form(px, py) for form in forms)


def within(form, limit):
    return lambda px, py: max(form(px, py), limit(px, py))


LEAST_SIDE = 24  # no picture layer is smaller: what is thinner needs clear room beside it


def bar(width, height, color_at):
    """A bar of the given pixels, each as `color_at` of its place from 0 to 1 along the bar.

    Clear room at its right and below makes it as large as the smallest layer.
    """
    row = bytearray()
    for index in range(width):
        row += bytes(round(255 * part) for part in color_at((index + 0.5) / width))
    row += bytes(4 * max(0, LEAST_SIDE - width))
    return png([row] * height
               + [bytearray(len(row)) for _ in range(max(0, LEAST_SIDE - height))])


def slanted(width, height, pieces):
    """Upright bands leaning to the right: (left, right, top, bottom, lean, colour) for each."""
    rows = blank(width, height)
    for left, right, top, bottom, lean, color in pieces:
        fill_convex(rows, [(left + lean, top), (right + lean, top), (right, bottom),
                           (left, bottom)], color)
    return png(rows)


def eased(stops, place):
    """Between the stops, (place from 0 to 1, value) each, with a soft start and end."""
    for (start, first), (end, second) in zip(stops, stops[1:]):
        if place <= end:
            share = (place - start) / (end - start)
            return first + (second - first) * share * share * (3 - 2 * share)
    return stops[-1][1]


def fade(color, stops, horizontal=False, length=256):
    """A strip of one colour whose alpha follows `stops`, (place from 0 to 1, alpha) each.

    It is a few pixels across, since it is stretched where it is used.
    """
    pixels = [bytes(round(255 * part) for part in color[:3])
              + bytes([round(255 * eased(stops, (index + 0.5) / length))]) for index in range(length)]
    if horizontal:
        return png([bytearray(b"".join(pixels)) for _ in range(4)])
    return png([bytearray(pixel * 4) for pixel in pixels])


def shade(top_color, bottom_color, length=256):
    """A strip from one colour to another, with their alphas, from top to bottom."""
    pixels = [mixed(top_color, bottom_color, (index + 0.5) / length) for index in range(length)]
    return png([bytearray(bytes(round(255 * part) for part in pixel) * 4) for pixel in pixels])


def logo(color, width=256, height=256):
    """Stands where a logo will: three leaning bars in a ring, nobody's mark."""
    rows = blank(width, height)
    size = min(width, height)
    x, y = width / 2, height / 2
    fill_where(rows, ring(x, y, size * 0.44, size * 0.055), color)
    for place, reach in ((-0.17, 0.13), (0, 0.23), (0.17, 0.13)):
        middle = x + place * size
        lean = 0.10 * size * reach / 0.23
        half = 0.045 * size
        fill_convex(rows, [(middle - half + lean, y - reach * size),
                           (middle + half + lean, y - reach * size),
                           (middle + half - lean, y + reach * size),
                           (middle - half - lean, y + reach * size)], color)
    return png(rows)


def wordmark(color, bars, width=448, height=160):
    """Stands where a sponsor's logo will: a mark and strokes in place of letters."""
    rows = blank(width, height)
    middle = height / 2
    mark = disc(56, middle, 40) if bars % 2 else pill(16, middle - 40, 80, 80, 16)
    fill_where(rows, mark, color)
    step = (width - 136 - 16) / bars
    strokes = [pill(128 + index * step, middle - 24, step - 16, 48, 10) for index in range(bars)]
    fill_where(rows, union(*strokes), color)
    return png(rows)


def portrait(ground, figure, size=320):
    """Stands where a face will: head and shoulders."""
    rows = blank(size, size)
    fill_where(rows, lambda x, y: -1, ground)
    head = disc(size * 0.5, size * 0.40, size * 0.17)
    body = pill(size * 0.18, size * 0.63, size * 0.64, size * 0.7, size * 0.26)
    fill_where(rows, union(head, body), figure)
    return png(rows)


def _cloud(size, x, y, scale):
    unit = size * scale
    return union(disc(x - unit * 0.24, y + unit * 0.04, unit * 0.16),
                 disc(x, y - unit * 0.06, unit * 0.23),
                 disc(x + unit * 0.24, y + unit * 0.03, unit * 0.17),
                 pill(x - unit * 0.40, y, unit * 0.81, unit * 0.20, unit * 0.10))


def sunny(sun, size=192):
    rows = blank(size, size)
    middle = size / 2
    fill_where(rows, disc(middle, middle, size * 0.21), sun)
    for ray in range(8):
        turn = ray * math.pi / 4
        c, s = math.cos(turn), math.sin(turn)
        inner, outer, half = size * 0.29, size * 0.41, size * 0.028
        fill_convex(rows, [(middle + c * inner - s * half, middle + s * inner + c * half),
                           (middle + c * outer - s * half, middle + s * outer + c * half),
                           (middle + c * outer + s * half, middle + s * outer - c * half),
                           (middle + c * inner + s * half, middle + s * inner - c * half)], sun)
    return png(rows)


def cloudy(sun, cloud, size=192):
    """The sun behind a cloud."""
    rows = blank(size, size)
    fill_where(rows, disc(size * 0.62, size * 0.36, size * 0.20), sun)
    fill_where(rows, _cloud(size, size * 0.47, size * 0.58, 0.95), cloud)
    return png(rows)


def rainy(cloud, rain, size=192):
    rows = blank(size, size)
    fill_where(rows, _cloud(size, size * 0.5, size * 0.42, 1.0), cloud)
    for place in (0.30, 0.48, 0.66):
        x, lean, half = size * place, size * 0.05, size * 0.022
        fill_convex(rows, [(x + lean - half, size * 0.70), (x + lean + half, size * 0.70),
                           (x - lean + half, size * 0.88), (x - lean - half, size * 0.88)], rain)
    return png(rows)
