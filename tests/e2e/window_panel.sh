#!/usr/bin/env bash
# The device panel beside the screen, clicked under Xvfb with the real pointer:
# its microphone toggle reaches the recorder as the USB event, its battery and
# turn toggles change the device, its screenshot toggle writes the screen alone.
# Skipped where Xvfb is missing.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"
fail() { echo "FAIL: $*"; cat "$work/out.txt"; exit 1; }

"$SOLVA_SIM" --title "$STAGE_DIR/title" --root "$work/device" --params '{}' --mic tone --shots "$work/shots" \
  > "$work/out.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || fail "no window"
sleep 2
panel_click "$wid" 0   # microphone: unplugged
sleep 0.5
panel_click "$wid" 2   # battery: low
sleep 0.3
panel_click "$wid" 1   # turn the device
sleep 0.3
panel_click "$wid" 4   # screenshot
sleep 0.5
kill -INT $sim
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill -9 $sim
  fail "the simulator did not end"
fi
grep -q 'solva-sim: microphone unplugged' "$work/out.txt" || fail "the toggle did not unplug the microphone"
grep -q '\[ZvMicrophone\]\[USB_Notify\] State 0, Driver 0, Supports 0' "$work/out.txt" ||
  fail "the recorder was not told the microphone went"
grep -q 'solva-sim: battery low' "$work/out.txt" || fail "no battery toggle"
grep -q 'solva-sim: the device turns to orientation 1' "$work/out.txt" || fail "no turn"
[ -s "$work/shots/solva-1.png" ] || fail "the screenshot toggle wrote nothing"
# The screen alone: 480 x 272, without the panel.
[ "$(od -An -tx1 -j16 -N8 "$work/shots/solva-1.png" | tr -d ' \n')" = "000001e000000110" ] || fail "screenshot size"
echo "window panel: ok"
