#!/usr/bin/env bash
# A scripted session of the recorder written as a movie: the same bytes on every
# run, and, judged by ffprobe and ffmpeg where they are installed, the session's
# frame count, frame rate and sound length, with a frame that matches the
# screenshot taken at it within JPEG's error.
set -euo pipefail
source "$(dirname "$0")/common.bash"

# 60 frames, a screenshot, a tap (2 frames) that starts the record cue, 30 more: 92.
session() {
  run "$1" --params '{}' --mic "$SOURCE_DIR/host/demo/voice-sample.wav" --movie "$2" <<'SCRIPT'
wait 2
screenshot ready.png
tap 80 30
wait 1
SCRIPT
}
session avi-1 "$work/one.avi"
session avi-2 "$work/two.avi"
cmp "$work/one.avi" "$work/two.avi" || fail "two runs of the same session gave different movies"
grep -q "solva-sim: screenshot .*ready.png (movie frame 59)" "$work/avi-1.out" || fail "$(grep screenshot "$work/avi-1.out")"
grep -q "solva-sim: movie $work/one.avi: 92 frames, 3.067 s" "$work/avi-1.out" || fail "$(grep movie "$work/avi-1.out")"

session png-1 "$work/frames-1/"
session png-2 "$work/frames-2/"
diff -r "$work/frames-1" "$work/frames-2" > /dev/null || fail "two runs gave different frame folders"
[ "$(ls "$work/frames-1" | grep -c '^frame-[0-9]\{6\}\.png$')" = 92 ] || fail "$(ls "$work/frames-1" | wc -l) files"
# The frame a screenshot was taken at is that screenshot, byte for byte.
cmp "$work/frames-1/frame-000059.png" "$work/png-1/screens/ready.png" || fail "frame 59 is not the screenshot"
[ "$(duration "$work/frames-1/sound.wav")" = 3.066667 ] || fail "sound.wav lasts $(duration "$work/frames-1/sound.wav") s"
[ "$(soxi -s "$work/frames-1/sound.wav")" = $((92 * 735)) ] || fail "sound.wav: $(soxi -s "$work/frames-1/sound.wav")"

if ! command -v ffprobe > /dev/null || ! command -v ffmpeg > /dev/null; then
  echo "movie session: ok (the AVI's reading by ffprobe skipped: ffmpeg is not installed; scripts/install-deps installs it)"
  exit 0
fi
probe() { ffprobe -v error -select_streams "$1" -show_entries "$2" -of csv=p=0 "$work/one.avi"; }
[ "$(probe v:0 stream=codec_name,width,height)" = "mjpeg,480,272" ] || fail "video: $(probe v:0 stream=codec_name,width,height)"
[ "$(probe v:0 stream=r_frame_rate)" = "30/1" ] || fail "rate: $(probe v:0 stream=r_frame_rate)"
frames=$(ffprobe -v error -count_frames -select_streams v:0 -show_entries stream=nb_read_frames -of csv=p=0 "$work/one.avi")
[ "$frames" = 92 ] || fail "ffprobe reads $frames frames"
[ "$(probe a:0 stream=codec_name,sample_rate,channels)" = "pcm_s16le,22050,1" ] ||
  fail "sound: $(probe a:0 stream=codec_name,sample_rate,channels)"
# The movie's sound is the session's 92 frames of 735 samples, and what sound.wav
# holds, sample for sample.
ffmpeg -v error -i "$work/one.avi" -map 0:a -f s16le - > "$work/avi.pcm"
[ "$(stat -c %s "$work/avi.pcm")" = $((92 * 735 * 2)) ] || fail "the sound has $(stat -c %s "$work/avi.pcm") bytes"
ffmpeg -v error -i "$work/frames-1/sound.wav" -f s16le - > "$work/wav.pcm"
cmp "$work/avi.pcm" "$work/wav.pcm" || fail "the AVI's sound differs from sound.wav"
[ "$(od -An -v -tx1 "$work/wav.pcm" | tr -d ' \n0' | wc -c)" -gt 0 ] || fail "the movie is silent"

# Frame 59 decoded against the screenshot taken at it.
ffmpeg -v error -i "$work/one.avi" -vf 'select=eq(n\,59)' -frames:v 1 "$work/frame59.png"
psnr=$(ffmpeg -i "$work/frame59.png" -i "$work/avi-1/screens/ready.png" -lavfi psnr -f null - 2>&1 |
  sed -n 's/.*PSNR.* average:\([0-9.inf]*\).*/\1/p')
[ -n "$psnr" ] || fail "no PSNR from ffmpeg"
[ "$psnr" = inf ] || between "$psnr" 40 1000 || fail "frame 59 is $psnr dB from the screenshot"
echo "movie session: ok (frame 59 at $psnr dB)"
