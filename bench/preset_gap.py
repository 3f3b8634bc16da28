#!/usr/bin/env python3
"""How long the output waits while a large preset is applied on air.

A preset of 40 layers with 20 MB of pictures goes through the virtual card at 1080p50: once with its
pictures decoded by the application itself, once with pictures decoded ahead. It prints the longest
gap between two frames around each application, and without any.
"""
import argparse
import base64
import pathlib
import random
import struct
import sys
import tempfile
import zlib

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "scripts"))
from headless import PROGRAM, Show  # noqa: E402

PICTURES = 20
SHAPES = 10
TEXTS = 10


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def png(side, seed):
    """Noise, so that it hardly packs: as many bytes as pixels times four."""
    noise = random.Random(seed)
    rows = b"".join(b"\0" + noise.randbytes(side * 4) for _ in range(side))
    header = struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
            + chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))


def preset(seed):
    color = {"red": 0.1, "green": 0.2, "blue": 0.4, "alpha": 0.8}
    side = 512  # px: about a megabyte each
    return {
        "id": f"gap-{seed}", "name": "Gap", "preferredRunTransitionStyle": "cut",
        "rects": [{"name": f"Shape {index}", "position": [20 + 180 * index, 900],
                   "size": [160, 100], "color": color, "cornerRadius": 12, "opacity": 1}
                  for index in range(SHAPES)],
        "images": [{"name": f"Picture {index}", "position": [30 + 186 * (index % 10),
                                                             100 + 300 * (index // 10)],
                    "size": [176, 176], "opacity": 1, "isAspectRatioLocked": True,
                    "pngBase64": base64.b64encode(png(side, seed * 100 + index)).decode()}
                   for index in range(PICTURES)],
        "entries": [{"name": f"Text {index}", "text": "Good evening", "fontSize": 30,
                     "color": color, "position": [20 + 180 * index, 1010]}
                    for index in range(TEXTS)],
    }


def longest_gap(program, seed, prepare, apply):
    """In ms, with the ticks lost; a run of its own, since the card counts from its start."""
    with tempfile.TemporaryDirectory() as data:
        show = Show(program, data)
        mode = next(mode for mode in show.get("fill.modes") if mode["name"] == "1080p50")
        show.set("fill.selectedModeID", mode["modeID"])
        made = preset(seed)
        show.call("app.saveTemplatePreset", made)
        if prepare:
            show.call("app.prefetchPresets")
            show.wait(3)
        show.call("app.startDeckLinkOutput")
        show.wait(1)
        if apply:
            # From the list itself, as the window does: no bytes come in with the request.
            show.call("app.applyPreset", made["id"])
        show.wait(1)
        frames = show.call("card.frames", 0)
        lost = show.get("app.missedTicks")
        show.call("app.stopDeckLinkOutput")
        show.end()
        return frames["intervals"]["max"] * 1000, lost


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=PROGRAM)
    options = parser.parse_args()
    size = sum(len(image["pngBase64"]) for image in preset(1)["images"]) * 3 / 4 / 1e6
    print(f"{PICTURES + SHAPES + TEXTS} layers, {size:.1f} MB of pictures, 1080p50")
    for name, prepare, apply in (("nothing applied", False, False),
                                 ("pictures decoded ahead", True, True),
                                 ("pictures decoded now", False, True)):
        gap, lost = longest_gap(options.program, 1, prepare, apply)
        print(f"{name:24} longest gap {gap:6.1f} ms, ticks lost {lost}")


main()
