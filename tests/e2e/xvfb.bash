# A virtual screen of the session's own, for the window tests; sourced after
# $work exists. Skips the test (exit 77) where Xvfb or xdotool is not installed.
if ! command -v Xvfb > /dev/null || ! command -v xdotool > /dev/null; then
  echo "skipped: Xvfb and xdotool are not installed"
  exit 77
fi
xvfb=""
trap 'if [ -n "$xvfb" ]; then kill $xvfb 2>/dev/null; fi; rm -rf "$work"' EXIT
# The server tells its display number when it is ready.
Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp 3> "$work/display" 2> "$work/xvfb.log" &
xvfb=$!
for i in $(seq 100); do
  [ -s "$work/display" ] && break
  sleep 0.05
done
[ -s "$work/display" ] || { echo "FAIL: Xvfb did not start"; cat "$work/xvfb.log"; exit 1; }
export DISPLAY=":$(cat "$work/display")"

# window_of PID: waits for the simulator's window to be on the screen, gives it
# the keyboard (without a window manager it goes where it is put, once the window
# has settled) and prints its id.
window_of() {
  local wid
  wid=$(timeout 20 xdotool search --sync --onlyvisible --name 'solva-sim' | head -1)
  [ -n "$wid" ] || { kill "$1"; return 1; }
  sleep 1
  xdotool windowfocus --sync "$wid"
  sleep 0.2
  echo "$wid"
}

# press KEY: a key held over a few frames; a press and release between two frames
# leaves no trace on the device, as a person's never does.
press() {
  xdotool keydown "$1"
  sleep 0.2
  xdotool keyup "$1"
}

# touch WID X Y: a touch held over a few frames at a screen point (the device's
# frame is 32 pixels at the window's scale of 2).
touch_at() {
  # No --sync: a pointer already at the point would wait for a move that never comes.
  xdotool mousemove --window "$1" $((32 + 2 * $2)) $((32 + 2 * $3))
  sleep 0.1
  xdotool mousedown 1
  sleep 0.2
  xdotool mouseup 1
}

# panel_click WID N: a click on the Nth toggle of the device panel beside the
# screen (0 microphone, 1 turn, 2 battery, 3 suspend, 4 screenshot). The panel
# starts right of the device (1024 window pixels at scale 2); its toggles are 32
# pixels high every 40 pixels from y 44, as host/DevicePanel.h lays them out.
panel_click() {
  xdotool mousemove --window "$1" $((1024 + 160)) $((44 + 40 * $2 + 16))
  sleep 0.1
  xdotool click 1
}

# newest: the latest screenshot the window's F12 wrote into $work/shots.
newest() { ls -t "$work/shots"/solva-*.png 2> /dev/null | head -1; }

# shoot: F12, and the path of the screenshot once it is written.
shoot() {
  local before count
  before=$(ls "$work/shots"/solva-*.png 2> /dev/null | wc -l)
  xdotool key F12
  for i in $(seq 100); do
    count=$(ls "$work/shots"/solva-*.png 2> /dev/null | wc -l)
    [ "$count" -gt "$before" ] && break
    sleep 0.1
  done
  newest
}
