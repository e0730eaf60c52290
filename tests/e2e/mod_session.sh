#!/usr/bin/env bash
# Downloaded content in solva-sim: mod folders given with --mod before the title
# starts and with the script's "mod" while it runs; the mod test title loads them,
# says what each holds (the application's menu textures on the GL), and writes
# the marks, which the next start reads back. Mistakes in --mod stop the run.
set -euo pipefail
source "$(dirname "$0")/common.bash"
TITLE="$STAGE_DIR/modtitle"
src="$work/src"

# mod NAME PACKAGE KIT [EXTRA-TAGS]: a mod folder with its meta.json.
mod() {
  mkdir -p "$src/$1"
  printf '{"packageId": "%s", "packageType": "MicroMod", "tags": {"ModKitType": "%s"%s}}\n' \
    "$2" "$3" "${4:+, $4}" > "$src/$1/meta.json"
}
# tga FILE WIDTH HEIGHT: an uncompressed 32-bit picture, top-left origin, grey.
tga() {
  python3 -c 'import struct,sys; w,h=int(sys.argv[2]),int(sys.argv[3]); open(sys.argv[1],"wb").write(bytes([0,0,2,0,0,0,0,0,0,0,0,0])+struct.pack("<HHBB",w,h,32,0x20)+bytes([128,128,128,255])*(w*h))' "$@"
}

mod cards pkg.cards Notewright
mod toy pkg.toy Application '"AppSo": "libtoy.so"'
tga "$src/toy/TexFontDesc.tga" 16 8
tga "$src/toy/TexThumbnail.tga" 4 4
tga "$src/toy/TexAnimation.tga" 8 8
mod missions pkg.missions Scoopcam
cat > "$src/missions/MicroModsConfig.xml" <<'XML'
<MissionList>
  <Mission><MissionName>Zoo</MissionName><ElementNumber>5</ElementNumber></Mission>
</MissionList>
XML
mod late pkg.late Wigglo
echo '<MicroMods><BrushNumber>2</BrushNumber><StampNumber>3</StampNumber><FrameNumber>4</FrameNumber></MicroMods>' \
  > "$src/late/MicroModsConfig.xml"
mod other pkg.other Pewzone

run first --params '{}' --mod "1:$src/cards" --mod "1:$src/toy" --mod "1:$src/missions" --mod "2:$src/other" <<SCRIPT
frames 3
mod 1 $src/late       # a download while the title runs
click a               # the title looks again
click back
SCRIPT
out="$work/first.out"
grep -q "^solva-sim: player 1 has the mod $work/first/device/MicroDownloads/Player1/toy$" "$out" || fail "first: --mod"
grep -q "^solva-sim: player 2 has the mod $work/first/device/MicroDownloads/Player2/other$" "$out" || fail "first: player 2"
grep -q '^modtitle: 3 mods$' "$out" || fail "first: three mods at start ($(grep modtitle "$out"))"
grep -q '^modtitle: 4 mods$' "$out" || fail "first: four mods after the script's mod"
downloads="$work/first/device/MicroDownloads/Player1"
grep -qx "modtitle: Snipsy pkg.cards mark 1 $downloads/cards/Templates/" "$out" || fail "first: cards"
grep -qx "modtitle: Application pkg.toy mark 1 $downloads/toy/libtoy.so textures 16x8 4x4 8x8" "$out" ||
  fail "first: application ($(grep Application "$out"))"
grep -qx 'modtitle: Scoopcam pkg.missions mark 1 \[Zoo 5\]' "$out" || fail "first: missions"
grep -qx 'modtitle: Wigglo pkg.late mark 1 2 brushes 3 stamps 4 frames' "$out" || fail "first: late"
grep -q 'pkg.other' "$out" && fail "first: another player's mod was seen"
[ "$(answer first)" = '{"mods":4}' ] || fail "first: answer was $(answer first)"

# The marks: four records, each mark 2 (new, then one start counted), in load order.
marks="$(index first)/MicroModMarks.bin"
expected=$(python3 -c 'import struct
ids=["pkg.cards","pkg.late","pkg.missions","pkg.toy"]
print((struct.pack("<I",4)+b"".join(struct.pack("<I",len(i))+i.encode()+struct.pack("<i",2) for i in ids)).hex())')
[ "$(hex "$marks")" = "$expected" ] || fail "first: mark file $(hex "$marks")"

# The next start on the same device reads the marks back, with the reader's quirk:
# its buffer is not cleared between records, so "pkg.late" after "pkg.cards" and
# "pkg.toy" after "pkg.missions" (each shorter than the id before it) find no
# mod, and those two count as new again.
cp -r "$work/first" "$work/second-device"
"$SOLVA_SIM" --title "$TITLE" --root "$work/second-device/device" --params '{}' --script /dev/stdin \
  > "$work/second.out" 2>&1 <<'SCRIPT' || fail "second: solva-sim ended with status $?"
click back
SCRIPT
for seen in 'Snipsy pkg.cards mark 2' 'Application pkg.toy mark 1' 'Scoopcam pkg.missions mark 2' \
            'Wigglo pkg.late mark 1'; do
  grep -q "^modtitle: $seen " "$work/second.out" || fail "second: no '$seen' ($(grep modtitle "$work/second.out"))"
done

# Mistakes: a --mod without a player, a folder without meta.json.
status=0
"$SOLVA_SIM" --title "$TITLE" --root "$work/bad" --mod "$src/cards" --script /dev/null > "$work/bad.out" 2>&1 || status=$?
[ "$status" = 2 ] || fail "bad: status $status"
grep -q "^solva-sim: --mod takes PLAYER:DIR, e.g. --mod 1:mods/stickers, not $src/cards$" "$work/bad.out" || fail "bad: message"
mkdir -p "$src/bare"
status=0
"$SOLVA_SIM" --title "$TITLE" --root "$work/bare" --mod "1:$src/bare" --script /dev/null > "$work/bare.out" 2>&1 || status=$?
[ "$status" = 2 ] || fail "bare: status $status"
grep -q "^solva-sim: --mod: the mod folder $src/bare has no meta.json" "$work/bare.out" || fail "bare: message"
echo "mod session: ok"
