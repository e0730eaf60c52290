#!/usr/bin/env bash
# solva-gallery on a device the recorder used: list, check and --json on a sound
# gallery; then the recorder's save cut by a power loss (the device's own switch)
# at each file operation in turn: check finds the cut operation, repair puts it
# right, and check passes afterwards.
set -euo pipefail
source "$(dirname "$0")/common.bash"
: "${SOLVA_GALLERY:?}"

session='wait 3
tap 80 30
wait 3
tap 80 30
wait 1
'
run sound --params '{}' --mic tone <<< "$session"
device="$work/sound/device"
"$SOLVA_GALLERY" --root "$device" list > "$work/list.txt" || fail "list: status $?"
grep -q '^Audio: .*vtwgAudioResInfo.bin (whole), 1 record, numbers given up to 1$' "$work/list.txt" ||
  fail "list: $(cat "$work/list.txt")"
grep -q ' 1  vtwgaudio_1.wav .* bytes ' "$work/list.txt" || fail "list: $(cat "$work/list.txt")"
"$SOLVA_GALLERY" --root "$device" check > "$work/check.txt" || fail "check of a sound gallery: $(cat "$work/check.txt")"
grep -q ': sound$' "$work/check.txt" || fail "check: $(cat "$work/check.txt")"
"$SOLVA_GALLERY" --root "$device" --json check > "$work/check.json" || fail "check --json"
grep -q '"faults": 0' "$work/check.json" || fail "json: $(cat "$work/check.json")"
"$SOLVA_GALLERY" --version | grep -q '^solva-gallery [0-9]' || fail "--version"

# Bad usage: status 2 and a message.
set +e
"$SOLVA_GALLERY" --root "$work" check > /dev/null 2> "$work/usage.err"
status=$?
set -e
[ $status = 2 ] || fail "not a device root: status $status"
grep -q 'is not a device root' "$work/usage.err" || fail "$(cat "$work/usage.err")"

# The power goes after file operation N of the session, for N = 1, 2, ... until
# the session ends before the cut.
found=0
for cut in $(seq 1 100); do
  rm -rf "$work/cut"
  # (In a shell of its own, which says nothing of the kill.)
  SOLVA_POWER_CUT_AFTER=$cut bash -c '"$0" "$@" > /dev/null 2>&1' "$SOLVA_SIM" --title "$TITLE" --root "$work/cut" \
    --params '{}' --mic tone --script "$work/sound.script" 2> /dev/null && break
  set +e
  "$SOLVA_GALLERY" --root "$work/cut" check > "$work/cut-check.txt"
  status=$?
  set -e
  if ! grep -q 'interrupted operation' "$work/cut-check.txt"; then
    [ $status = 0 ] || fail "cut $cut: $(cat "$work/cut-check.txt")"
    continue
  fi
  found=$((found + 1))
  [ $status = 1 ] || fail "cut $cut: check found a fault but ended with $status"
  "$SOLVA_GALLERY" --root "$work/cut" repair > "$work/repair.txt" || fail "cut $cut: repair: $(cat "$work/repair.txt")"
  grep -q '^repaired Audio, interrupted operation: .*AudioCheck.bin' "$work/repair.txt" || fail "cut $cut: $(cat "$work/repair.txt")"
  "$SOLVA_GALLERY" --root "$work/cut" check > "$work/after.txt" || fail "cut $cut: after repair: $(cat "$work/after.txt")"
  [ ! -e "$work/cut/LocalData/Shared/FileIndex/AudioCheck.bin" ] || fail "cut $cut: the check file stayed"
done
[ $found -ge 2 ] || fail "only $found cuts left a protected operation behind"
echo "gallery tool: ok ($found cuts repaired)"
