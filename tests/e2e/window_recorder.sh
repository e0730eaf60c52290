#!/usr/bin/env bash
# A child's session with the recorder in a real window under Xvfb, with real
# pointer and key events: record, stop, play, then the hardware back button; the
# clip is in the gallery and the answer names it. Skipped where Xvfb is missing.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"
fail() { echo "FAIL: $*"; cat "$work/out.txt"; exit 1; }

"$SOLVA_SIM" --title "$STAGE_DIR/title" --root "$work/device" --params '{}' --shots "$work/shots" \
  --answer "$work/answer.json" --mic tone > "$work/out.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || fail "no window"
sleep 2                # the panel pops in
touch_at "$wid" 80 30  # record; the capture starts after the record cue
sleep 3
touch_at "$wid" 80 30  # stop: the clip is saved
sleep 1
xdotool key F12
sleep 3
touch_at "$wid" 346 30 # play
sleep 1
press Escape           # the hardware back button: the panel goes
sleep 0.5
kill -INT $sim         # the person closes the simulator
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill -9 $sim
  fail "the simulator did not end"
fi

clip="$work/device/LocalData/Shared/Music/vtwgaudio_1.wav"
[ -f "$clip" ] || fail "no clip in the gallery"
# Three seconds between the taps, less the record cue; real time is not exact,
# and under the sanitizers on a busy machine a tap can wait seconds for its frame.
# The clip's exact length is the headless sessions' to check.
length=$(soxi -D "$clip")
awk -v v="$length" 'BEGIN { exit !(v > 1.0 && v < 8.0) }' || fail "a clip of $length s"
[ "$(cat "$work/answer.json")" = "{\"filename\":\"$clip\"}" ] || fail "answer $(cat "$work/answer.json")"
grep -q 'record!' "$work/out.txt" || fail "record was not pressed"
grep -q '\[Play Record Voice\]' "$work/out.txt" || fail "play was not pressed"
[ -s "$work/shots/solva-1.png" ] || fail "F12 wrote no screenshot"
echo "window recorder: ok"
