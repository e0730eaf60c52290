#!/usr/bin/env bash
# A child's first recording, step by step, through solva-sim: the hint, record,
# the record cue, stop, the saved clip and its gallery files, the save hint, play,
# pause, play again, a tap on the bar, and back with the clip's path as answer.
set -euo pipefail
source "$(dirname "$0")/common.bash"

run first --params '{}' --mic "$SOURCE_DIR/host/demo/voice-sample.wav" <<'SCRIPT'
wait 3            # the panel pops in; "HL_ToRecord" with the record button lit
screenshot h1-ready.png
tap 80 30         # record: "SFX_RECORD" plays first
frames 3
tap 30 30         # back, during the record cue: ignored
wait 1.5          # the cue has ended; the capture runs
screenshot h2-recording.png
wait 3.5
tap 80 30         # stop: the clip is saved at once
wait 0.5
screenshot h3-saved.png
wait 2.5          # "HL_ToSave", back lit after 1.2 seconds
screenshot h4-save-hint.png
wait 2
tap 346 30        # play
wait 1.5
screenshot h5-playing.png
tap 346 30        # pause
wait 0.5
screenshot h6-paused.png
tap 346 30        # play again
wait 0.5
tap 250 31        # a tap on the bar jumps ahead
wait 0.5
screenshot h7-seek.png
wait 3
tap 30 30         # back: "SFX_BACK", then the title ends
wait 2
SCRIPT

clip="$(music first)/vtwgaudio_1.wav"
[ -f "$clip" ] || fail "no clip in the music folder: $(ls "$(music first)")"
[ "$(soxi -r "$clip")" = 16000 ] || fail "rate $(soxi -r "$clip")"
[ "$(soxi -c "$clip")" = 1 ] || fail "channels $(soxi -c "$clip")"
[ "$(soxi -b "$clip")" = 16 ] || fail "bits $(soxi -b "$clip")"
# 5.23 s pass between the two taps (7 frames of taps, then 1.5 + 3.5 s); the
# capture starts only after the 0.6 s record cue has ended, a frame or two later.
between "$(duration "$clip")" 4.5 4.63 || fail "clip of $(duration "$clip") s"

# The index: version 9213426, one record {1, eRT_Audio, 0, 0.0}; resid.bin with
# audio's maximum 1; the upload list's line; no check file, no temporary.
[ "$(hex "$(index first)/vtwgAudioResInfo.bin")" = \
  "f2958c0001000000010000000100000000000000""00000000" ] || fail "index $(hex "$(index first)/vtwgAudioResInfo.bin")"
[ "$(hex "$(index first)/resid.bin")" = \
  "524944000000000001000000000000000000000000000000000000000000000000000000""00000000" ] ||
  fail "resid.bin $(hex "$(index first)/resid.bin")"
[ "$(cat "$work/first/device/Upload/MusicPkg/UploadAudioList.txt")" = "$clip" ] || fail "upload list"
[ ! -e "$(index first)/AudioCheck.bin" ] || fail "a check file remains"
[ ! -e "$(music first)/audio.tmp" ] || fail "the temporary remains"

[ "$(answer first)" = "{\"filename\":\"$clip\"}" ] || fail "answer $(answer first)"
grep -q 'Widgets----Exit Microphone Widget------' "$work/first.out" || fail "the title did not exit"

for screen in h1-ready h2-recording h3-saved h4-save-hint h5-playing h6-paused h7-seek; do
  shot first "$screen.png"
done
echo "recorder session: ok"
