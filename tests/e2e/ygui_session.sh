#!/usr/bin/env bash
# The toolkit's test screen driven by solva-sim: a tap on "back", the down
# button moving the focus, a turn to the vertical layout and a tap on "ok" there,
# then "back" (button 5) plays "out" and ends the game.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

cat > "$work/session.script" <<'SCRIPT'
wait 1            # the "in" animation, which takes no input
tap 220 120       # "back" in the horizontal layout
click down        # from "back" to "third"
rotate 1
wait 0.5
tap 380 80        # "ok" in the vertical layout: grid point (80, 100)
click b
wait 1
SCRIPT

"$SOLVA_SIM" --title "$STAGE_DIR/yguititle" --root "$work/root" --params '{}' --script "$work/session.script" \
  > "$work/out.txt"
expected='{"handled":"back,back,back,ok,ok","focus":"ok","finished":1}'
answer=$(grep '^answer: ' "$work/out.txt" | sed 's/^answer: //')
[ "$answer" = "$expected" ] || fail "answer was $answer"

# Input during the "in" animation reaches nothing.
printf 'frames 2\ntap 220 120\nclick down\nwait 1\n' > "$work/early.script"
"$SOLVA_SIM" --title "$STAGE_DIR/yguititle" --root "$work/root" --params '{}' --script "$work/early.script" \
  > "$work/early.txt"
grep -qx 'answer: {"handled":"","focus":"","finished":0}' "$work/early.txt" || fail "early: $(grep answer "$work/early.txt")"
echo "ygui session: ok"
