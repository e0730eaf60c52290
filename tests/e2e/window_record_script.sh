#!/usr/bin/env bash
# A session done by hand in a real window under Xvfb (real pointer and key
# events) with --record-script, then the script it wrote played back headless on a
# fresh device: the same last screenshot and the same gallery, byte for byte.
# Skipped where Xvfb is missing.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${PNGDIFF:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"
fail() { echo "FAIL: $*"; cat "$work/window.txt"; exit 1; }

"$SOLVA_SIM" --title "$STAGE_DIR/title" --root "$work/window" --params '{}' --mic tone --shots "$work/window-shots" \
  --record-script "$work/session.script" > "$work/window.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || fail "no window"
sleep 2                 # the panel pops in
touch_at "$wid" 80 30   # record
sleep 3
xdotool key r           # the device turns while recording
sleep 1
touch_at "$wid" 80 30   # stop: the clip is saved
sleep 1
xdotool key F12
sleep 0.5
kill -INT $sim          # the person closes the simulator
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill -9 $sim
  fail "the simulator did not end"
fi
grep -q 'on the frame clock' "$work/window.txt" || fail "a recorded session runs on the frame clock"
[ -s "$work/window-shots/solva-1.png" ] || fail "F12 wrote no screenshot"
grep -q '^down 80 30$' "$work/session.script" || fail "no touch recorded: $(cat "$work/session.script")"
grep -q '^rotate 1$' "$work/session.script" || fail "no turn recorded"
grep -q '^screenshot solva-1.png$' "$work/session.script" || fail "no screenshot recorded"

"$SOLVA_SIM" --title "$STAGE_DIR/title" --root "$work/replay" --params '{}' --mic tone --shots "$work/replay-shots" \
  --script "$work/session.script" > "$work/replay.txt" 2>&1 || fail "replay: $(tail -3 "$work/replay.txt")"
"$PNGDIFF" "$work/window-shots/solva-1.png" "$work/replay-shots/solva-1.png" || fail "the replay ends on another screen"
for folder in FileIndex Music; do
  diff -r "$work/window/LocalData/Shared/$folder" "$work/replay/LocalData/Shared/$folder" ||
    fail "the replay's $folder differs"
done
[ -f "$work/replay/LocalData/Shared/Music/vtwgaudio_1.wav" ] || fail "no clip"
echo "window record script: ok ($(grep -vc '^#' "$work/session.script") lines)"
