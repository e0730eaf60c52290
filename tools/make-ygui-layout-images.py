#!/usr/bin/env python3
"""Regenerates the pictures of the toolkit's test layout, in every format the
raw images read: UDI (stored and zlib-packed, 32-bit and 16-bit), TGA (raw,
run-length, bottom-left origin), 32-bit BMP, and a tiled image with its .np2t
description.

    tools/make-ygui-layout-images.py     (writes tests/ygui/layouts/res/UI/UITexture/)

Plain colours with a few marked pixels, so that tests can name the colour they
expect at a point of the screen.
"""
import os
import struct
import zlib

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "ygui", "layouts", "res", "UI",
                   "UITexture")


def solid(w, h, rgba):
    return [[rgba for _ in range(w)] for _ in range(h)]


def tga(path, rows, rle=False, bottom_up=False):
    """32-bit true colour; pixel bytes B, G, R, A."""
    h, w = len(rows), len(rows[0])
    head = bytes([0, 0, 10 if rle else 2]) + bytes(9) + struct.pack("<HHBB", w, h, 32, 0x08 if bottom_up else 0x28)
    order = list(reversed(rows)) if bottom_up else rows
    pixels = [bytes([p[2], p[1], p[0], p[3]]) for row in order for p in row]
    body = b""
    if rle:
        i = 0
        while i < len(pixels):
            run = 1
            while i + run < len(pixels) and run < 128 and pixels[i + run] == pixels[i]:
                run += 1
            if run > 1:
                body += bytes([0x80 | (run - 1)]) + pixels[i]
                i += run
            else:
                body += bytes([0]) + pixels[i]
                i += 1
    else:
        body = b"".join(pixels)
    with open(path, "wb") as f:
        f.write(head + body)


def bmp32(path, rows):
    """32-bit, rows bottom-up, pixel bytes B, G, R, A."""
    h, w = len(rows), len(rows[0])
    data = b"".join(bytes([p[2], p[1], p[0], p[3]]) for row in reversed(rows) for p in row)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 32, 0, len(data), 2835, 2835, 0, 0)
    head = struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54)
    with open(path, "wb") as f:
        f.write(head + info + data)


def udi(path, w, h, pixel_format, bits, payload, packed=False):
    stored = zlib.compress(payload, 9) if packed else payload
    head = b"UDI\0" + struct.pack("<III", 0, 36 + len(payload), 36 + len(stored))
    head += struct.pack("<HHB3xBBxB", w, h, 1 if packed else 0, pixel_format, bits, 0) + bytes(8)
    assert len(head) == 36
    with open(path, "wb") as f:
        f.write(head + stored)


def rgba8888(rows):
    return b"".join(bytes(p) for row in rows for p in row)


def rgba4444(rows):
    out = b""
    for row in rows:
        for r, g, b, a in row:
            out += struct.pack("<H", ((r >> 4) << 12) | ((g >> 4) << 8) | ((b >> 4) << 4) | (a >> 4))
    return out


def rgb565(rows):
    out = b""
    for row in rows:
        for r, g, b, _ in row:
            out += struct.pack("<H", ((r >> 3) << 11) | ((g >> 2) << 5) | (b >> 3))
    return out


def main():
    os.makedirs(OUT, exist_ok=True)
    # Background: 48 x 27, left half red, right half blue, drawn at 480 x 272.
    bg = [[(200, 0, 0, 255) if x < 24 else (0, 0, 200, 255) for x in range(48)] for _ in range(27)]
    tga(os.path.join(OUT, "bg.tga"), bg, rle=True, bottom_up=True)
    # The buttons' three states.
    udi(os.path.join(OUT, "btn_normal.udi"), 40, 40, 1, 32, rgba8888(solid(40, 40, (0, 160, 0, 255))), packed=True)
    tga(os.path.join(OUT, "btn_focus.tga"), solid(40, 40, (255, 255, 0, 255)))
    bmp32(os.path.join(OUT, "btn_disabled.bmp"), solid(40, 40, (128, 128, 128, 255)))
    # A second button in 16-bit formats: RGBA4444 normal, RGB565 focus.
    udi(os.path.join(OUT, "back_normal.udi"), 40, 40, 4, 16, rgba4444(solid(40, 40, (0, 240, 240, 255))))
    udi(os.path.join(OUT, "back_focus.udi"), 40, 40, 3, 16, rgb565(solid(40, 40, (248, 0, 248, 255))))
    # A tiled 50 x 20 image: a 32 x 20 white tile at 0 and a 32 x 20 black one at
    # 32, cut to 18 columns.
    folder = os.path.join(OUT, "NP2T_logo")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "logo.np2t"), "wb") as f:
        f.write(struct.pack("<iiii", 0x4E503254, 50, 20, 2))
        f.write(struct.pack("<iiii", 0, 0, 32, 20))
        f.write(struct.pack("<iiii", 32, 0, 32, 20))
    tga(os.path.join(folder, "logo_Tile00.tga"), solid(32, 20, (255, 255, 255, 255)))
    udi(os.path.join(folder, "logo_Tile01.udi"), 32, 20, 1, 32, rgba8888(solid(32, 20, (0, 0, 0, 255))))


if __name__ == "__main__":
    main()
