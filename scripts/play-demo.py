#!/usr/bin/env python3
"""Plays the demo show through the virtual card, in real time and without a display.

A picture dissolves in, a lower third reveals itself as a group and leaves by its auto-out, and a
countdown and a score bar are cued and taken together. It prints how the frames went out and leaves
pictures of the air.
"""
import argparse
import pathlib
import sys

from headless import PROGRAM, ROOT, Show

LAP = 8.0  # s, one run of the show


def memory(show):
    """Resident, in MB."""
    status = pathlib.Path(f"/proc/{show.process.pid}/status").read_text()
    line = next(line for line in status.splitlines() if line.startswith("VmRSS"))
    return int(line.split()[1]) / 1024


def build(show):
    picture = show.layer("document.addImageLayer", str(ROOT / "resources/demo/skyline.svg"),
                         position=[110, 110], size=[960, 540], maskShape="roundedRectangle")
    panel = show.layer("document.addTemplateShapeLayer", "rectangle", name="Panel",
                       position=[110, 780], size=[1240, 170], cornerRadius=18,
                       color={"red": 0.05, "green": 0.08, "blue": 0.18, "alpha": 0.88})
    title = show.layer("document.addTextLayer", text="Good evening  สวัสดีครับ",
                       position=[160, 812], fontSize=84)
    countdown = show.layer("document.addCountdownLayer", position=[1330, 110], size=[480, 160],
                           showBackground=True, cornerRadius=24, totalSeconds=30,
                           remainingSeconds=30)
    score = show.layer("document.addScoreLayer", "wideBroadcast", "football",
                       homeTeam="Siam", awayTeam="Andaman", homeScore=2, awayScore=1)
    for layer in (picture, panel, title, countdown, score):
        show.call("document.setLayerHidden", layer, True)
        show.call("document.setRunDissolveDuration", 0.6, layer)
    show.call("document.groupLayers", [panel, title], "Lower third")
    group = show.get("document.selectedPresetGroupID")
    show.call("document.setPresetGroupRunTransitionStyle", "presetReveal", group)
    show.call("document.setPresetGroupRunAutoOutDuration", 2.4, group)
    return picture, group, countdown, score


def play(show, layers, pictures):
    picture, group, countdown, score = layers
    show.call("document.takeLayerInNow", picture)
    show.wait(0.3)
    save(show, pictures, "1-picture-dissolves-in")
    show.wait(0.7)
    show.call("document.takePresetGroupInNow", group)
    show.wait(0.2)
    save(show, pictures, "2-lower-third-reveals-itself")
    show.wait(2.9)  # the auto-out falls in here
    save(show, pictures, "3-lower-third-leaves")
    show.wait(0.9)
    for layer in (countdown, score):
        show.call("document.toggleCue", layer)
    show.call("document.takeCues")
    show.call(f"layer:{countdown}.start")
    show.wait(1.0)
    save(show, pictures, "4-cues-taken")
    for layer in (picture, countdown, score):
        show.call("document.takeLayerOutNow", layer)
    show.wait(LAP - 6.0)


def save(show, directory, name):
    if directory:
        show.call("card.save", 0, str(directory / f"{name}.png"))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=PROGRAM)
    parser.add_argument("--pictures", type=pathlib.Path, default=ROOT / "build/demo")
    parser.add_argument("--seconds", type=float, default=LAP,
                        help="repeat the show for so long, without more pictures")
    options = parser.parse_args()
    options.pictures.mkdir(parents=True, exist_ok=True)

    show = Show(options.program, str(options.pictures / "data"))
    layers = build(show)
    show.call("app.startDeckLinkOutput")
    if not show.get("app.isDeckLinkOutputRunning"):
        sys.exit(show.get("app.lastErrorMessage"))
    print(f"On air: {show.get('fill.selectedMode')['displayLabel']}")
    play(show, layers, options.pictures)
    played, first_memory = LAP, None
    while played + LAP <= options.seconds:
        play(show, layers, None)
        played += LAP
        first_memory = first_memory or memory(show)
    last_memory = memory(show)
    frames = show.call("card.frames", 0)
    lost = show.get("app.missedTicks")
    show.call("app.stopDeckLinkOutput")
    show.end()

    intervals = {name: value * 1000 for name, value in frames["intervals"].items()}
    print(f"Frames sent: {frames['sent']}, ticks lost: {lost}")
    print("Interval: p50 {p50:.2f} ms, p99 {p99:.2f} ms, max {max:.2f} ms".format(**intervals))
    if first_memory:
        print(f"Memory: {first_memory:.1f} MB after {2 * LAP:.0f} s, {last_memory:.1f} MB at the end")
    print(f"Pictures of the air: {options.pictures}")


main()
