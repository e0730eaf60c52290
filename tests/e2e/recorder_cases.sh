#!/usr/bin/env bash
# The recorder's harder moments through solva-sim: no microphone, a full gallery,
# the hardware back button, an unplug while recording, a time limit, suspend and
# resume, a clip to open, a panel placed by the launcher, and a vertical-only view.
set -euo pipefail
source "$(dirname "$0")/common.bash"

# No microphone: record leads to the pop-up above the frozen panel; "ok" ends.
run nomic --params '{}' --mic none <<'SCRIPT'
wait 3
tap 80 30
wait 1.5
screenshot c1-no-microphone.png
tap 366 192
wait 1
SCRIPT
[ "$(answer nomic)" = '{"filename":""}' ] || fail "nomic answer $(answer nomic)"
grep -q 'NoMicrophoneScene::EnterScene() end' "$work/nomic.out" || fail "no pop-up"
shot nomic c1-no-microphone.png

# A full gallery at the start: the pop-up with its cue; "back" ends the title.
run full --params '{}' --free-bytes 0 <<'SCRIPT'
wait 2
screenshot c2-gallery-full.png
tap 366 192
wait 1
SCRIPT
[ "$(answer full)" = '{}' ] || fail "full answer $(answer full)"
grep -q 'Widgets----Exit Microphone Widget------' "$work/full.out" || fail "full: the title did not end"
shot full c2-gallery-full.png

# The hardware back button pops the panel: nothing is left to update or draw,
# and the title waits until the manager ends it.
run back --params '{}' --mic tone <<'SCRIPT'
wait 3
tap 80 30
wait 2
click back
wait 1
screenshot c3-after-back.png
exit 1
SCRIPT
clip="$(music back)/vtwgaudio_1.wav"
[ -f "$clip" ] || fail "back: the recording in progress was not saved"
[ "$(answer back)" = "{\"filename\":\"$clip\"}" ] || fail "back answer $(answer back)"
shot back c3-after-back.png

# The microphone unplugged while recording: the clip so far is kept.
run unplug --params '{}' --mic tone <<'SCRIPT'
wait 3
tap 80 30
wait 2.6
mic unplug
wait 1
screenshot c4-unplugged.png
tap 30 30
wait 2
SCRIPT
clip="$(music unplug)/vtwgaudio_1.wav"
between "$(duration "$clip")" 1.85 2.0 || fail "unplug: clip of $(duration "$clip") s"
grep -q 'Stop microphone works.' "$work/unplug.out" || fail "unplug: the microphone did not stop"
shot unplug c4-unplugged.png

# A limit of 2 seconds ends the recording one frame after 2.1 s.
run limit --params '{"limittime": 2}' --mic tone <<'SCRIPT'
wait 3
tap 80 30
wait 4
tap 30 30
wait 2
SCRIPT
between "$(duration "$(music limit)/vtwgaudio_1.wav")" 2.1 2.2 || fail "limit: $(duration "$(music limit)/vtwgaudio_1.wav") s"

# Ten minutes away in the middle of a recording are not in the clip.
run away --params '{}' --mic tone <<'SCRIPT'
wait 3
tap 80 30
wait 1.6
suspend
resume 600
wait 1
tap 80 30
wait 1
tap 30 30
wait 2
SCRIPT
between "$(duration "$(music away)/vtwgaudio_1.wav")" 1.95 2.1 || fail "away: $(duration "$(music away)/vtwgaudio_1.wav") s"

# A clip to open: play is there from the start, with no record hint; the answer
# is the clip that was given.
sox -n -r 16000 -c 1 -b 16 "$work/three.wav" synth 3 sine 440 vol 0.5
run open --params "{\"audiofilename\": \"$work/three.wav\"}" <<'SCRIPT'
wait 3
screenshot c5-clip-to-open.png
tap 346 30
wait 1
tap 30 30
wait 2
SCRIPT
grep -q 'Audio Length: 3000 ms' "$work/open.out" || fail "open: the clip's length was not read"
[ "$(answer open)" = "{\"audiofilename\":\"$work/three.wav\",\"filename\":\"$work/three.wav\"}" ] ||
  fail "open answer $(answer open)"
shot open c5-clip-to-open.png

# A missing clip and a file without a RIFF header leave the scene without a clip.
run missing --params "{\"audiofilename\": \"$work/none.wav\"}" <<'SCRIPT'
wait 1
exit 1
SCRIPT
grep -q "Can't open audio file $work/none.wav" "$work/missing.out" || fail "missing clip not reported"
printf 'not a sound' > "$work/bad.wav"
run bad --params "{\"audiofilename\": \"$work/bad.wav\"}" <<'SCRIPT'
wait 1
exit 1
SCRIPT
grep -q 'Bad RIFF or WAVE.' "$work/bad.out" || fail "bad header not reported"

# The launcher places the panel, out-of-range values are clamped; vertical only.
run placed --params '{"positionX": 40, "positionY": 1000, "viewmode": 1}' --mic tone <<'SCRIPT'
wait 3
screenshot c6-placed-vertical-only.png
rotate 1
wait 1
screenshot c7-vertical-only-turned.png
exit 1
SCRIPT
shot placed c6-placed-vertical-only.png
shot placed c7-vertical-only-turned.png

run moved --params '{"positionX": 40, "positionY": 1000}' --mic tone <<'SCRIPT'
wait 3
screenshot c8-placed.png
exit 1
SCRIPT
shot moved c8-placed.png
echo "recorder cases: ok"
