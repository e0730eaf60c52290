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
press Right
press Right
press Down
sleep 0.3
xdotool key F12
sleep 0.3
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
if ! "$PNGDIFF" "$expected" "$work/shots/solva-1.png"; then
  mkdir -p "$BUILD_DIR/e2e-actual"
  cp "$work/shots/solva-1.png" "$BUILD_DIR/e2e-actual/window-g2-moved_actual.png"
  cp "$expected" "$BUILD_DIR/e2e-actual/window-g2-moved_expected.png"
  fail "the window's screen differs; see $BUILD_DIR/e2e-actual/window-g2-moved_actual.png"
fi
echo "window gl: ok"
