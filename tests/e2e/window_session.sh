#!/usr/bin/env bash
# solva-sim in a real window, as a person meets it: under Xvfb, driven with real
# mouse and key events (xdotool). Skipped (exit 77) where Xvfb is not installed.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"

# The session: a touch at screen point (50, 50), a turn, F12, then "back".
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{}' --shots "$work/shots" \
  --answer "$work/answer.json" --mic none > "$work/out.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || { echo "FAIL: no window"; exit 1; }
touch_at "$wid" 50 50
sleep 0.2
xdotool key r
sleep 0.2
xdotool key F12
sleep 0.2
press Escape
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill $sim
  echo "FAIL: the session did not end"
  cat "$work/out.txt"
  exit 1
fi

fail() { echo "FAIL: $*"; cat "$work/out.txt"; exit 1; }
grep -q 'display backend sdl' "$work/out.txt" || fail "no window backend"
answer=$(cat "$work/answer.json")
case "$answer" in
  *'"taps":1,"lastTouch":[50,50],"buttons":"5","orientation":1,'*'"finished":1}') ;;
  *) fail "answer was $answer" ;;
esac
[ -s "$work/shots/solva-1.png" ] || fail "F12 wrote no screenshot"
# The PNG's size from its header: width 480 (0x1e0) and height 272 (0x110).
[ "$(od -An -tx1 -j16 -N8 "$work/shots/solva-1.png" | tr -d ' \n')" = "000001e000000110" ] || fail "screenshot size"
echo "window session: ok"
