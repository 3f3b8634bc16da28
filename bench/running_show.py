#!/usr/bin/env python3
"""How steadily frames leave while every layer of a show dissolves in and out without a pause.

The layers of a preset, and those that macros add, go through the virtual card in real time, without a
display. With --canvas-width the show is scaled to a larger canvas. It prints the intervals between
frames, what the main thread did, the memory of the program, and the ticks that were lost: when, and
whether the machine itself stood still then.
"""
import argparse
import json
import pathlib
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "scripts"))
from headless import PROGRAM, Show  # noqa: E402

COPIES = PROGRAM.with_name("tessara-bench-copies")
LOOK = PROGRAM.with_name("tessara-bench-look")
STALL_WATCH = PROGRAM.with_name("tessara-bench-stalls")
LONGEST_EFFECT = 0.03  # s, of a stall on the frames after it
COPYING = 20  # s
DESIGN_WIDTH = 1920  # of the canvas that presets are made for
MACRO_LENGTHS = ("posX", "posY", "sizeW", "sizeH", "fontSize", "cornerRadius")


class StallWatch:
    """Notes when nothing could run on a core, not even what goes before all others."""

    def __init__(self):
        self.output = tempfile.TemporaryFile("w+")  # takes all of a bad hour, as no pipe does
        self.process = subprocess.Popen([str(STALL_WATCH)], stdin=subprocess.PIPE,
                                        stdout=self.output, text=True)
        self.stalls = []

    def end(self):
        self.process.communicate()
        self.output.seek(0)
        for line in self.output:
            core, begin, end = line.split()
            self.stalls.append((int(core), float(begin), float(end)))

    def between(self, start, end):
        return [stall for stall in self.stalls if stall[1] < end and stall[2] > start]


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


def copy_frames(show, routing):
    """What the machine does with frames before anything is drawn."""
    found = [each for each in show.get("fill.modes")
             if each["modeID"] == show.get("fill.selectedModeID")]
    rate = found[0]["timeScale"] / found[0]["frameDuration"]
    outputs = 2 if routing == "keyAndFill" else 1
    copies = subprocess.run([str(COPIES), str(found[0]["width"] * found[0]["height"] * 4),
                             str(outputs), str(rate), str(COPYING)],
                            stdout=subprocess.PIPE, text=True, check=True)
    print(f"a copy of {outputs} frames at every beat, nothing else: {copies.stdout.strip()}")


def part_groups(show, layers):
    """A group is cued as one: each layer is to be cued for itself."""
    for layer in layers:
        group = show.call("document.presetGroupID", layer)
        if group:
            show.call("document.ungroupPreset", group)


def main_thread(show):
    """Seconds that the program's main thread has run, and that it has waited for a core."""
    schedule = pathlib.Path(f"/proc/{show.process.pid}/schedstat").read_text().split()
    return float(schedule[0]) / 1e9, float(schedule[1]) / 1e9


def dissolve_in_and_out(show, layers, seconds):
    dissolve = 0.4  # s
    for layer in layers:
        show.call("document.setRunTransitionStyle", "dissolve", layer)
        show.call("document.setRunDissolveDuration", dissolve, layer)
    losses = []
    lost = 0
    start = looked = time.monotonic()
    while time.monotonic() < start + seconds:
        for layer in layers:
            show.call("document.toggleCue", layer)
        show.call("document.takeCues")
        show.wait(dissolve + 0.05)
        before, lost = lost, show.get("app.missedTicks")
        since, looked = looked, time.monotonic()
        if lost > before:
            losses.append((lost - before, since, looked))
    return start, looked, losses


def report_losses(start, losses, watch):
    for count, since, until in losses:
        stops = [end - begin for _, begin, end in watch.between(since, until)]
        print(f"{count} ticks lost between {since - start:.1f} and {until - start:.1f} s: "
              + (f"a core stood still {len(stops)} times, {max(stops) * 1000:.1f} ms at most"
                 if stops else "the machine ran"))
    if watch.stalls:
        lengths = [end - begin for _, begin, end in watch.stalls]
        print(f"machine: {len(lengths)} times a core stood still for more than 4 ms, "
              f"{max(lengths) * 1000:.1f} ms at most")


def report(show, seconds, watch):
    for device in (0, 1):
        frames = show.call("card.frames", device)
        if not frames["sent"]:
            continue
        intervals = frames["intervals"]
        late = intervals["late"]
        delayed = [time for time in late if watch.between(time - LONGEST_EFFECT, time)]
        print(f"device {device}: {frames['width']} x {frames['height']} {frames['format']}, "
              f"{frames['sent']} frames, waited {frames['waited']}, "
              f"intervals p50 {intervals['p50'] * 1000:.2f} ms, p99 {intervals['p99'] * 1000:.2f} ms, "
              f"max {intervals['max'] * 1000:.2f} ms, late by more than 4 ms {len(late)} "
              f"({len(late) / frames['sent'] * 100:.3f} %), "
              f"{len(delayed)} of them while the machine stood still")
    print(f"ticks lost in {seconds:.0f} s: {show.get('app.missedTicks')}")
    status = pathlib.Path(f"/proc/{show.process.pid}/status").read_text()
    for line in status.splitlines():
        if line.startswith(("VmHWM", "VmRSS")):
            print(" ".join(line.split()))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=PROGRAM)
    parser.add_argument("--preset", required=True)
    parser.add_argument("--macros")
    parser.add_argument("--canvas-width", type=int, default=DESIGN_WIDTH)
    parser.add_argument("--mode", default="1080p50")
    parser.add_argument("--routing", default="keyAndFill")
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--watched", action="store_true",
                        help="another program looks at the frames, so that the card copies each")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as data, Show(options.program, data) as show:
        choose(show, "fill", options.mode)
        show.set("app.deckLinkOutputRouting", options.routing)
        copy_frames(show, options.routing)
        build(show, options, data)
        layers = show.get("document.layerOrder")
        part_groups(show, layers)
        print(f"{len(layers)} layers on {options.canvas_width} px, {options.mode}, "
              f"{options.routing}")
        show.call("app.startDeckLinkOutput")
        viewer = subprocess.Popen([str(LOOK), data], stdin=subprocess.PIPE) if options.watched else None
        watch = StallWatch()
        before = main_thread(show)
        start, end, losses = dissolve_in_and_out(show, layers, options.seconds)
        seconds = end - start
        ran, waited = (after - then for after, then in zip(main_thread(show), before))
        watch.end()
        if viewer:
            viewer.communicate()
        report(show, seconds, watch)
        report_losses(start, losses, watch)
        print(f"main thread: ran {ran / seconds * 100:.1f} % of the time, "
              f"waited {waited * 1000:.0f} ms for a core")
        show.call("app.stopDeckLinkOutput")


main()
