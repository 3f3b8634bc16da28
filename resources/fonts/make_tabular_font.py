#!/usr/bin/env python3
"""Makes one weight of "Inter Tabular" from an installed weight of Inter.

usage: make_tabular_font.py SOURCE.otf TARGET.otf

Digits and their companions take the tabular forms by the character map itself, since not every text
stack can ask for a font feature.
"""
import sys

from fontTools import subset
from fontTools.ttLib import TTFont

FAMILY = "Inter Tabular"
# Latin with its diacritics, punctuation, arrows and the few signs that the interface writes.
RANGES = [(0x20, 0x7E), (0xA0, 0x17F), (0x2010, 0x2026), (0x2030, 0x203A), (0x20AC, 0x20AC),
          (0x2190, 0x2193), (0x2212, 0x2212), (0x2303, 0x2325), (0x2318, 0x2318), (0xD7, 0xD7)]


def tabular_forms(font):
    """Glyph to tabular glyph, as the feature `tnum` substitutes them."""
    table = font["GSUB"].table
    lookups = set()
    for record in table.FeatureList.FeatureRecord:
        if record.FeatureTag == "tnum":
            lookups.update(record.Feature.LookupListIndex)
    forms = {}
    for index in sorted(lookups):
        for sub in table.LookupList.Lookup[index].SubTable:
            sub = getattr(sub, "ExtSubTable", sub)
            forms.update(getattr(sub, "mapping", {}))
    return forms


def even_out(font):
    """Gives the digits one width to the unit; in some weights the 4 is narrower by a hair."""
    glyphs = [font.getBestCmap()[ord(digit)] for digit in "0123456789"]
    widths = font["hmtx"]
    widest = max(widths[glyph][0] for glyph in glyphs)
    for glyph in glyphs:
        widths[glyph] = (widest, widths[glyph][1])


def rename(font):
    for record in font["name"].names:
        text = record.toUnicode()
        if record.nameID in (1, 3, 4, 16):
            record.string = text.replace("Inter", FAMILY, 1)
        elif record.nameID == 6:
            record.string = text.replace("Inter", FAMILY.replace(" ", ""), 1)
    if "CFF " in font:
        cff = font["CFF "].cff
        cff.fontNames[0] = cff.fontNames[0].replace("Inter", FAMILY.replace(" ", ""), 1)


def main():
    source, target = sys.argv[1:]
    font = TTFont(source)
    forms = tabular_forms(font)
    if any(font.getBestCmap()[ord(digit)] not in forms for digit in "0123456789"):
        sys.exit(f"{source} has no tabular digits")
    for table in font["cmap"].tables:
        for code, glyph in list(table.cmap.items()):
            if code < 0x180 and glyph in forms:
                table.cmap[code] = forms[glyph]
    even_out(font)
    options = subset.Options()
    options.layout_features = ["kern", "mark", "mkmk", "ccmp", "locl"]
    options.name_IDs = ["*"]
    options.notdef_outline = True
    subsetter = subset.Subsetter(options)
    subsetter.populate(unicodes=[code for first, last in RANGES for code in range(first, last + 1)])
    subsetter.subset(font)
    rename(font)
    font["head"].modified = font["head"].created  # the same bytes from every build
    font.recalcTimestamp = False
    font.save(target)


main()
