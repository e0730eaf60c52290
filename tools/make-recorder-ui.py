#!/usr/bin/env python3
"""Regenerates the recorder's screens: every picture under res/UI/UITexture/ and
the five layouts under res/UI/Page/ that place them.

    tools/make-recorder-ui.py            (writes res/UI/UITexture/ and res/UI/Page/)

Pictures are drawn by ImageMagick 6 (Debian's imagemagick; only this script needs
it) and written here as 32-bit run-length TGA with their alpha, top-left origin. Layouts are
written from the same numbers, so a picture and the control that shows it always
agree on their size.

The record panel's geometry is fixed by the scene's arithmetic: the bar is drawn
from the record button at (+48, +16) when the device is held flat and (-179, -22)
when it stands up, the cursor 6 pixels above the bar, and "mic_time_flat" is the
panel's anchor, placed on the launcher's position. It is also the panel's
background, so that a dragged panel stays whole on the screen.
"""
import os
import struct
import subprocess
import sys

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
TEXTURES = os.path.join(ROOT, "res", "UI", "UITexture")
PAGES = os.path.join(ROOT, "res", "UI", "Page")
CONVERT = "/usr/bin/convert"
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"

# ---------------------------------------------------------------- pictures


def render(w, h, mvg, background="none"):
    """Draws `mvg` on a w x h canvas; returns rows of (r, g, b, a)."""
    cmd = [CONVERT, "-size", "%dx%d" % (w, h), "xc:" + background, "-draw", mvg, "-depth", "8", "rgba:-"]
    raw = subprocess.run(cmd, check=True, stdout=subprocess.PIPE).stdout
    if len(raw) != w * h * 4:
        sys.exit("make-recorder-ui: convert gave %d bytes for %dx%d" % (len(raw), w, h))
    return [[tuple(raw[(y * w + x) * 4:(y * w + x) * 4 + 4]) for x in range(w)] for y in range(h)]


def text_layer(w, h, lines):
    """Renders lines of text, each (x, y, size, colour, text), in the house font."""
    cmd = [CONVERT, "-size", "%dx%d" % (w, h), "xc:none", "-font", FONT]
    for x, y, size, colour, text in lines:
        cmd += ["-pointsize", str(size), "-fill", colour, "-stroke", "none", "-annotate", "+%d+%d" % (x, y), text]
    cmd += ["-depth", "8", "rgba:-"]
    raw = subprocess.run(cmd, check=True, stdout=subprocess.PIPE).stdout
    return [[tuple(raw[(y * w + x) * 4:(y * w + x) * 4 + 4]) for x in range(w)] for y in range(h)]


def over(bottom, top):
    """`top` composited over `bottom` (straight alpha)."""
    out = []
    for brow, trow in zip(bottom, top):
        row = []
        for b, t in zip(brow, trow):
            ta = t[3] / 255.0
            ba = b[3] / 255.0
            a = ta + ba * (1 - ta)
            if a <= 0:
                row.append((0, 0, 0, 0))
                continue
            c = [int(round((t[i] * ta + b[i] * ba * (1 - ta)) / a)) for i in range(3)]
            row.append((c[0], c[1], c[2], int(round(a * 255))))
        out.append(row)
    return out


def write_tga(name, rows):
    """Run-length true colour, 32 bits, top-left origin; pixel bytes B, G, R, A.
    Runs keep the large flat pictures small."""
    h, w = len(rows), len(rows[0])
    head = bytes([0, 0, 10]) + bytes(9) + struct.pack("<HHBB", w, h, 32, 0x28)
    pixels = [bytes([p[2], p[1], p[0], p[3]]) for row in rows for p in row]
    body = bytearray()
    i = 0
    while i < len(pixels):
        run = 1
        while i + run < len(pixels) and run < 128 and pixels[i + run] == pixels[i]:
            run += 1
        if run > 1:
            body += bytes([0x80 | (run - 1)]) + pixels[i]
            i += run
            continue
        # a raw packet: up to 128 pixels until the next run of two
        j = i + 1
        while j < len(pixels) and j - i < 128 and not (j + 1 < len(pixels) and pixels[j + 1] == pixels[j]):
            j += 1
        body += bytes([j - i - 1]) + b"".join(pixels[i:j])
        i = j
    with open(os.path.join(TEXTURES, name + ".tga"), "wb") as f:
        f.write(head + bytes(body))


# A button is a round face in a ring, with a glossy highlight and a white or
# coloured symbol. Focus lights it with a yellow halo; disabled greys it out.
BUTTONS = {
    #          ring       face       symbol
    "back": ("#D96A00", "#FF9F1C", "#FFFFFF"),
    "record": ("#C1121F", "#FFFFFF", "#E63946"),
    "stop": ("#1D4ED8", "#3A86FF", "#FFFFFF"),
    "play": ("#1B7F3B", "#4CC35A", "#FFFFFF"),
    "pause": ("#6A1FB0", "#A855F7", "#FFFFFF"),
    "ok": ("#1B7F3B", "#4CC35A", "#FFFFFF"),
}


def lighter(colour, share):
    r, g, b = (int(colour[i:i + 2], 16) for i in (1, 3, 5))
    mix = lambda c: int(c + (255 - c) * share)
    return "#%02X%02X%02X" % (mix(r), mix(g), mix(b))


def symbol(kind, c, s, colour):
    """MVG of the symbol `kind` centred on (c, c), s the face radius."""
    if kind == "record":
        return "fill %s stroke none circle %.1f,%.1f %.1f,%.1f" % (colour, c, c, c + s * 0.5, c)
    if kind == "stop":
        d = s * 0.42
        return "fill %s stroke none roundrectangle %.1f,%.1f %.1f,%.1f 3,3" % (colour, c - d, c - d, c + d, c + d)
    if kind == "play":
        d = s * 0.5
        return "fill %s stroke %s stroke-width 2 stroke-linejoin round polygon %.1f,%.1f %.1f,%.1f %.1f,%.1f" % (
            colour, colour, c - d * 0.6, c - d, c - d * 0.6, c + d, c + d * 1.0, c)
    if kind == "pause":
        d = s * 0.45
        bw = s * 0.22
        return ("fill %s stroke none roundrectangle %.1f,%.1f %.1f,%.1f 2,2 "
                "roundrectangle %.1f,%.1f %.1f,%.1f 2,2") % (colour, c - d * 0.75 - bw / 2, c - d, c - d * 0.75 + bw / 2,
                                                              c + d, c + d * 0.75 - bw / 2, c - d, c + d * 0.75 + bw / 2,
                                                              c + d)
    if kind == "back":
        d = s * 0.5
        t = s * 0.2
        return ("fill %s stroke %s stroke-width 1 stroke-linejoin round polygon "
                "%.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f %.1f,%.1f") % (
                    colour, colour, c - d, c, c - d * 0.05, c - d * 0.9, c - d * 0.05, c - t, c + d, c - t, c + d, c + t,
                    c - d * 0.05, c + t, c - d * 0.05, c + d * 0.9)
    if kind == "ok":
        return ("fill none stroke %s stroke-width %.1f stroke-linecap round stroke-linejoin round "
                "polyline %.1f,%.1f %.1f,%.1f %.1f,%.1f") % (colour, s * 0.22, c - s * 0.5, c + s * 0.02, c - s * 0.12,
                                                              c + s * 0.42, c + s * 0.52, c - s * 0.38)
    raise ValueError(kind)


def button(kind, size, state):
    ring, face, mark = BUTTONS[kind]
    c = (size - 1) / 2.0
    r = size / 2.0 - 2.5  # outer edge of the ring
    parts = []
    if state == "focus":
        # a warm halo around a slightly smaller, brighter button
        parts.append("fill #FF9E00 stroke none circle %.1f,%.1f %.1f,%.1f" % (c, c, c + size / 2.0 - 0.2, c))
        parts.append("fill #FFFFFF stroke none circle %.1f,%.1f %.1f,%.1f" % (c, c, c + size / 2.0 - 3.6, c))
        face = lighter(face, 0.25)
        r -= 3.2
    if state == "disable":
        ring, face, mark = "#A0A0A0", "#D4D4D4", "#F4F4F4"
    # a soft shadow under the face, then ring, face, gloss and the symbol
    parts.append("fill #00000030 stroke none circle %.1f,%.1f %.1f,%.1f" % (c, c + 1.5, c + r, c + 1.5))
    parts.append("fill %s stroke none circle %.1f,%.1f %.1f,%.1f" % (ring, c, c, c + r, c))
    inner = r - max(3.0, size * 0.08)
    parts.append("fill %s stroke none circle %.1f,%.1f %.1f,%.1f" % (face, c, c, c + inner, c))
    parts.append("fill #FFFFFF55 stroke none ellipse %.1f,%.1f %.1f,%.1f 180,360" %
                 (c, c - inner * 0.35, inner * 0.72, inner * 0.45))
    parts.append(symbol(kind, c, inner, mark))
    return render(size, size, " ".join(parts))


def microphone(w, h, cx, top, scale):
    """MVG of a friendly microphone: a silver head with a grille, a cradle, a
    stand; `scale` 1 is 40 wide."""
    s = scale
    hw, hh = 14 * s, 34 * s  # half width and height of the head
    parts = [
        # cradle and stand
        "fill none stroke #5A6270 stroke-width %.1f stroke-linecap round path 'M %.1f,%.1f A %.1f,%.1f 0 0,0 %.1f,%.1f'" %
        (4 * s, cx - 20 * s, top + 30 * s, 20 * s, 20 * s, cx + 20 * s, top + 30 * s),
        "fill none stroke #5A6270 stroke-width %.1f line %.1f,%.1f %.1f,%.1f" % (4 * s, cx, top + 50 * s, cx,
                                                                               top + 64 * s),
        "fill #5A6270 stroke none roundrectangle %.1f,%.1f %.1f,%.1f %.1f,%.1f" %
        (cx - 16 * s, top + 62 * s, cx + 16 * s, top + 68 * s, 3 * s, 3 * s),
        # head
        "fill #FF6FB5 stroke #C2185B stroke-width %.1f roundrectangle %.1f,%.1f %.1f,%.1f %.1f,%.1f" %
        (2.5 * s, cx - hw, top, cx + hw, top + hh + 8 * s, hw, hw),
    ]
    for i in range(4):
        y = top + (9 + i * 6) * s
        parts.append("fill none stroke #C2185B stroke-width %.1f line %.1f,%.1f %.1f,%.1f" %
                     (1.6 * s, cx - hw * 0.6, y, cx + hw * 0.6, y))
    parts.append("fill #FFFFFF88 stroke none ellipse %.1f,%.1f %.1f,%.1f 0,360" %
                 (cx - hw * 0.45, top + 12 * s, 3 * s, 7 * s))
    return " ".join(parts)


def make_pictures():
    os.makedirs(TEXTURES, exist_ok=True)
    # buttons of the panel and of the pop-ups
    for kind in ("back", "record", "stop", "play", "pause"):
        for state, suffix in (("normal", ""), ("focus", "_focus"), ("disable", "_disable")):
            write_tga("mic_btn_%s%s" % (kind, suffix), button(kind, PANEL_BUTTON, state))
    for kind, name in (("ok", "pop_btn_ok"), ("back", "pop_btn_back")):
        for state, suffix in (("normal", ""), ("focus", "_focus"), ("disable", "_disable")):
            write_tga(name + suffix, button(kind, POP_BUTTON, state))

    # the bar: a sky-blue groove, its sunny fill, and the knob that rides on it
    bw, bh = BAR
    write_tga("mic_time_blue", render(bw, bh, "fill #BDE6FA stroke #2A9FD6 stroke-width 2 "
                                      "roundrectangle 1,1 %d,%d 6,6 fill #FFFFFF66 stroke none "
                                      "roundrectangle 5,3 %d,5 2,2" % (bw - 2, bh - 2, bw - 6)))
    write_tga("mic_time_yellow", render(bw, bh, "fill #FFC43D stroke #F48C06 stroke-width 2 "
                                        "roundrectangle 1,1 %d,%d 6,6 fill #FFFFFF77 stroke none "
                                        "roundrectangle 5,3 %d,5 2,2" % (bw - 2, bh - 2, bw - 6)))
    cw, ch = CURSOR
    write_tga("mic_time_glide_button",
              render(cw, ch, "fill #FFFFFF stroke #F48C06 stroke-width 2 roundrectangle 1,1 %d,%d 5,5 "
                     "fill #F48C06 stroke none circle %.1f,%.1f %.1f,%.1f" % (cw - 2, ch - 2, (cw - 1) / 2.0,
                                                                              (ch - 1) / 2.0, (cw - 1) / 2.0 + 2,
                                                                              (ch - 1) / 2.0)))

    # the recording light: a red lamp with a glow and a shine
    lw = LIGHT
    c = (lw - 1) / 2.0
    write_tga("mic_rec_light",
              render(lw, lw, "fill #FF4D4D40 stroke none circle %.1f,%.1f %.1f,%.1f "
                     "fill #B00020 circle %.1f,%.1f %.1f,%.1f fill #FF2D2D circle %.1f,%.1f %.1f,%.1f "
                     "fill #FFFFFFAA ellipse %.1f,%.1f %.1f,%.1f 0,360" %
                     (c, c, c + lw / 2.0, c, c, c, c + lw * 0.36, c, c, c, c + lw * 0.29, c, c - lw * 0.1, c - lw * 0.12,
                      lw * 0.1, lw * 0.06)))

    # panel backgrounds: a warm card with a sunny rim and a groove where the bar runs
    # and, where the recording light shines, a small microphone so that the panel's
    # end isn't bare while the light is off
    for name, (w, h), groove, light in (("mic_time_flat", PANEL_H, BAR_SLOT_H, CONTROLS_H["bar_red"]),
                                        ("mic_time_flat_vert", PANEL_V, BAR_SLOT_V, CONTROLS_V["bar_red"])):
        gx, gy = groove
        lx, ly = light
        write_tga(name,
                  render(w, h, "fill #00000028 stroke none roundrectangle 2,3 %d,%d 18,18 "
                         "fill #FFF6D5 stroke #FFB703 stroke-width 3 roundrectangle 2,2 %d,%d 16,16 "
                         "fill none stroke #FFFFFF stroke-width 2 roundrectangle 6,6 %d,%d 12,12 "
                         "fill #F6E3A6 stroke none roundrectangle %d,%d %d,%d 9,9" %
                         (w - 1, h - 1, w - 3, h - 4, w - 7, h - 8, gx - 4, gy - 4, gx + BAR[0] + 3, gy + BAR[1] + 3) +
                         " " + microphone(w, h, lx + LIGHT / 2.0, ly + 1, 0.42)))

    # pop-ups: a full-screen sky with bubbles, a white card with words, a picture
    for name, (w, h) in (("pop_sky_hori", (480, 272)), ("pop_sky_vert", (272, 480))):
        bubbles = []
        seed = 7
        for i in range(14):
            seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
            x = seed % w
            seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
            y = seed % h
            r = 6 + (seed >> 8) % 18
            bubbles.append("fill #FFFFFF38 stroke #FFFFFF70 stroke-width 2 circle %d,%d %d,%d" % (x, y, x + r, y))
        sky = render(w, h, " ".join(bubbles), background="none")
        grad = subprocess.run([CONVERT, "-size", "%dx%d" % (w, h), "gradient:#8FD3FF-#C9B6F2", "-alpha", "set",
                               "-depth", "8", "rgba:-"], check=True, stdout=subprocess.PIPE).stdout
        base = [[tuple(grad[(y * w + x) * 4:(y * w + x) * 4 + 4]) for x in range(w)] for y in range(h)]
        write_tga(name, over(base, sky))

    cards = (
        # The pop-up that stops a recording serves two causes (no microphone, no
        # room) and has no layout of its own for the device stood up, so it is
        # seen turned too: it tells both in pictures, and says nothing in words.
        ("pop_card_nomic", POP_CARD_H, []),
        ("pop_card_full_hori", POP_CARD_H, [(0, 0, 22, "#E63946", "Oops!"),
                                            (0, 0, 17, "#3D405B", "Your memory is full.")]),
        ("pop_card_full_vert", POP_CARD_V, [(0, 0, 22, "#E63946", "Oops!"), (0, 0, 17, "#3D405B", "Your memory"),
                                            (0, 0, 17, "#3D405B", "is full.")]),
    )
    for name, (w, h), lines in cards:
        card = render(w, h, "fill #00000030 stroke none roundrectangle 3,5 %d,%d 22,22 "
                      "fill #FFFFFF stroke #FFB703 stroke-width 4 roundrectangle 3,3 %d,%d 20,20" %
                      (w - 1, h - 1, w - 4, h - 6))
        placed = []
        y = 34
        for _, _, size, colour, text in lines:
            width = text_width(text, size)
            placed.append(((w - width) // 2, y, size, colour, text))
            y += size + 8
        write_tga(name, over(card, text_layer(w, h, placed)))

    pw, ph = POP_PICTURE
    write_tga("pop_pic_full", render(pw, ph, microphone(pw, ph, pw / 2.0 - 34, 12, 1.2) + " " + full_box(pw / 2.0 - 2)))
    # cannot record: no microphone (the microphone under a red "no" sign), or no
    # room (the box heaped with notes), side by side
    nw, nh = NOMIC_PICTURE
    mx = nw / 4.0
    write_tga("pop_pic_nomic",
              render(nw, nh, microphone(nw, nh, mx, 12, 1.2) +
                     " fill none stroke #E63946 stroke-width 7 circle %.1f,%.1f %.1f,%.1f "
                     "line %.1f,%.1f %.1f,%.1f" % (mx, 50, mx + 44, 50, mx - 31, 50 - 31, mx + 31, 50 + 31) +
                     " " + full_box(nw * 0.75 - 30)))


def full_box(bx):
    """MVG of a box heaped with notes and a red mark that says it is full; the box
    spans bx - 2 to bx + 52, the mark reaches bx + 63."""
    notes = " ".join(
        "fill %s stroke none ellipse %.1f,%.1f 5,4 0,360 fill none stroke %s stroke-width 2 line %.1f,%.1f %.1f,%.1f" %
        (col, x, y, col, x + 4, y, x + 4, y - 15) for col, x, y in (("#3A86FF", bx + 6, 48), ("#A855F7", bx + 22, 40),
                                                                    ("#4CC35A", bx + 38, 50), ("#FF9F1C", bx + 14, 28),
                                                                    ("#E63946", bx + 32, 24)))
    return (notes + " fill #FFB703 stroke #D98E04 stroke-width 2.5 "
            "roundrectangle %.1f,52 %.1f,92 5,5 fill #E63946 stroke #FFFFFF stroke-width 2 "
            "circle %.1f,22 %.1f,22 fill #FFFFFF stroke none roundrectangle %.1f,13 %.1f,24 1,1 "
            "circle %.1f,28 %.1f,28" % (bx - 2, bx + 52, bx + 52, bx + 63, bx + 50.5, bx + 53.5, bx + 52, bx + 53.6))


def text_width(text, size):
    out = subprocess.run([CONVERT, "-font", FONT, "-pointsize", str(size), "label:" + text, "-format", "%w", "info:"],
                         check=True, stdout=subprocess.PIPE).stdout
    return int(out)


# ---------------------------------------------------------------- geometry

PANEL_BUTTON = 44
POP_BUTTON = 60
BAR = (210, 14)
CURSOR = (12, 26)
LIGHT = 32

# Held flat: back, record/stop (one place, never shown together), the bar,
# play/pause (likewise), the recording light.
PANEL_H = (416, 60)
RECORD_H = (58, 8)
BAR_SLOT_H = (RECORD_H[0] + 48, RECORD_H[1] + 16)
CONTROLS_H = {
    "back": (8, 8),
    "record": RECORD_H,
    "stop": RECORD_H,
    "play": (BAR_SLOT_H[0] + BAR[0] + 8, 8),
    "pause": (BAR_SLOT_H[0] + BAR[0] + 8, 8),
    "bar_red": (BAR_SLOT_H[0] + BAR[0] + 8 + PANEL_BUTTON + 8, 14),
}

# Stood up: the bar on top, the buttons in a row beneath it with record/stop
# at the right end, under the bar's end.
PANEL_V = (252, 92)
RECORD_V = (199, 40)
BAR_SLOT_V = (RECORD_V[0] - 179, RECORD_V[1] - 22)
CONTROLS_V = {
    "back": (10, 40),
    "record": RECORD_V,
    "stop": RECORD_V,
    "play": (64, 40),
    "pause": (64, 40),
    "bar_red": (138, 46),
}

POP_CARD_H = (340, 200)
POP_CARD_V = (232, 300)
POP_PICTURE = (150, 100)
NOMIC_PICTURE = (260, 110)

# ---------------------------------------------------------------- layouts


def fixed(v):
    return ("%.3f" % v).rstrip("0").rstrip(".")


def pop_keys(w, h, steps):
    """Key frames that scale a control about its middle: each step is (time,
    scale, opacity). The toolkit grows a control about the point a quarter of
    the way in, so the offset (size * (1 - scale) / 4) puts the middle back."""
    out = []
    for t, s, o in steps:
        out.append('<KeyFrame Time="%s" x="%d" y="%d" ScaleX="%s" ScaleY="%s" Opacity="%s"/>' %
                   (fixed(t), round(w * (1 - s) / 4), round(h * (1 - s) / 4), fixed(s), fixed(s), fixed(o)))
    return out


def anim(w, h, sets):
    """The animation children of a control: sets is a list of (name, keys)."""
    if not sets:
        return "", []
    body = []
    for name, keys in sets:
        body.append('  <AnimationSet Name="%s" KeyFrameNum="%d">' % (name, len(keys)))
        body += ["    " + k for k in keys]
        body.append("  </AnimationSet>")
    return ' AnimSetNum="%d"' % len(sets), body


def element(kind, name, cid, x, y, w, h, images, sets=(), nav=None):
    attrs = 'Id="%d" Name="%s" x="%d" y="%d" Width="%d" Height="%d"' % (cid, name, x, y, w, h)
    if nav:
        attrs += "".join(' %s="%d"' % kv for kv in nav)
    if kind == "Image":
        attrs += ' NormalBackground="%s"' % images
    else:
        normal, focus, disabled = images
        attrs += ' NormalBackground="%s" SelectedBackground="%s" FocusBackground="%s"' % (normal, focus, disabled)
    animset, body = anim(w, h, list(sets))
    if not body:
        return ["  <%s %s/>" % (kind, attrs)]
    return ["  <%s %s%s>" % (kind, attrs, animset)] + ["  " + b for b in body] + ["  </%s>" % kind]


POP_IN = [(0, 0.3, 0), (0.22, 1.12, 1), (0.36, 1, 1)]


def buttons_in(delay):
    return [(0, 0.3, 0), (delay, 0.3, 0), (delay + 0.2, 1.15, 1), (delay + 0.32, 1, 1)]


def panel_layout(path, comment, panel, background, controls, bar_slot):
    s = PANEL_BUTTON

    def btn(name, cid, delay, extra=()):
        x, y = controls[name]
        return element("ImageButton", name, cid, x, y, s, s, ("mic_btn_%s.tga" % name, "mic_btn_%s_focus.tga" % name,
                                                              "mic_btn_%s_disable.tga" % name),
                       [("in", pop_keys(s, s, buttons_in(delay)))] + list(extra))

    # "loop" invites: the record button breathes twice after coming in.
    breathe = ("loop", pop_keys(s, s, [(0, 1, 1), (0.35, 1.12, 1), (0.7, 1, 1), (1.05, 1.12, 1), (1.4, 1, 1)]))
    # "stop": the record button is back, with a bounce.
    bounce = ("stop", pop_keys(s, s, [(0, 0.6, 1), (0.18, 1.18, 1), (0.3, 1, 1)]))
    # "recording": the stop button and the light beat once a second; the scene
    # plays the set again whenever it has run out.
    beat = ("recording", pop_keys(s, s, [(0, 1, 1), (0.5, 1.08, 1), (1, 1, 1)]))
    lx, ly = controls["bar_red"]
    blink = [('<KeyFrame Time="0" Opacity="1"/>'), ('<KeyFrame Time="0.5" Opacity="0.25"/>'),
             ('<KeyFrame Time="1" Opacity="1"/>')]
    bx, by = bar_slot
    cx, cy = bar_slot[0], bar_slot[1] - 6
    lines = ['<?xml version="1.0" encoding="utf-8"?>', "<!-- %s -->" % comment, '<Page x="0" y="0">']
    lines += element("Image", "mic_time_flat", 0, 0, 0, panel[0], panel[1], background + ".tga")
    # the bar's three parts are laid out where the scene draws them; it hides
    # these and draws its own
    lines += element("Image", "bar_blue", 10, bx, by, BAR[0], BAR[1], "mic_time_blue.tga")
    lines += element("Image", "bar_yellow", 11, bx, by, BAR[0], BAR[1], "mic_time_yellow.tga")
    lines += element("Image", "bar", 12, cx, cy, CURSOR[0], CURSOR[1], "mic_time_glide_button.tga")
    lines += btn("back", 1, 0.0)
    lines += btn("record", 2, 0.1, [breathe, bounce])
    lines += btn("stop", 3, 0.1, [beat])
    lines += btn("play", 4, 0.2)
    lines += btn("pause", 5, 0.2)
    lines += element("Image", "bar_red", 6, lx, ly, LIGHT, LIGHT, "mic_rec_light.tga", [("recording", blink)])
    lines.append("</Page>")
    with open(path, "w") as f:
        f.write("\n".join(lines) + "\n")


def popup_layout(path, comment, sky, card, card_size, picture, button_name, button_images, vertical,
                 picture_size=POP_PICTURE, picture_top=None):
    sw, sh = (272, 480) if vertical else (480, 272)
    cw, ch = card_size
    cx, cy = (sw - cw) // 2, (sh - ch) // 2
    pw, ph = picture_size
    px, py = (sw - pw) // 2, cy + 108
    b = POP_BUTTON
    bx, by = (cx + cw - b - 14, cy + ch - b - 14) if not vertical else ((sw - b) // 2, cy + ch - b - 16)
    if not vertical:
        py = cy + ch - ph - 14
    if picture_top is not None:
        py = cy + picture_top
    lines = ['<?xml version="1.0" encoding="utf-8"?>', "<!-- %s -->" % comment, '<Page x="0" y="0">']
    lines += element("Image", "sky", 0, 0, 0, sw, sh, sky + ".tga")
    lines += element("Image", "card", 1, cx, cy, cw, ch, card + ".tga", [("in", pop_keys(cw, ch, POP_IN))])
    # "loop": the picture wiggles once, briefly, since the gallery-full pop-up
    # takes no tap before its animations are over
    wiggle = ['<KeyFrame Time="0" x="0"/>', '<KeyFrame Time="0.1" x="-4"/>', '<KeyFrame Time="0.2" x="4"/>',
              '<KeyFrame Time="0.3" x="-3"/>', '<KeyFrame Time="0.4" x="0"/>']
    lines += element("Image", "picture", 2, px, py, pw, ph, picture + ".tga",
                     [("in", pop_keys(pw, ph, [(0, 0.3, 0), (0.12, 0.3, 0), (0.32, 1.1, 1), (0.42, 1, 1)])),
                      ("loop", wiggle)])
    lines += element("ImageButton", button_name, 3, bx, by, b, b, button_images,
                     [("in", pop_keys(b, b, [(0, 0.3, 0), (0.2, 0.3, 0), (0.38, 1.15, 1), (0.48, 1, 1)]))])
    lines.append("</Page>")
    with open(path, "w") as f:
        f.write("\n".join(lines) + "\n")


def make_layouts():
    os.makedirs(PAGES, exist_ok=True)
    panel_layout(os.path.join(PAGES, "menu_mic_widget.xml"), "The record panel, device held flat.", PANEL_H,
                 "mic_time_flat", CONTROLS_H, BAR_SLOT_H)
    panel_layout(os.path.join(PAGES, "menu_mic_widget_vert.xml"), "The record panel, device stood up.", PANEL_V,
                 "mic_time_flat_vert", CONTROLS_V, BAR_SLOT_V)
    ok = ("pop_btn_ok.tga", "pop_btn_ok_focus.tga", "pop_btn_ok_disable.tga")
    back = ("pop_btn_back.tga", "pop_btn_back_focus.tga", "pop_btn_back_disable.tga")
    popup_layout(os.path.join(PAGES, "menu_paint_save.xml"),
                 "Recording cannot start (no microphone, or no room): the pop-up that ends the recorder.",
                 "pop_sky_hori", "pop_card_nomic", POP_CARD_H, "pop_pic_nomic", "ok", ok, False, NOMIC_PICTURE, 34)
    popup_layout(os.path.join(PAGES, "menu_pop_up_gall_full_hori.xml"), "The gallery is full, device held flat.",
                 "pop_sky_hori", "pop_card_full_hori", POP_CARD_H, "pop_pic_full", "back", back, False)
    popup_layout(os.path.join(PAGES, "menu_pop_up_gall_full_vert.xml"), "The gallery is full, device stood up.",
                 "pop_sky_vert", "pop_card_full_vert", POP_CARD_V, "pop_pic_full", "back", back, True)


if __name__ == "__main__":
    if not os.access(CONVERT, os.X_OK):
        sys.exit("make-recorder-ui: ImageMagick's convert is not installed (apt-get install imagemagick)")
    if not os.path.exists(FONT):
        sys.exit("make-recorder-ui: the font %s is missing (apt-get install fonts-dejavu-core)" % FONT)
    make_pictures()
    make_layouts()
