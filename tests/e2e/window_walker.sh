#!/usr/bin/env bash
# The walker in a real window under Xvfb, driven by a real mouse touch and a real
# key: it walks to the touch, then a stride left, and once it stands its screen
# equals the reference made headless (tests/e2e/screens/ww-window.png, from
# tests/e2e/walker_window.script). Skipped (exit 77) where Xvfb is not installed.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${SOURCE_DIR:?}" "${PNGDIFF:?}" "${BUILD_DIR:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"
fail() { echo "FAIL: $*"; cat "$work/out.txt"; exit 1; }
expected="$SOURCE_DIR/tests/e2e/screens/ww-window.png"

"$SOLVA_SIM" --title "$STAGE_DIR/walker" --root "$work/root" --params '{}' --shots "$work/shots" \
  --answer "$work/answer.json" --mic none --speaker none > "$work/out.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || { echo "FAIL: no window"; exit 1; }
# shows REFERENCE: a screenshot until one equals the reference (the walker's idle
# animation shows it every other half second), or about 20 seconds pass.
shows() {
  for i in $(seq 80); do
    "$PNGDIFF" "$1" "$(shoot)" > /dev/null 2>&1 && return 0
    sleep 0.15
  done
  return 1
}

# The title takes the touch once its first screen is up (slower under the sanitizers).
shows "$SOURCE_DIR/tests/e2e/screens/w1-standing.png" || { kill $sim; fail "the first screen never came"; }
touch_at "$wid" 336 170 # the walker walks right, to stand there
sleep 2.5               # there, even on a busy machine
press Left              # a stride left
sleep 1.5
if ! shows "$expected"; then
  mkdir -p "$BUILD_DIR/e2e-actual"
  cp "$(newest)" "$BUILD_DIR/e2e-actual/window-ww-window_actual.png"
  cp "$expected" "$BUILD_DIR/e2e-actual/window-ww-window_expected.png"
  kill $sim
  fail "the window never showed the reference; see $BUILD_DIR/e2e-actual/window-ww-window_actual.png"
fi
press Escape
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill $sim
  fail "the session did not end"
fi
grep -q 'display backend sdl' "$work/out.txt" || fail "no window backend"
case "$(cat "$work/answer.json")" in
  '{"3d":1,"sprites":1,"background":1,"tuneKits":0,"x":288,"y":150,"facing":6,"walking":0,'*'"finished":1}') ;;
  *) fail "answer was $(cat "$work/answer.json")" ;;
esac
echo "window walker: ok"
