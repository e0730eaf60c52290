#!/usr/bin/env bash
# The walker, the second title, in solva-sim headless: the field's background
# from its WAF archive, the walker sprite walking where the child taps (turned to
# face its way, footsteps as sound cues on its animation's events), the effects
# turned on by the buttons, the panel following the device's rotation, the
# player's tune kits listed, "back" ending it. Screens compared pixel for pixel
# with the references, held flat and upright. Then a missing archive and a
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

# Held upright, with a tune kit downloaded: the buttons stand on the right, the
# kit is listed.
kit="$work/kits/tunes"
mkdir -p "$kit/Musics"
echo '{"packageId": "pkg.tunes", "packageType": "MicroMod", "tags": {"ModKitType": "Reelmarch"}}' > "$kit/meta.json"
: > "$kit/Musics/Lullaby.ogg"
: > "$kit/Musics/March.ogg"
run upright --params '{}' --mod "1:$kit" <<'SCRIPT'
rotate 1
frames 3
screenshot wv1-standing.png
tap 424 76            # Blend, where it stands upright
tap 424 156           # Glow
tap 100 220           # a walk down and to the left
wait 1.5
screenshot wv2-walking.png
rotate 0              # flat again: the buttons go back to the bottom
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
grep -qx 'walker: cannot open res/walker.waf; the field has no background' "$work/noarchive.out" ||
  fail "noarchive: no message"
case "$(answer noarchive)" in '{"3d":1,"sprites":1,"background":0,'*) ;; *) fail "noarchive: $(answer noarchive)" ;; esac

# A device whose EGL has no driver.
__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent run noegl --params '{}' <<'SCRIPT'
frames 5
SCRIPT
grep -qx 'walker: the device has no 3D context; nothing to show' "$work/noegl.out" || fail "noegl: no message"
[ "$(answer noegl)" = '{"3d":0,"sprites":0,"background":0,"tuneKits":0,"x":0,"y":0,"facing":4,"walking":0,"steps":0,"toggles":0,"effects":0,"finished":1}' ] ||
  fail "noegl: answer was $(answer noegl)"
echo "walker session: ok"
