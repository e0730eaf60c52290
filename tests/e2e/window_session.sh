#!/usr/bin/env bash
# solva-sim in a real window, as a person meets it: under Xvfb, driven with real
# mouse and key events (xdotool). Skipped (exit 77) where Xvfb is not installed.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
if ! command -v Xvfb > /dev/null || ! command -v xdotool > /dev/null; then
  echo "skipped: Xvfb and xdotool are not installed"
  exit 77
fi
work=$(mktemp -d)
xvfb=""
trap 'if [ -n "$xvfb" ]; then kill $xvfb 2>/dev/null; fi; rm -rf "$work"' EXIT

# A virtual screen of our own; it tells its display number when it is ready.
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3> "$work/display" 2> "$work/xvfb.log" &
xvfb=$!
for i in $(seq 100); do
  [ -s "$work/display" ] && break
  sleep 0.05
done
[ -s "$work/display" ] || { echo "FAIL: Xvfb did not start"; cat "$work/xvfb.log"; exit 1; }
export DISPLAY=":$(cat "$work/display")"

cat > "$work/drive.sh" <<DRIVE
set -eu
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{}' --shots "$work/shots" \
  --answer "$work/answer.json" --mic none > "$work/out.txt" 2>&1 &
sim=\$!
# The window, once it is on the screen; then it gets the keyboard.
wid=\$(timeout 20 xdotool search --sync --onlyvisible --name 'solva-sim' | head -1)
[ -n "\$wid" ] || { echo "no window"; kill \$sim; exit 1; }
# Without a window manager the keyboard goes where it is put, once the window
# has settled.
sleep 1
xdotool windowfocus --sync \$wid
sleep 0.2
# A touch held over several frames, at window pixel (132, 132): the device frame
# is 32 pixels at scale 2, so the screen point is (50, 50). Real pointer and key
# events, as a person's would be.
xdotool mousemove --sync --window \$wid 132 132
xdotool mousedown 1
sleep 0.3
xdotool mouseup 1
sleep 0.2
xdotool key r
sleep 0.2
xdotool key F12
sleep 0.2
# A press held over a few frames: a press and release between two frames
# leaves no trace on the device, as a person's never does.
xdotool keydown Escape
sleep 0.2
xdotool keyup Escape
wait \$sim
DRIVE
if ! timeout 60 bash "$work/drive.sh"; then
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
file "$work/shots/solva-1.png" | grep -q 'PNG image data, 480 x 272' || fail "screenshot: $(file "$work/shots/solva-1.png")"
echo "window session: ok"
