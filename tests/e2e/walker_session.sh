#!/usr/bin/env bash
# The walker, the second title, in solva-sim headless: the field's background
# from its WAF archive, the walker sprite walking where the child taps (turned to
# face its way, footsteps as sound cues on its animation's events), the effects
# turned on by the buttons, the panel following the device's rotation, the
# player's tune kits listed, "back" ending it; drawn and touched on the screen
# as held, turned as the canvas turns images. Screens compared pixel for pixel
# with the references, held flat, upright and upright upside down. Then a
# missing archive, texts of the archive changed, broken and cut short, and a
# device without 3D.
set -euo pipefail
source "$(dirname "$0")/common.bash"
TITLE="$STAGE_DIR/walker"

# The plug-in exports CreateApp and nothing else.
exports=$(nm -D --defined-only "$TITLE/libWalker.so" | awk '{ print $3 }')
[ "$exports" = CreateApp ] || fail "libWalker.so exports: $exports"

# Held flat: a walk to the right, the three effects, a walk back to the left.
run flat --params '{}' --speaker "$work/flat-speaker.wav" <<'SCRIPT'
frames 3              # the third frame is the first that draws
screenshot w1-standing.png
tap 400 200           # turns right (its default way) and walks
wait 1
screenshot w2-walking.png
wait 2.5              # there, and standing
tap 176 248           # Blend
tap 280 248           # Trail
tap 384 248           # Glow
tap 80 120            # turns left, walks with every effect on
wait 0.7
screenshot w3-effects.png
tap 384 248           # Glow off again
wait 4                # there
click back
frames 5              # the title has gone: these run no frame
SCRIPT
shot flat w1-standing.png
shot flat w2-walking.png
shot flat w3-effects.png
# Feet at the tap: the walker's centre stands 20 pixels above it.
[ "$(answer flat)" = '{"3d":1,"sprites":1,"background":1,"tuneKits":0,"x":80,"y":100,"facing":6,"walking":0,"steps":21,"toggles":4,"effects":3,"finished":1}' ] ||
  fail "flat: answer was $(answer flat)"
# The footsteps and bells reached the speaker.
peak=$(sox "$work/flat-speaker.wav" -n stat 2>&1 | awk '/Maximum amplitude/ { print $3 }')
between "$peak" 0.05 1 || fail "flat: the speaker stayed silent (peak $peak)"

# Held upright, with a tune kit downloaded: the screen as held is 272 x 480,
# logical (X, Y) on the framebuffer's (479 - Y, X), as the canvas turns images.
# The buttons lie in a row at its bottom, the texts wrap to its width.
kit="$work/kits/tunes"
mkdir -p "$kit/Musics"
echo '{"packageId": "pkg.tunes", "packageType": "MicroMod", "tags": {"ModKitType": "Reelmarch"}}' > "$kit/meta.json"
: > "$kit/Musics/Lullaby.ogg"
: > "$kit/Musics/March.ogg"
run upright --params '{}' --mod "1:$kit" <<'SCRIPT'
rotate 1
frames 3
screenshot wv1-standing.png
tap 23 48             # Blend, logical (48, 456)
tap 23 224            # Glow, logical (224, 456)
tap 279 40            # a walk up and to the left, to logical (40, 200)
wait 1.5
screenshot wv2-walking.png
rotate 0              # flat again: still walking, kept on the lower screen
frames 2
screenshot wv3-flat-again.png
click back
SCRIPT
shot upright wv1-standing.png
shot upright wv2-walking.png
shot upright wv3-flat-again.png
case "$(answer upright)" in
  '{"3d":1,"sprites":1,"background":1,"tuneKits":1,'*'"facing":6,"walking":1,'*'"toggles":2,"effects":5,"finished":1}') ;;
  *) fail "upright: answer was $(answer upright)" ;;
esac

# Upright upside down: logical (X, Y) on the framebuffer's (Y, 271 - X). Trail
# on, a walk to logical (200, 250), then "up" is up on the screen as held.
run upsidedown --params '{}' <<'SCRIPT'
rotate 3
frames 3
tap 456 135           # Trail, logical (136, 456)
tap 250 71            # to logical (200, 250): feet there
wait 1
screenshot wu1-upside-down.png
wait 1.5
click up
wait 1
click back
SCRIPT
shot upsidedown wu1-upside-down.png
[ "$(answer upsidedown)" = '{"3d":1,"sprites":1,"background":1,"tuneKits":0,"x":200,"y":182,"facing":4,"walking":0,"steps":8,"toggles":1,"effects":2,"finished":1}' ] ||
  fail "upsidedown: answer was $(answer upsidedown)"

# Arrows send the walker a stride; up then right ends 48 pixels up and right.
# No button is pressed: what the speaker hears is the footsteps alone.
run arrows --params '{}' --speaker "$work/arrows-speaker.wav" <<'SCRIPT'
frames 3
click up
wait 1
click right
wait 1
click back
SCRIPT
[ "$(answer arrows)" = '{"3d":1,"sprites":1,"background":1,"tuneKits":0,"x":288,"y":102,"facing":4,"walking":0,"steps":4,"toggles":0,"effects":0,"finished":1}' ] ||
  fail "arrows: answer was $(answer arrows)"
peak=$(sox "$work/arrows-speaker.wav" -n stat 2>&1 | awk '/Maximum amplitude/ { print $3 }')
between "$peak" 0.05 1 || fail "arrows: no footstep reached the speaker (peak $peak)"

# The window test's reference, made headless by the same steps.
run window --params '{}' < "$SOURCE_DIR/tests/e2e/walker_window.script"
shot window ww-window.png

# Without its archive the title says so and walks on a bare field.
cp -r "$TITLE" "$work/noarchive-title"
rm "$work/noarchive-title/res/walker.waf"
TITLE="$work/noarchive-title" run noarchive --params '{}' <<'SCRIPT'
frames 3
click back
SCRIPT
grep -qx 'walker: cannot open res/walker.waf; the field has no background and the texts are built in' "$work/noarchive.out" ||
  fail "noarchive: no message"
case "$(answer noarchive)" in '{"3d":1,"sprites":1,"background":0,'*) ;; *) fail "noarchive: $(answer noarchive)" ;; esac

# The texts come from Texts.xml in the archive: other words there draw another
# screen; a file that does not parse, or lacks a text, is named in one line and
# the built-in texts stand in.
# texts NAME < XML: a session with the archive packed from the background and XML.
texts() {
  mkdir -p "$work/$1-pack"
  cp "$SOURCE_DIR/titles/walker/art/pack/Background.tga" "$work/$1-pack/"
  cat > "$work/$1-pack/Texts.xml"
  cp -r "$TITLE" "$work/$1-title"
  "$BUILD_DIR/tools/waf/waf" pack "$work/$1-title/res/walker.waf" "$work/$1-pack" > /dev/null
  TITLE="$work/$1-title" run "$1" --params '{}' <<'SCRIPT'
frames 3
screenshot w1-standing.png
click back
SCRIPT
}
texts otherwords <<'XML'
<Texts><Help>Touch the grass</Help><Blend>Mix</Blend><Trail>Tail</Trail><Glow>Shine</Glow>
<TuneKits>Tunes:</TuneKits><NoTuneKits>No tunes</NoTuneKits><Steps>Paces:</Steps></Texts>
XML
! "$PNGDIFF" "$SCREENS/w1-standing.png" "$work/otherwords/screens/w1-standing.png" > /dev/null 2>&1 ||
  fail "otherwords: the texts of the archive were not drawn"
! grep -q 'built-in' "$work/otherwords.out" || fail "otherwords: $(grep built-in "$work/otherwords.out")"
texts broken <<'XML'
<Texts><Help>Tap</Texts>
XML
grep -qx 'walker: Texts.xml in res/walker.waf does not parse (Error reading end tag. at line 1); the built-in texts are used' \
  "$work/broken.out" || fail "broken: no message ($(grep walker: "$work/broken.out"))"
shot broken w1-standing.png  # the built-in texts are the archive's own
texts short <<'XML'
<Texts><Help>Tap the field and the walker goes there</Help><Blend>Blend</Blend><Trail>Trail</Trail>
<TuneKits>Tune kits:</TuneKits><NoTuneKits>Tune kits: none</NoTuneKits></Texts>
XML
grep -qx 'walker: Texts.xml in res/walker.waf has no <Glow>, <Steps>; the built-in texts are used' "$work/short.out" ||
  fail "short: no message ($(grep walker: "$work/short.out"))"
shot short w1-standing.png

# A device whose EGL has no driver.
__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent run noegl --params '{}' <<'SCRIPT'
frames 5
SCRIPT
grep -qx 'walker: the device has no 3D context; nothing to show' "$work/noegl.out" || fail "noegl: no message"
[ "$(answer noegl)" = '{"3d":0,"sprites":0,"background":0,"tuneKits":0,"x":0,"y":0,"facing":4,"walking":0,"steps":0,"toggles":0,"effects":0,"finished":1}' ] ||
  fail "noegl: answer was $(answer noegl)"
echo "walker session: ok"
