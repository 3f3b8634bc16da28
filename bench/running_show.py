#!/usr/bin/env python3
"""What a show costs while every layer dissolves in and out without a pause.

The layers of a preset, and those that macros add, go through the virtual card in real time, without a
display. With --canvas-width the show is scaled to a larger canvas. It prints the processor time of a
tick, its share of the interval, and the ticks that were lost.
"""
import argparse
import json
import os
import pathlib
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "scripts"))
from headless import PROGRAM, Show  # noqa: E402

DESIGN_WIDTH = 1920  # of the canvas that presets are made for
MACRO_LENGTHS = ("posX", "posY", "sizeW", "sizeH", "fontSize", "cornerRadius")


def scaled_preset(preset, scale):
    def times(entry, *keys):
        for key in keys:
            value = entry.get(key)
            if isinstance(value, list):
                entry[key] = [number * scale for number in value]
            elif value is not None:
                entry[key] = value * scale

    for rect in preset.get("rects", []):
        times(rect, "position", "size", "cornerRadius")
    for image in preset.get("images", []):
        times(image, "position", "size", "maskPadding")
    for text in preset.get("entries", []):
        times(text, "position", "fontSize", "textBoxSize")
    return preset


def scaled_macros(macros, scale):
    for macro in macros:
        for step in macro["steps"]:
            if "props" not in step["kind"]:
                continue
            props = json.loads(step["kind"]["props"])
            for key in MACRO_LENGTHS:
                if key in props:
                    props[key] = f"{float(props[key]) * scale:.2f}"
            step["kind"]["props"] = json.dumps(props)
    return macros


def choose(show, manager, mode):
    found = [each for each in show.get(f"{manager}.modes") if each["name"] == mode]
    if not found:
        sys.exit(f"the {manager} device has no mode {mode}")
    show.set(f"{manager}.selectedModeID", found[0]["modeID"])
    return found[0]["frameDuration"] / found[0]["timeScale"]


def build(show, options, data):
    scale = options.canvas_width / DESIGN_WIDTH
    show.set("document.size", [options.canvas_width, options.canvas_width * 9 / 16])
    preset = scaled_preset(json.loads(pathlib.Path(options.preset).read_text()), scale)
    show.call("app.saveTemplatePreset", preset)
    show.call("app.applyPreset", preset["id"])
    if options.macros:
        macros = scaled_macros(json.loads(pathlib.Path(options.macros).read_text()), scale)
        path = pathlib.Path(data) / "bench-macros.json"
        path.write_text(json.dumps(macros))
        show.call("macros.importMacros", str(path))
        for index in range(len(macros)):
            show.call("macros.runMacroAtIndex", index)
            show.wait(2)


def part_groups(show, layers):
    """A group is cued as one: each layer is to be cued for itself."""
    for layer in layers:
        group = show.call("document.presetGroupID", layer)
        if group:
            show.call("document.ungroupPreset", group)


def processor_time(show):
    """In seconds, of all threads of the program and of its main one."""
    def seconds(stat):
        fields = stat.read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    process = pathlib.Path("/proc", str(show.process.pid))
    return seconds(process / "stat"), seconds(process / "task" / process.name / "stat")


def dissolve_in_and_out(show, layers, seconds):
    dissolve = 0.4  # s
    for layer in layers:
        show.call("document.setRunTransitionStyle", "dissolve", layer)
        show.call("document.setRunDissolveDuration", dissolve, layer)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        for layer in layers:
            show.call("document.toggleCue", layer)
        show.call("document.takeCues")
        show.wait(dissolve + 0.05)


def report(show, interval, used):
    ticks = show.call("card.frames", 0)["sent"]
    for name, seconds in zip(("all threads", "main thread"), used):
        print(f"{name}: processor time {seconds / ticks * 1000:.2f} ms a tick, "
              f"{seconds / ticks / interval * 100:.1f} % of the interval")
    print(f"ticks {ticks}, lost {show.get('app.missedTicks')}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=PROGRAM)
    parser.add_argument("--preset", required=True)
    parser.add_argument("--macros")
    parser.add_argument("--canvas-width", type=int, default=DESIGN_WIDTH)
    parser.add_argument("--mode", default="1080p50")
    parser.add_argument("--routing", default="keyAndFill")
    parser.add_argument("--seconds", type=float, default=60)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as data, Show(options.program, data) as show:
        interval = choose(show, "fill", options.mode)
        show.set("app.deckLinkOutputRouting", options.routing)
        build(show, options, data)
        layers = show.get("document.layerOrder")
        part_groups(show, layers)
        print(f"{len(layers)} layers on {options.canvas_width} px, {options.mode}, "
              f"{options.routing}")
        show.call("app.startDeckLinkOutput")
        before = processor_time(show)
        dissolve_in_and_out(show, layers, options.seconds)
        used = [after - then for after, then in zip(processor_time(show), before)]
        report(show, interval, used)
        show.call("app.stopDeckLinkOutput")


main()
