#!/usr/bin/env python3
"""Plays the presets into tessara-headless, and leaves a picture of each over grey and over video.

With --thai every field shows Thai with high and low marks instead, to see that nothing collides.
Sheets of nine pictures each are made as well, by the program itself.
"""
import argparse
import json
import pathlib
import sys

import pictures

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent.parent / "scripts"))
from headless import PROGRAM, ROOT, Show  # noqa: E402

THAI = "ผู้ซื้อที่ญี่ปุ่นฟ้าป่ากี่ปี่ปู่ใหญ่กุ้งกลั่นน้ำมันที่ตั้งใจรู้จักเพื่อนบ้าน"
GREY = {"red": 0.5, "green": 0.5, "blue": 0.5, "alpha": 1}


def render(show, path):
    show.call("frame.render", str(path), GREY)


def add(show, preset, thai):
    if thai:
        for entry in preset["entries"]:
            if "fieldKey" in entry and entry["fieldKind"] == "text":
                lines = entry["text"].split("\n")
                entry["text"] = "\n".join((THAI * 3)[:len(line)] for line in lines)
    show.call("document.addTextPreset", preset)


def video_like(path):
    """Soft lights and darks such as a camera sees, bright where a text is hardest to read."""
    width, height = 480, 270
    spots = ((90, 60, 120, (1.0, 0.93, 0.8)), (360, 40, 140, (0.55, 0.75, 1.0)),
             (250, 150, 110, (0.9, 0.62, 0.42)), (60, 240, 100, (0.95, 0.97, 0.9)),
             (430, 230, 110, (0.2, 0.42, 0.3)), (210, 250, 70, (1.0, 0.88, 0.5)))
    rows = []
    for y in range(height):
        row = bytearray()
        for x in range(width):
            color, total = [0.16, 0.2, 0.24], 1.0
            for spot_x, spot_y, radius, light in spots:
                share = 3 * max(0, 1 - ((x - spot_x) ** 2 + (y - spot_y) ** 2) / radius ** 2) ** 2
                color = [now + share * part for now, part in zip(color, light)]
                total += share
            row += bytes(round(255 * part / total) for part in color) + b"\xff"
        rows.append(row)
    path.write_bytes(pictures.png(rows))


def sheets(program_path, target, files):
    for number, start in enumerate(range(0, len(files), 9), 1):
        with Show(program_path, target / "data", clock="manual") as show:
            for index, file in enumerate(files[start:start + 9]):
                show.layer("document.addImageLayer", str(file), isAspectRatioLocked=False,
                              position=[4 + index % 3 * 640, 4 + index // 3 * 360],
                              size=[632, 352])
            render(show, target / f"sheet-{number}.png")


def contact_sheet(program_path, target, files, picture):
    """All of them in one picture, five in a row."""
    rows = -(-len(files) // 5)
    with Show(program_path, target / "data", clock="manual") as show:
        show.set("document.size", [5 * 384, rows * 216])
        for index, file in enumerate(files):
            show.layer("document.addImageLayer", str(file), isAspectRatioLocked=False,
                          position=[3 + index % 5 * 384, 3 + index // 5 * 216], size=[378, 210])
        render(show, picture)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=PROGRAM)
    parser.add_argument("--pictures", type=pathlib.Path, default=ROOT / "build/presets")
    parser.add_argument("--thai", action="store_true", help="Thai in every text field")
    parser.add_argument("--contact-sheet", type=pathlib.Path, help="all in one picture, besides")
    parser.add_argument("only", nargs="*", help="presets whose names contain one of these")
    options = parser.parse_args()
    target = options.pictures
    target.mkdir(parents=True, exist_ok=True)
    backdrop = target / "backdrop.png"
    if not backdrop.exists():
        video_like(backdrop)
    made = {"grey": [], "video": []}
    for preset in json.loads((HERE / "BuiltInPresets.json").read_text(encoding="utf-8")):
        name = preset["name"]
        if options.only and not any(part.lower() in name.lower() for part in options.only):
            continue
        for ground, files in made.items():
            with Show(options.program, target / "data", clock="manual") as show:
                if ground == "video":
                    show.layer("document.addImageLayer", str(backdrop), position=[0, 0],
                                  size=[1920, 1080], contentMode="fillCrop")
                add(show, preset, options.thai)
                if "countdown" in preset["templateTags"]:
                    show.layer("document.addCountdownLayer")
                slug = name.lower().replace(",", "").replace(" ", "-")
                files.append(target / f"{slug}-{ground}.png")
                render(show, files[-1])
    for ground, files in made.items():
        (target / ground).mkdir(exist_ok=True)
        sheets(options.program, target / ground, files)
    if options.contact_sheet:
        contact_sheet(options.program, target, made["video"], options.contact_sheet)
    print(f"Pictures: {target}")


if __name__ == "__main__":
    main()
