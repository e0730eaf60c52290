#!/usr/bin/env python3
"""Writes the 3D test title's textures: one 32 x 32 picture in every device format
of UDI, raw and with 16- and 256-entry palettes in each format a palette may
have, one A8R8G8B8 UDI (the conversion path) and one 32-bit TGA.

    tools/make-gl-title-textures.py [OUTPUT_FOLDER]

OUTPUT_FOLDER defaults to tests/e2e/gltitle/res/tex. Python 3 only.
"""
import os
import struct
import sys
import zlib

SIZE = 32

# Device formats by number: name, bytes a pixel.
FORMATS = {1: ("r8g8b8a8", 4), 2: ("r5g5b5a1", 2), 3: ("r5g6b5", 2), 4: ("r4g4b4a4", 2), 5: ("l8a8", 2)}


def pack(fmt, r, g, b, a):
    """One pixel (8-bit channels) in device format `fmt`, as the file holds it."""
    if fmt == 0:
        return bytes((a, r, g, b))
    if fmt == 1:
        return bytes((r, g, b, a))
    if fmt == 2:
        return struct.pack("<H", (r >> 3) << 11 | (g >> 3) << 6 | (b >> 3) << 1 | (a >> 7))
    if fmt == 3:
        return struct.pack("<H", (r >> 3) << 11 | (g >> 2) << 5 | (b >> 3))
    if fmt == 4:
        return struct.pack("<H", (r >> 4) << 12 | (g >> 4) << 8 | (b >> 4) << 4 | (a >> 4))
    if fmt == 5:
        return bytes(((r * 77 + g * 150 + b * 29) >> 8, a))
    raise ValueError(fmt)


def picture(x, y):
    """The raw pictures: red across, green down, a blue checker, and an alpha ramp
    in the lower half."""
    blue = 255 if (x // 8 + y // 8) % 2 else 40
    alpha = 255 if y < 16 else 255 - (y - 16) * 15
    return x * 8, y * 8, blue, alpha


def palette16(i):
    """Sixteen colours round the colour wheel; the last four half transparent."""
    wheel = [(255, 0, 0), (255, 128, 0), (255, 255, 0), (128, 255, 0), (0, 255, 0), (0, 255, 128), (0, 255, 255),
             (0, 128, 255), (0, 0, 255), (128, 0, 255), (255, 0, 255), (255, 0, 128), (255, 255, 255),
             (128, 128, 128), (64, 64, 64), (0, 0, 0)]
    r, g, b = wheel[i]
    return r, g, b, 255 if i < 12 else 128


def palette256(i):
    return i, 255 - i, (i * 4) & 255, 255 if i < 192 else 64


def udi(fmt, bits, palette_type, payload, compression):
    stored = zlib.compress(payload, 9) if compression else payload
    header = b"UDI\0" + struct.pack("<III", 0, 36 + len(payload), 36 + len(stored))
    header += struct.pack("<HHBBBBBBBB", SIZE, SIZE, compression, 0, 0, 0, fmt, bits, 0, palette_type)
    header += bytes(8)
    assert len(header) == 36
    return header + stored


def raw(fmt):
    return b"".join(pack(fmt, *picture(x, y)) for y in range(SIZE) for x in range(SIZE))


def paletted(fmt, palette_type):
    if palette_type == 1:
        palette = b"".join(pack(fmt, *palette16(i)) for i in range(16))
        indices = [((x // 4) + (y // 4)) % 16 for y in range(SIZE) for x in range(SIZE)]
        packed = bytes(indices[i] << 4 | indices[i + 1] for i in range(0, len(indices), 2))  # high nibble first
    else:
        palette = b"".join(pack(fmt, *palette256(i)) for i in range(256))
        packed = bytes((x * 8 + y) & 255 for y in range(SIZE) for x in range(SIZE))
    return palette + packed


def tga32():
    header = bytes((0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0)) + struct.pack("<HHBB", SIZE, SIZE, 32, 0x28)
    pixels = b""
    for y in range(SIZE):
        for x in range(SIZE):
            r, g, b, a = picture(SIZE - 1 - x, y)
            pixels += bytes((b, g, r, a))
    return header + pixels


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "tests", "e2e",
                                                              "gltitle", "res", "tex")
    os.makedirs(out, exist_ok=True)
    files = {}
    for fmt, (name, size) in FORMATS.items():
        files[name + ".udi"] = udi(fmt, size * 8, 0, raw(fmt), 0)
    for fmt in range(1, 5):
        name, size = FORMATS[fmt]
        files["p4_" + name + ".udi"] = udi(fmt, size * 8, 1, paletted(fmt, 1), 0)
        files["p8_" + name + ".udi"] = udi(fmt, size * 8, 2, paletted(fmt, 2), 1)  # zlib-packed
    files["a8r8g8b8.udi"] = udi(0, 32, 0, raw(0), 1)
    files["tga32.tga"] = tga32()
    for name, data in sorted(files.items()):
        with open(os.path.join(out, name), "wb") as f:
            f.write(data)
    print("wrote %d textures to %s" % (len(files), os.path.normpath(out)))


if __name__ == "__main__":
    main()
