#!/usr/bin/env bash
# After a suspend and a resume, everything the recorder loads late still loads:
# solva-sim runs the title from its own folder, as the device's manager does, so
# the working folder that Suspend leaves behind is the title's. The pop-up that
# says recording cannot start (no microphone, or no room) in both orientations;
# a recording and its playback after a resume; and the speaker silent while the
# title is suspended.
set -euo pipefail
source "$(dirname "$0")/common.bash"

# The largest sample in [START, START + LENGTH) seconds of a WAV file, 0 to 1.
peak() { sox "$1" -n trim "$2" "$3" stat 2>&1 | awk '/^Maximum amplitude/ {print $3}'; }

# No microphone: the pop-up's layout and pictures are first read after the resume.
run nomic --params '{}' --mic none <<'SCRIPT'
wait 3
suspend
resume 2
tap 80 30
wait 1.5
screenshot c1-no-microphone.png
tap 366 192
wait 1
SCRIPT
grep -q 'NoMicrophoneScene::EnterScene() end' "$work/nomic.out" || fail "nomic: no pop-up"
[ "$(answer nomic)" = '{"filename":""}' ] || fail "nomic answer $(answer nomic)"
shot nomic c1-no-microphone.png

# No room when record is pressed: the same pop-up.
run noroom --params '{}' --mic tone <<'SCRIPT'
wait 3
free-bytes 0
suspend
resume 2
tap 80 30
wait 1.5
screenshot c9-no-room.png
tap 366 192
wait 1
SCRIPT
grep -q 'NoMicrophoneScene::EnterScene() end' "$work/noroom.out" || fail "noroom: no pop-up"
grep -q 'Widgets----Exit Microphone Widget------' "$work/noroom.out" || fail "noroom: the title did not end"
cmp -s "$work/nomic/screens/c1-no-microphone.png" "$work/noroom/screens/c9-no-room.png" ||
  fail "the pop-up differs between its two causes"

# Held upright, the pop-up (which has no upright layout) is drawn as it is.
run turned --params '{}' --mic none <<'SCRIPT'
rotate 1
wait 3
suspend
resume 1
tap 418 220
wait 1.5
screenshot c10-no-microphone-turned.png
exit 1
SCRIPT
grep -q 'NoMicrophoneScene::EnterScene() end' "$work/turned.out" || fail "turned: no pop-up"
shot turned c10-no-microphone-turned.png

# A recording and its playback after a resume; the clip is suspended while it
# plays: the speaker is silent for those 2 s and the clip goes on after them.
run sound --params '{}' --mic tone --speaker "$work/speaker.wav" <<'SCRIPT'
wait 3
suspend
resume 1
tap 80 30         # record, at 4 s of device time (the suspension's second counts)
wait 2.5
tap 80 30         # stop
wait 3
tap 346 30        # play, at 9.7 s
wait 1
suspend           # at 10.7 s, for 2 s
resume 2
wait 1
exit 1
SCRIPT
clip="$(music sound)/vtwgaudio_1.wav"
[ -f "$clip" ] || fail "sound: no clip after the resume"
# The speaker's file runs on device time, suspensions included.
out="$work/speaker.wav"
between "$(peak "$out" 10.2 0.45)" 0.3 1 || fail "sound: the clip is not heard before the suspension"
[ "$(peak "$out" 10.75 1.9)" = 0.000000 ] || fail "sound: the speaker is not silent while suspended ($(peak "$out" 10.75 1.9))"
between "$(peak "$out" 12.75 0.4)" 0.3 1 || fail "sound: the clip does not go on after the resume"
echo "recorder after resume: ok"
