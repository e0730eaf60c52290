#!/usr/bin/env bash
# Makes the walker title's resources from their sources in titles/walker/art/
# with the project's own tools: the sprites with sprite-builder, the fonts baked
# from DejaVu with fontbake, the WAF archive with `waf pack`, and the sound
# project with its sounds. The art itself is drawn by tools/make-walker-art.py.
#
#   tools/make-walker-res.sh [BUILD_DIR [OUT [ART]]]
#
# BUILD_DIR defaults to build/default (where the tools are built), OUT to
# titles/walker/res, which is replaced whole, ART to titles/walker/art.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build/default}
out=${2:-$here/titles/walker/res}
art=${3:-$here/titles/walker/art}
dejavu=/usr/share/fonts/truetype/dejavu
for tool in sprite-builder/sprite-builder fontbake/fontbake waf/waf; do
  [ -x "$build/tools/$tool" ] || { echo "make-walker-res: no $build/tools/$tool; build the tools first" >&2; exit 2; }
done

rm -rf "$out"
mkdir -p "$out/AnimatedSprites" "$out/Font" "$out/Sound"
for sprite in walker marker; do
  "$build/tools/sprite-builder/sprite-builder" "$art/$sprite.sprite" --out "$out/AnimatedSprites" --page-size 128 > /dev/null
done
# The first two of the system's four font slots; the others stay empty.
"$build/tools/fontbake/fontbake" --size 18 "$dejavu/DejaVuSans.ttf" "$out/Font/VTCurry_18" > /dev/null
"$build/tools/fontbake/fontbake" --size 20 "$dejavu/DejaVuSans-Bold.ttf" "$out/Font/VTCurry_20" > /dev/null
# The background and the texts (Texts.xml), read through the archive.
"$build/tools/waf/waf" pack "$out/walker.waf" "$art/pack"
cp "$art/Walker.soundproject" "$art"/sounds/*.wav "$out/Sound/"
