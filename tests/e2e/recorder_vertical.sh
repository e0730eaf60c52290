#!/usr/bin/env bash
# The recorder held upright: the vertical panel, its touch points turned with the
# device, a recording, playback and pause; then turned back while paused, which
# keeps the pause screen.
set -euo pipefail
source "$(dirname "$0")/common.bash"

run upright --params '{}' --mic tone <<'SCRIPT'
rotate 1
wait 3
screenshot v1-ready.png
tap 418 220       # record
wait 1.5
screenshot v2-recording.png
wait 3
tap 418 220       # stop
wait 1
screenshot v3-saved.png
wait 4
tap 418 85        # play
wait 1
screenshot v4-playing.png
tap 418 85        # pause
wait 0.5
screenshot v5-paused.png
rotate 0          # back to flat while paused: the pause screen stays
wait 0.5
screenshot h8-paused-after-turn.png
tap 30 30         # back
wait 2
SCRIPT

clip="$(music upright)/vtwgaudio_1.wav"
# 4.57 s between the taps, less the 0.6 s record cue and the frames to notice its end.
between "$(duration "$clip")" 3.85 3.97 || fail "clip of $(duration "$clip") s"
[ "$(answer upright)" = "{\"filename\":\"$clip\"}" ] || fail "answer $(answer upright)"
for screen in v1-ready v2-recording v3-saved v4-playing v5-paused h8-paused-after-turn; do
  shot upright "$screen.png"
done
echo "recorder upright: ok"
