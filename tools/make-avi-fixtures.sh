#!/usr/bin/env bash
# Regenerates the video fixtures of the media store's tests: small MJPEG AVI files
# made by ffmpeg, and beside each one the first frame as ffmpeg itself takes it out
# of the file (X.first.jpg, a stream copy of the first video packet), which the
# tests hold the store's own RIFF walk against.
#
#   tools/make-avi-fixtures.sh            (writes tests/media/data/avi/)
#
#   clip_info_junk.avi   96 x 64, 25 fps, 5 frames; at the top level a list of the
#                        header, a list of another type ("INFO", from a title tag)
#                        and a "JUNK" chunk come before the "movi" list
#   clip_nojunk.avi      the same picture, no tag, and the "JUNK" chunk taken out
#   clip_oddframe.avi    80 x 60, 30000/1001 fps, 7 frames; the first frame chunk
#                        has an odd size, so a pad byte follows it
#   clip_truncated.avi   clip_nojunk.avi cut two bytes into the "movi" list, before
#                        any frame
#
# Needs ffmpeg and python3. Only this script needs them; the tests read the
# committed files (and ask ffprobe for the length where it is installed).
set -euo pipefail

out="$(cd "$(dirname "$0")/.." && pwd)/tests/media/data/avi"
command -v ffmpeg >/dev/null || { echo "make-avi-fixtures: ffmpeg is not installed (apt-get install ffmpeg)" >&2; exit 1; }
mkdir -p "$out"
cd "$out"
rm -f ./*.avi ./*.first.jpg

# bitexact keeps the encoder's name and version out of the files, so the same
# ffmpeg makes the same bytes.
exact=(-fflags +bitexact -flags:v +bitexact)

# make NAME SIZE RATE FRAMES PARITY [ffmpeg options...]: encodes the test picture,
# raising the quantiser from 3 until the first frame's size has the wanted parity.
make() {
  local name=$1 size=$2 rate=$3 frames=$4 parity=$5
  shift 5
  for q in $(seq 3 31); do
    ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=$size:rate=$rate" -frames:v "$frames" \
      -c:v mjpeg -pix_fmt yuvj420p -q:v "$q" "${exact[@]}" "$@" "$name.avi"
    if [ "$(python3 "$walk" first-size "$name.avi")" -eq "$parity" ]; then return 0; fi
  done
  echo "make-avi-fixtures: no quantiser gives $name.avi a first frame of parity $parity" >&2
  exit 1
}

walk="$(mktemp)"
trap 'rm -f "$walk"' EXIT
cat >"$walk" <<'PY'
# first-size FILE: the parity of the first frame chunk's size.
# drop-junk FILE: takes the top-level "JUNK" chunks out and mends the RIFF size.
# The frame index ("idx1") counts from the "movi" list, so it stays right.
import struct, sys
what, path = sys.argv[1], sys.argv[2]
data = bytearray(open(path, "rb").read())
assert data[0:4] == b"RIFF" and data[8:12] == b"AVI "
def chunks(start, end):
    at = start
    while at + 8 <= end:
        code, size = bytes(data[at:at + 4]), struct.unpack_from("<I", data, at + 4)[0]
        yield at, code, size
        at += 8 + size + (size & 1)
if what == "first-size":
    for at, code, size in chunks(12, len(data)):
        if code == b"LIST" and data[at + 8:at + 12] == b"movi":
            _, code, size = next(chunks(at + 12, at + 8 + size))
            assert code[2:] == b"dc"
            print(size & 1)
            break
elif what == "drop-junk":
    junk = [(at, 8 + size + (size & 1)) for at, code, size in chunks(12, len(data)) if code == b"JUNK"]
    assert junk
    for at, length in reversed(junk):
        del data[at:at + length]
    struct.pack_into("<I", data, 4, len(data) - 8)
    open(path, "wb").write(data)
PY

make clip_info_junk 96x64 25 5 0 -metadata title="gallery clip"
make clip_nojunk 96x64 25 5 0
python3 "$walk" drop-junk clip_nojunk.avi
make clip_oddframe 80x60 30000/1001 7 1

# Cut two bytes after the "movi" word: the file ends inside the list, before the
# first frame's code is whole.
movi=$(grep -abo movi clip_nojunk.avi | head -1 | cut -d: -f1)
head -c $((movi + 4 + 2)) clip_nojunk.avi >clip_truncated.avi

# ffmpeg's own reading of each whole file's first frame.
for f in clip_info_junk clip_nojunk clip_oddframe; do
  ffmpeg -hide_banner -loglevel error -y -i "$f.avi" -frames:v 1 -c:v copy -f image2 "$f.first.jpg"
done
echo "make-avi-fixtures: wrote $(ls | wc -l) files to $out"
