#!/usr/bin/env bash
# The 3D test title in a real window under Xvfb, driven with real key events: the
# GL picture reaches the window and its screenshot exactly as it does headless.
# Skipped (exit 77) where Xvfb is not installed.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${SOURCE_DIR:?}" "${PNGDIFF:?}" "${BUILD_DIR:?}"
work=$(mktemp -d)
source "$(dirname "$0")/xvfb.bash"
fail() { echo "FAIL: $*"; cat "$work/out.txt"; exit 1; }

"$SOLVA_SIM" --title "$STAGE_DIR/gltitle" --root "$work/root" --params '{}' --shots "$work/shots" \
  --answer "$work/answer.json" --mic none > "$work/out.txt" 2>&1 &
sim=$!
wid=$(window_of $sim) || { echo "FAIL: no window"; exit 1; }
# The title takes keys once its first screen is up (slower under the sanitizers):
# F12 until a screenshot shows it.
for i in $(seq 60); do
  xdotool key F12
  sleep 0.25
  shot=$(newest)
  [ -n "$shot" ] && "$PNGDIFF" "$SOURCE_DIR/tests/e2e/screens/g1-textures.png" "$shot" > /dev/null && break
done
# Each key is pressed again until the screen shows it was taken: under the
# sanitizers on a busy machine a frame can outlast a press, and a release and
# the next press within one frame would be no press at all.
for key in Right Right Down; do
  shot=$(shoot)
  for attempt in $(seq 5); do
    press $key
    sleep 0.3
    after=$(shoot)
    "$PNGDIFF" "$shot" "$after" > /dev/null 2>&1 || break
  done
done
shoot > /dev/null
press Escape
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill $sim
  fail "the session did not end"
fi

grep -q 'display backend sdl' "$work/out.txt" || fail "no window backend"
grep -q '^\[SolvaOpenGL create\]$' "$work/out.txt" || fail "no 3D set-up"
case "$(cat "$work/answer.json")" in
  '{"3d":1,"textures":15,'*'"selected":7,'*'"finished":1}') ;;
  *) fail "answer was $(cat "$work/answer.json")" ;;
esac
expected="$SOURCE_DIR/tests/e2e/screens/g2-moved.png"
if ! "$PNGDIFF" "$expected" "$(newest)"; then
  mkdir -p "$BUILD_DIR/e2e-actual"
  cp "$(newest)" "$BUILD_DIR/e2e-actual/window-g2-moved_actual.png"
  cp "$expected" "$BUILD_DIR/e2e-actual/window-g2-moved_expected.png"
  fail "the window's screen differs; see $BUILD_DIR/e2e-actual/window-g2-moved_actual.png"
fi
echo "window gl: ok"
