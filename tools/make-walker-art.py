#!/usr/bin/env python3
"""Draws the walker title's art: the walker's frames and the target marker's as
PNG (for the sprite builder), the field's background as a 32-bit TGA, and the
two sounds of its sound project as WAV. Everything is drawn from numbers here,
so the same script always writes the same bytes.

    tools/make-walker-art.py [ART_FOLDER]

ART_FOLDER defaults to titles/walker/art; it gets frames/ (PNG), pack/ (what
goes into the title's WAF archive) and sounds/. Python 3 only.
"""
import math
import os
import struct
import sys
import wave
import zlib

CLEAR = (0, 0, 0, 0)


def canvas(w, h):
    return [[CLEAR] * w for _ in range(h)]


def rect(img, x0, y0, x1, y1, colour):
    for y in range(max(y0, 0), min(y1, len(img))):
        for x in range(max(x0, 0), min(x1, len(img[0]))):
            img[y][x] = colour


def disc(img, cx, cy, r, colour):
    for y in range(len(img)):
        for x in range(len(img[0])):
            if (x + 0.5 - cx) ** 2 + (y + 0.5 - cy) ** 2 <= r * r:
                img[y][x] = colour


def write_png(path, img):
    h, w = len(img), len(img[0])
    raw = b"".join(b"\0" + b"".join(bytes(p) for p in row) for row in img)

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", w, h, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")
    with open(path, "wb") as f:
        f.write(png)


def write_tga(path, img):
    """Uncompressed, 32 bits, top-left origin; the file stores B, G, R, A."""
    h, w = len(img), len(img[0])
    head = bytes([0, 0, 2]) + bytes(9) + struct.pack("<HHBB", w, h, 32, 0x28)
    with open(path, "wb") as f:
        f.write(head + b"".join(bytes((b, g, r, a)) for row in img for (r, g, b, a) in row))


SKIN = (240, 200, 160, 255)
HAIR = (90, 60, 30, 255)
SHIRT = (40, 110, 220, 255)
TROUSERS = (50, 50, 70, 255)
SHOE = (30, 20, 20, 255)
EYE = (20, 20, 40, 255)


def walker(stride, bob):
    """A child of 32 x 48 seen from the side, facing right. `stride` -1..1 sets
    the legs apart (front leg forward for positive), `bob` lifts the body."""
    img = canvas(32, 48)
    top = 4 - bob
    disc(img, 16, top + 7, 7, SKIN)                       # head
    rect(img, 9, top, 23, top + 4, HAIR)                  # hair
    rect(img, 20, top + 6, 22, top + 8, EYE)              # eye, looking right
    rect(img, 10, top + 14, 22, top + 30, SHIRT)          # body
    rect(img, 15 + 4 * stride, top + 17, 19 + 4 * stride, top + 27, SKIN)  # arm swings with the legs
    for leg, sign in ((0, 1), (1, -1)):
        shift = 4 * stride * sign
        x = 12 + 5 * leg + shift
        rect(img, x, top + 30, x + 4, 44, TROUSERS)
        rect(img, x, 44, x + 6, 47, SHOE)
    return img


def marker(size):
    """A diamond of the given half size, yellow with an orange heart, in 32 x 32."""
    img = canvas(32, 32)
    for y in range(32):
        for x in range(32):
            d = abs(x + 0.5 - 16) + abs(y + 0.5 - 16)
            if d <= size:
                img[y][x] = (255, 150, 30, 255) if d <= size / 2 else (255, 230, 60, 255)
    return img


def background():
    """The field, 240 x 136 (drawn twice the size): sky, hills, grass with stripes,
    in the top-left corner of a 256 x 256 picture, as textures on the device are
    a power of two a side."""
    w, h = 240, 136
    img = canvas(256, 256)
    for y in range(h):
        for x in range(w):
            hill = 70 + int(10 * math.sin(x / 23.0)) + int(5 * math.sin(x / 7.0 + 1))
            if y < hill:
                t = y / hill
                img[y][x] = (int(110 + 80 * t), int(170 + 60 * t), 250, 255)
            else:
                g = 150 + (20 if ((x + y) // 6) % 2 else 0) - (y - hill) // 2
                img[y][x] = (60, g, 70, 255)
    disc(img, 200, 22, 12, (255, 235, 120, 255))
    return img


def write_wav(path, samples, rate=22050):
    with wave.open(path, "wb") as f:
        f.setnchannels(1)
        f.setsampwidth(2)
        f.setframerate(rate)
        f.writeframes(b"".join(struct.pack("<h", max(-32767, min(32767, int(s)))) for s in samples))


def step_sound(rate=22050):
    """A soft footstep: 70 ms of noise from a fixed generator, falling away."""
    seed, out = 12345, []
    for i in range(int(rate * 0.07)):
        seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
        out.append(((seed >> 16) - 16384) * 0.8 * math.exp(-i / (rate * 0.015)))
    return out


def toggle_sound(rate=22050):
    """A short bell: 120 ms of 880 Hz, dying away."""
    return [12000 * math.sin(2 * math.pi * 880 * i / rate) * math.exp(-i / (rate * 0.04))
            for i in range(int(rate * 0.12))]


def main():
    art = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "titles", "walker", "art")
    for sub in ("frames", "pack", "sounds"):
        os.makedirs(os.path.join(art, sub), exist_ok=True)
    frames = os.path.join(art, "frames")
    write_png(os.path.join(frames, "idle0.png"), walker(0, 0))
    write_png(os.path.join(frames, "idle1.png"), walker(0, 1))
    for i, stride in enumerate((1, 0, -1, 0)):
        write_png(os.path.join(frames, "walk%d.png" % i), walker(stride, 1 if stride == 0 else 0))
    for i, size in enumerate((9, 12, 15, 12)):
        write_png(os.path.join(frames, "marker%d.png" % i), marker(size))
    write_tga(os.path.join(art, "pack", "Background.tga"), background())
    write_wav(os.path.join(art, "sounds", "SFX_STEP.wav"), step_sound())
    write_wav(os.path.join(art, "sounds", "SFX_TOGGLE.wav"), toggle_sound())


if __name__ == "__main__":
    main()
