#!/usr/bin/env bash
# The monkey on the recorder: a seed's session passes its checks; the same seed
# twice gives the same script, screens and gallery, byte for byte; the script it
# wrote, played back as its first lines say, gives the same screens and gallery
# again; a gallery left wrong fails the check with the seed and a replay; a crash
# leaves the same; bad arguments are refused.
set -euo pipefail
source "$(dirname "$0")/common.bash"
SEED=2:40   # records a clip, plays, turns, drags, and runs its whole 40 s
VOICE="$SOURCE_DIR/host/demo/voice-sample.wav"

# monkey NAME [solva-sim options...]: a session on device NAME, its screens in $work/NAME/screens.
monkey() {
  local name=$1
  shift
  "$SOLVA_SIM" --title "$TITLE" --root "$work/$name/device" --shots "$work/$name/screens" --params '{}' \
    --mic "$VOICE" "$@" > "$work/$name.out" 2>&1
}

# same A B: sessions A and B left the same screens, gallery, upload list and answer.
same() {
  [ "$(ls "$work/$1/screens")" = "$(ls "$work/$2/screens")" ] || fail "$2: other screenshots than $1"
  for shot in "$work/$1/screens"/*.png; do
    cmp -s "$shot" "$work/$2/screens/${shot##*/}" || fail "$2: screen ${shot##*/} differs from $1's"
  done
  for folder in FileIndex Music; do
    diff -r "$work/$1/device/LocalData/Shared/$folder" "$work/$2/device/LocalData/Shared/$folder" > /dev/null ||
      fail "$2: the gallery's $folder differs from $1's"
  done
  local list=Upload/MusicPkg/UploadAudioList.txt
  [ "$(sed "s|$work/$1/|ROOT/|" "$work/$1/device/$list")" = "$(sed "s|$work/$2/|ROOT/|" "$work/$2/device/$list")" ] ||
    fail "$2: the upload list differs from $1's"
  [ "$(grep '^answer:' "$work/$1.out" | sed "s|$work/$1/|ROOT/|")" = \
    "$(grep '^answer:' "$work/$2.out" | sed "s|$work/$2/|ROOT/|")" ] || fail "$2: the answer differs from $1's"
}

monkey first --monkey $SEED --record-script "$work/first.script" || fail "first: status $? ($(tail -3 "$work/first.out"))"
grep -q "^solva-sim: monkey $SEED passed: the title ended cleanly" "$work/first.out" || fail "$(tail -3 "$work/first.out")"
grep -q '^solva-sim: the monkey.s session ran 40.000 s of device time in 1200 frames$' "$work/first.out" ||
  fail "not 40 s: $(grep 'session ran' "$work/first.out")"
[ "$(ls "$work/first/screens" | wc -l)" -ge 10 ] || fail "a screenshot about every 2 s: $(ls "$work/first/screens")"
[ -f "$(music first)/vtwgaudio_1.wav" ] || fail "the seed recorded no clip"
grep -q "^# The monkey's session of seed 2 (solva-sim --monkey $SEED)" "$work/first.script" || fail "no seed in the script"
[ "$(grep -vc '^#' "$work/first.script")" -gt 100 ] || fail "a short script: $(cat "$work/first.script")"

# The same seed again: the same bytes.
monkey again --monkey $SEED --record-script "$work/again.script" || fail "again: status $?"
cmp -s "$work/first.script" "$work/again.script" || fail "the same seed wrote another script"
same first again

# The script played back as its header says, with --check: the same session.
# replay NAME SCRIPT: the header's command on a fresh device NAME.
replay() {
  local command
  command=$(sed -n 's/^#   solva-sim //p' "$2")
  [ -n "$command" ] || fail "no replay command in $2"
  eval "\"\$SOLVA_SIM\" ${command/THIS_FILE/\"\$2\"} --root \"\$work/\$1/device\" --shots \"\$work/\$1/screens\" --check" \
    > "$work/$1.out" 2>&1
}
replay replayed "$work/first.script" || fail "replay: status $? ($(tail -3 "$work/replayed.out"))"
grep -q '^solva-sim: session passed' "$work/replayed.out" || fail "replay: $(tail -3 "$work/replayed.out")"
same first replayed

# A gallery the store would write over fails the check: the seed, what is wrong
# and a replay script that finds the same.
mkdir -p "$work/wrong/device/LocalData/Shared/Music"
cp "$(music first)/vtwgaudio_1.wav" "$work/wrong/device/LocalData/Shared/Music/vtwgaudio_99.wav"
set +e
TMPDIR="$work" monkey wrong --monkey 5:3
status=$?
set -e
[ $status = 1 ] || fail "wrong: status $status"
grep -q '^solva-sim: monkey 5:3: solva-gallery check: Audio, .*vtwgaudio_99.wav' "$work/wrong.out" ||
  fail "wrong: $(cat "$work/wrong.out")"
script=$(sed -n 's/^solva-sim: monkey 5:3 FAILED; replay it on a fresh --root: solva-sim --script \([^ ]*\) .*--check$/\1/p' \
  "$work/wrong.out")
[ -s "$script" ] || fail "wrong: no replay script ($(grep FAILED "$work/wrong.out"))"
replay wrong-fresh "$script" || fail "the replay on a fresh device: status $? ($(tail -3 "$work/wrong-fresh.out"))"
mkdir -p "$work/wrong-again/device/LocalData/Shared/Music"
cp "$work/wrong/device/LocalData/Shared/Music/vtwgaudio_99.wav" "$work/wrong-again/device/LocalData/Shared/Music/"
set +e
replay wrong-again "$script"
status=$?
set -e
[ $status = 1 ] || fail "the replay on the wrong gallery: status $status"
grep -q '^solva-sim: session: solva-gallery check: Audio, .*vtwgaudio_99.wav' "$work/wrong-again.out" ||
  fail "wrong-again: $(cat "$work/wrong-again.out")"
# A session that passes keeps no scratch script.
mkdir -p "$work/kept"
TMPDIR="$work/kept" monkey passing --monkey 5:3 || fail "passing: status $?"
[ -z "$(ls "$work/kept")" ] || fail "a passing session left its scratch script: $(ls "$work/kept")"

# A crash: the seed and the replay are its last words.
"$SOLVA_SIM" --title "$TITLE" --root "$work/crash/device" --params '{}' --mic tone --monkey 9:86400 \
  --record-script "$work/crash.script" > "$work/crash.out" 2>&1 &
sim=$!
for _ in $(seq 1 100); do
  grep -q 'screenshot\|Enter Microphone' "$work/crash.out" 2> /dev/null && break
  sleep 0.1
done
sleep 0.5
kill -SEGV $sim
if ! timeout 30 tail --pid=$sim -f /dev/null; then
  kill -9 $sim
  fail "the crashed session did not end"
fi
set +e
wait $sim
status=$?
set -e
[ $status != 0 ] || fail "the crashed session ended well"
grep -q "^solva-sim: monkey 9:86400 CRASHED; replay it on a fresh --root: solva-sim --script $work/crash.script .*--check$" \
  "$work/crash.out" || fail "crash: $(tail -5 "$work/crash.out")"
grep -q '^tap ' "$work/crash.script" || fail "the crashed session's script is empty"

# Bad usage: status 2 and a message.
for bad in "--monkey x" "--monkey 1:0" "--monkey 1 --script $work/first.script"; do
  set +e
  # shellcheck disable=SC2086
  "$SOLVA_SIM" --title "$TITLE" --root "$work/bad" $bad > "$work/bad.out" 2>&1
  status=$?
  set -e
  [ $status = 2 ] || fail "$bad: status $status"
  grep -q -- '--monkey\|excludes' "$work/bad.out" || fail "$bad: $(cat "$work/bad.out")"
done
echo "monkey session: ok ($(grep -vc '^#' "$work/first.script") commands)"
