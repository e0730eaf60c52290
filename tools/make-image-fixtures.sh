#!/usr/bin/env bash
# Regenerates the picture fixtures of the image tests, and beside each one the
# pixels ImageMagick decodes from it (X.rgba: 8-bit R, G, B, A, rows top to bottom),
# which the tests hold our decoders against.
#
#   tools/make-image-fixtures.sh            (writes tests/images/fixtures/)
#
# Needs ImageMagick 6 (Debian's imagemagick) and python3. Only this script needs
# them; the tests read the committed files.
set -euo pipefail

out="$(cd "$(dirname "$0")/.." && pwd)/tests/images/fixtures"
convert=/usr/bin/convert
[ -x "$convert" ] || { echo "make-image-fixtures: ImageMagick's convert is not installed (apt-get install imagemagick)" >&2; exit 1; }
mkdir -p "$out"
cd "$out"

# The source: 37 x 23 (odd sizes, so rows and blocks do not come out even), two
# crossed gradients, a yellow disc, a dark box, a light diagonal, and an alpha
# channel with a clear box and a half-clear disc.
"$convert" -size 23x37 gradient:'#ff2000-#0030ff' -rotate 90 \
  \( -size 37x23 gradient:'#00ff00-#400060' \) -compose blend -define compose:args=50 -composite \
  -fill '#ffff00' -draw 'circle 10,11 16,11' -fill '#101010' -draw 'rectangle 24,3 33,9' \
  -fill white -draw 'line 0,22 36,0' \
  \( -size 37x23 xc:white -fill black -draw 'rectangle 20,14 30,20' -fill gray50 -draw 'circle 5,18 8,18' -alpha off \) \
  -compose CopyOpacity -composite -strip PNG32:source.png

# BMP, version 3 headers (40 bytes), bottom-up rows. 24-bit rows of a width of 36
# need no padding; a width of 3 does (9 bytes padded to 12).
"$convert" source.png -crop 36x23+0+0 +repage -alpha off -type TrueColor -strip BMP3:bmp24_36x23.bmp
"$convert" source.png -crop 3x5+9+9 +repage -alpha off -type TrueColor -strip BMP3:bmp24_3x5_padded.bmp
"$convert" source.png -define bmp3:alpha=true -type TrueColorAlpha -strip BMP3:bmp32_37x23.bmp

# TGA: 24 and 32 bits, raw and run-length, origin bottom-left and top-left. Both
# show the source picture: ImageMagick stores the rows as they are and only marks
# the origin, so the bottom-left files are made from the picture turned over.
for depth in 24 32; do
  if [ $depth = 24 ]; then kind=(-alpha off -type TrueColor); else kind=(-type TrueColorAlpha); fi
  for enc in raw rle; do
    if [ $enc = raw ]; then comp=None; else comp=RLE; fi
    "$convert" source.png -flip "${kind[@]}" -compress $comp -orient BottomLeft -strip tga${depth}_${enc}_bottomleft.tga
    "$convert" source.png "${kind[@]}" -compress $comp -orient TopLeft -strip tga${depth}_${enc}_topleft.tga
  done
done

# DDS without mipmaps: DXT1 and DXT5 as ImageMagick writes them. It writes no
# DXT3, so that one is made from the DXT5 file: the same colour blocks, and each
# pixel's alpha as the top four bits of the source's.
"$convert" source.png -alpha off -define dds:compression=dxt1 -define dds:mipmaps=0 -strip dxt1_37x23.dds
"$convert" source.png -define dds:compression=dxt5 -define dds:mipmaps=0 -strip dxt5_37x23.dds
"$convert" source.png -depth 8 rgba:source.rgba
python3 - <<'PY'
import struct
w, h = 37, 23
src = open("source.rgba", "rb").read()
dds = bytearray(open("dxt5_37x23.dds", "rb").read())
assert dds[84:88] == b"DXT5"
dds[84:88] = b"DXT3"
blocks = dds[128:]
bw, bh = (w + 3) // 4, (h + 3) // 4
for by in range(bh):
    for bx in range(bw):
        at = (by * bw + bx) * 16
        bits = 0
        for k in range(16):
            x, y = bx * 4 + k % 4, by * 4 + k // 4
            a = src[(y * w + x) * 4 + 3] if x < w and y < h else 255
            bits |= (a >> 4) << (4 * k)
        blocks[at:at + 8] = struct.pack("<Q", bits)
dds[128:] = blocks
open("dxt3_37x23.dds", "wb").write(bytes(dds))
PY

# JPEG, colour (4:2:0) and grey.
"$convert" source.png -alpha off -quality 90 -sampling-factor 2x2 -strip jpeg_colour_37x23.jpg
"$convert" source.png -alpha off -colorspace Gray -quality 90 -strip jpeg_grey_37x23.jpg

# ImageMagick's own reading of every fixture, turned by the origin the file names.
for f in *.bmp *.tga *.dds *.jpg; do
  "$convert" "$f" -auto-orient -depth 8 rgba:"$f.rgba"
done
echo "make-image-fixtures: wrote $(ls | wc -l) files to $out"
