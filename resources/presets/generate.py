#!/usr/bin/env python3
"""Writes BuiltInPresets.json, the presets that ship with the program."""
import json
import pathlib

from collection import church, news, office, social, sport

TARGET = pathlib.Path(__file__).resolve().with_name("BuiltInPresets.json")


def library():
    """All presets by name, as the records of the file."""
    made = [preset.record for area in (news, sport, church, office, social)
            for preset in area.presets()]
    return sorted(made, key=lambda record: record["name"].casefold())


def library_text():
    return json.dumps(library(), ensure_ascii=False, indent=2, sort_keys=True) + "\n"


def main():
    TARGET.write_text(library_text(), encoding="utf-8")
    print(f"{TARGET.name}: {len(library())} presets, {TARGET.stat().st_size // 1024} KB")


if __name__ == "__main__":
    main()
