#!/usr/bin/env python3
"""Writes the seed corpus of every fuzz harness into fuzz/corpus/<harness>/.

Each seed is a small, valid example of what the harness reads, laid out as the
harness expects (see the comment at the top of each fuzz/<harness>_fuzz.cpp).
The inputs that fuzzing found, in fuzz/corpus/<harness>/found/, are kept.
Run from anywhere: python3 tools/make-fuzz-seeds.py
"""
import os
import struct

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
CORPUS = os.path.join(ROOT, "fuzz", "corpus")


def u32(*values):
    return b"".join(struct.pack("<I", v & 0xFFFFFFFF) for v in values)


def i32(*values):
    return b"".join(struct.pack("<i", v) for v in values)


def f32(value):
    return struct.pack("<f", value)


def name(text):
    return u32(len(text)) + text.encode()


def source(path):
    with open(os.path.join(ROOT, path), "rb") as f:
        return f.read()


VERSION = 9213426
AUDIO, PHOTO, SCRAPBOOK, FOLDER_AUDIO = 1, 0, 4, 8


def index_bin(type_, records):
    return u32(VERSION if type_ < 7 else 0) + i32(len(records)) + b"".join(records)


def seeds():
    s = {}
    audio = index_bin(AUDIO, [i32(1, AUDIO, 0) + f32(2.5), i32(3, AUDIO, 1) + f32(0.25)])
    s["index"] = {
        "audio.bin": bytes([AUDIO]) + audio,
        "photo.bin": bytes([PHOTO]) + index_bin(PHOTO, [i32(2, PHOTO, 0, 640, 480)]),
        "story.bin": bytes([SCRAPBOOK]) + index_bin(SCRAPBOOK, [i32(4, SCRAPBOOK, 0, 2) + name("/x/SD-1-4")]),
        "folder-audio.bin": bytes([FOLDER_AUDIO]) + index_bin(FOLDER_AUDIO, [i32(1, FOLDER_AUDIO, 0) + name("a.wav")]),
        "short.bin": bytes([AUDIO]) + audio[:21],
        "audio.xml": bytes([0x80 | AUDIO]) + b'<WidgetAudio Version="9213426"><AudioItem ResID="1" Type="1" '
        b'ViewMode="0" Length="2.5"/><AudioItem ResID="5" Type="1" ViewMode="1" Length="1"/></WidgetAudio>',
        "photo.xml": bytes([0x80 | PHOTO]) + b'<WidgetPhoto Version="9213426"><PhotoItem ResID="2" Type="0" '
        b'ViewMode="0" ImgWidth="640" ImgHeight="480"/></WidgetPhoto>',
    }
    s["resid"] = {
        "whole": u32(0x00444952, 4, 7, 2, 0, 1, 0, 0, 0, 3),
        "short": u32(0x00444952, 4, 7),
        "foreign": u32(0x12345678, 1, 2),
    }
    s["check_file"] = {
        "create": bytes([AUDIO, 12]) + i32(1, AUDIO, 1) + audio,
        "delete": bytes([AUDIO, 12]) + i32(2, AUDIO, 3) + audio,
        "not-ours": bytes([PHOTO, 5]) + b"hello" + index_bin(PHOTO, []),
    }
    meta = source("src/meta.json")
    upload = b"/root/LocalData/Shared/Music/vtwgaudio_1.wav\n/root/LocalData/Shared/Music/vtwgaudio_2.wav\n"
    s["upload_list"] = {
        "audio": bytes([3, len(upload)]) + upload + meta,
        "photo-no-meta": bytes([0, 0]),
        "story": bytes([4, 4]) + b"a\r\nb",
    }
    s["metadata"] = {"title": meta, "upload": b'{"packageId":"X","tags":{"OptionalUpload":"1"}}'}
    s["launch"] = {
        "empty": b"{}",
        "placed": b'{"viewmode": 0, "positionX": 120, "positionY": 40, "limittime": 5}',
        "vertical": b'{"viewmode": 1, "positionPX": 30, "positionPY": 300, "folderpath": "/tmp/clips"}',
        "clip": b'{"audiofilename": "/nonexistent/clip.wav"}',
    }
    data = bytes(3200)
    wav = b"RIFF" + u32(36 + len(data)) + b"WAVEfmt " + u32(16) + struct.pack("<HHIIHH", 1, 1, 16000, 32000, 2, 16)
    s["clip"] = {
        "canonical.wav": wav + b"data" + u32(len(data)) + data,
        "no-sample-size.wav": wav[:22] + bytes(14) + b"data" + u32(8) + bytes(8),
        "not-riff.wav": b"RIFX" + wav[4:] + b"data" + u32(0),
    }
    s["layout"] = {
        "paint-save.xml": source("res/UI/Page/menu_paint_save.xml"),
        "panel.xml": source("res/UI/Page/menu_mic_widget.xml"),
    }
    s["sound_project"] = {"recorder.soundproject": source("res/Sound/MicrophoneWidget.soundproject")}
    s["np2t"] = {
        "tiles": u32(0x4E503254) + i32(40, 20, 3) + i32(0, 0, 16, 8, 30, 4, 16, 8, -8, 15, 16, 8),
        "no-tiles": u32(0x4E503254) + i32(4, 4, 0),
    }
    s["dds"] = {
        "rgb": bytes([0, 1, 1]) + bytes(range(12)),
        "rgba": bytes([1, 1, 0]) + bytes(range(16)),
        "dxt1": bytes([2, 4, 3]) + bytes([0x00, 0xF8, 0x1F, 0x00, 0xE4, 0x1B, 0x55, 0xAA] * 2),
        "dxt3": bytes([3, 3, 3]) + bytes(range(16)),
        "dxt5": bytes([4, 7, 3]) + bytes([255, 0, 0x49, 0x92, 0x24, 0x49, 0x92, 0x24] + list(range(8))) * 2,
    }
    # The older harnesses.
    s["config_par"] = {"CamCfg.par": source("res/CamCfg.par")}
    s["config_xml"] = {"CamCfg.xml": source("res/CamCfg.xml")}
    s["script"] = {"record-and-play.script": source("host/demo/record-and-play.script")}
    s["json"] = {"meta.json": meta, "params": b'{"positionX": 10, "folderpath": "a\\u00e9", "list": [1, 2.5, null, true]}'}
    tga = bytes([0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 2, 0, 32, 0x28]) + bytes(range(16))
    bmp_pixels = bytes([0, 0, 255, 0, 255, 0, 0, 0])  # two rows of one pixel, padded to four bytes
    bmp = (b"BM" + u32(54 + len(bmp_pixels), 0, 54) + u32(40) + i32(1, 2) + struct.pack("<HH", 1, 24) +
           u32(0, len(bmp_pixels), 2835, 2835, 0, 0) + bmp_pixels)
    s["image"] = {"two-by-two.tga": bytes([1]) + tga, "one-by-two.bmp": bytes([0]) + bmp}
    return s


def main():
    for harness, files in seeds().items():
        folder = os.path.join(CORPUS, harness)
        os.makedirs(folder, exist_ok=True)
        # The inputs fuzzing found (found/) stay: each is replayed at every run.
        for old in os.listdir(folder):
            if os.path.isfile(os.path.join(folder, old)):
                os.remove(os.path.join(folder, old))
        for file_name, content in files.items():
            with open(os.path.join(folder, file_name), "wb") as f:
                f.write(content)


if __name__ == "__main__":
    main()
