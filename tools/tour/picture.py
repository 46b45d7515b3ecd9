# SPDX-License-Identifier: MIT
"""Writes the rows of an X server's screen as a PNG with a palette, which is a third of one without."""
import array
import collections
import struct
import zlib

MOST_COLOURS = 256


def palette_of(counts):
    """Each colour: its place in the palette. What is rare becomes the nearest of the frequent ones."""
    frequent = [colour for colour, _ in counts.most_common(MOST_COLOURS)]
    places = {colour: place for place, colour in enumerate(frequent)}

    def distance(one, other):
        return sum((((one >> shift) & 255) - ((other >> shift) & 255)) ** 2 for shift in (0, 8, 16))

    for colour in counts:
        if colour not in places:
            places[colour] = places[min(frequent, key=lambda other: distance(colour, other))]
    return frequent, places


def chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))


def png(rows):
    colours = [[value & 0xFFFFFF for value in array.array("I", row)] for row in rows]
    counts = collections.Counter()
    for row in colours:
        counts.update(row)
    frequent, places = palette_of(counts)
    palette = b"".join(struct.pack(">I", colour)[1:] for colour in frequent)
    lines = b"".join(b"\0" + bytes(map(places.__getitem__, row)) for row in colours)
    header = struct.pack(">IIBBBBB", len(colours[0]), len(colours), 8, 3, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"PLTE", palette) + chunk(b"IDAT", zlib.compress(lines, 9)) +
            chunk(b"IEND", b""))
