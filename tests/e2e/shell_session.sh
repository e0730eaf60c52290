#!/usr/bin/env bash
# The shell's test title driven by solva-sim from a script: taps, buttons,
# rotation, a suspend of ten minutes, the exit code, and the printed answer.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

cat > "$work/session.script" <<'SCRIPT'
# taps, buttons and a turn; then ten minutes away
frames 3
tap 120 80
tap 300 200       # the last touch
press right
frames 2
release right
rotate 1
wait 0.5
suspend
resume 600
frames 3
exit 1            # the manager ends the title, which has not finished
SCRIPT

"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{"caller":"e2e"}' \
  --answer "$work/answer.json" --script "$work/session.script" > "$work/out.txt"

# No dt of the suspend reached the title: its longest frame (maxDtMs) is one frame.
expected='{"caller":"e2e","taps":2,"lastTouch":[300,200],"buttons":"2","orientation":1,"frames":25,"maxDtMs":34,"exitReason":3,"finished":0}'
answer=$(grep '^answer: ' "$work/out.txt" | sed 's/^answer: //')
[ "$answer" = "$expected" ] || fail "answer was $answer"
[ "$(cat "$work/answer.json")" = "$expected" ] || fail "answer file was $(cat "$work/answer.json")"
grep -q 'Register gAccelerometerListener' "$work/out.txt" || fail "listeners were not registered"

# The game ends itself with "back": reason 1 for code 1, the run stops there.
printf 'frames 3\nclick back\nframes 100\n' > "$work/back.script"
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{}' --script "$work/back.script" \
  > "$work/back.txt"
grep -q '^answer: {"taps":0,"lastTouch":\[-1,-1\],"buttons":"5","orientation":0,"frames":2,"maxDtMs":34,"exitReason":0,"finished":1}$' \
  "$work/back.txt" || fail "back: $(grep answer "$work/back.txt")"

# Without launch parameters the answer is null.
printf 'frames 4\n' > "$work/short.script"
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --script "$work/short.script" > "$work/short.txt"
grep -qx 'answer: null' "$work/short.txt" || fail "no params: $(grep answer "$work/short.txt")"

# A mistake in the script names its line and exits with status 2, before the title starts.
printf 'frames 1\n\nfly 3\n' > "$work/bad.script"
set +e
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --script "$work/bad.script" > "$work/bad.txt" 2> "$work/bad.err"
status=$?
set -e
[ $status -eq 2 ] || fail "bad script exit status $status"
grep -q "bad.script:3: unknown command 'fly'" "$work/bad.err" || fail "bad script message: $(cat "$work/bad.err")"
! grep -q 'Register' "$work/bad.txt" || fail "the title started despite the bad script"

# A resume without a suspend is found when it runs: status 2, the title still exits.
printf 'frames 3\nresume 5\n' > "$work/resume.script"
set +e
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{}' --script "$work/resume.script" \
  > "$work/resume.txt" 2> "$work/resume.err"
status=$?
set -e
[ $status -eq 2 ] || fail "resume without suspend: status $status"
grep -q "resume.script:2: 'resume' without 'suspend' before it" "$work/resume.err" || fail "$(cat "$work/resume.err")"
grep -q '^answer: ' "$work/resume.txt" || fail "no answer after a script error"

# Bad launch parameters are refused with a reason.
set +e
"$SOLVA_SIM" --title "$STAGE_DIR/shelltitle" --root "$work/root" --params '{oops' --script "$work/short.script" \
  > /dev/null 2> "$work/params.err"
status=$?
set -e
[ $status -eq 2 ] || fail "bad params: status $status"
grep -q 'bad launch parameters' "$work/params.err" || fail "$(cat "$work/params.err")"

# A folder without a title is refused.
mkdir -p "$work/empty"
set +e
"$SOLVA_SIM" --title "$work/empty" --script "$work/short.script" > /dev/null 2> "$work/title.err"
status=$?
set -e
[ $status -eq 1 ] || fail "no title: status $status"
grep -q 'no title plug-in' "$work/title.err" || fail "$(cat "$work/title.err")"
echo "shell session: ok"
