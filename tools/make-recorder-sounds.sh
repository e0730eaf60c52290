#!/usr/bin/env bash
# Regenerates the recorder's sounds: the spoken hints and the short effects under
# res/Sound/, and the spoken sample that stands in for the microphone when the
# recorder runs headless (host/demo/voice-sample.wav).
#
#   tools/make-recorder-sounds.sh
#
# Hints are spoken by espeak-ng from tools/recorder-sounds/hints.txt; effects are
# synthesised by sox from the recipes below. Everything ends as 16-bit mono WAV at
# 22050 Hz, the mixer's rate. Needs espeak-ng and sox (scripts/install-deps); only
# this script needs them, the title reads the committed files. sox runs with -R so
# that a second run writes the same bytes.
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
src="$root/tools/recorder-sounds"
out="$root/res/Sound"
demo="$root/host/demo"
for tool in espeak-ng sox; do
  command -v "$tool" >/dev/null || { echo "make-recorder-sounds: $tool is not installed (scripts/install-deps)" >&2; exit 1; }
done
mkdir -p "$out" "$demo"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

# A bright, friendly voice: a female variant, pitched up, not too fast.
voice=(-v en-us+f4 -p 62 -s 148)

# speak TEXT OUT: the words, trimmed of silence, levelled, with a gentle fade out.
speak() {
  espeak-ng "${voice[@]}" -w "$tmp/raw.wav" "$1"
  sox -R "$tmp/raw.wav" "$tmp/trim.wav" silence 1 0.02 0.5% reverse silence 1 0.02 0.5% reverse
  sox -R "$tmp/trim.wav" -b 16 -c 1 -r 22050 "$2" fade t 0 -0 0.05 pad 0.05 0.1 gain -n -2
}

while IFS='|' read -r stem text; do
  case "$stem" in ''|'#'*) continue ;; esac
  speak "$text" "$out/$stem.wav"
done < "$src/hints.txt"

# effect OUT SYNTH...: a synthesised effect, made 16-bit mono 22050 Hz and levelled.
effect() {
  local file="$1"; shift
  sox -R -n -b 16 -c 1 -r 22050 "$tmp/fx.wav" "$@"
  sox -R "$tmp/fx.wav" "$file" gain -n -4
}

# Record: three rising notes, a little music box (C, E, G), ending on a ring.
sox -R -n -r 22050 -c 1 "$tmp/n1.wav" synth 0.12 pluck C5 fade t 0 0.12 0.06
sox -R -n -r 22050 -c 1 "$tmp/n2.wav" synth 0.12 pluck E5 fade t 0 0.12 0.06
sox -R -n -r 22050 -c 1 "$tmp/n3.wav" synth 0.36 pluck G5 synth 0.36 sine amod 6 fade t 0 0.36 0.3
sox -R "$tmp/n1.wav" "$tmp/n2.wav" "$tmp/n3.wav" -b 16 "$tmp/rec.wav"
sox -R "$tmp/rec.wav" "$out/SFX_RECORD.wav" gain -n -4
# Stop: two falling notes, a soft "ta-dum".
sox -R -n -r 22050 -c 1 "$tmp/s1.wav" synth 0.1 triangle G5 fade t 0.005 0.1 0.05
sox -R -n -r 22050 -c 1 "$tmp/s2.wav" synth 0.22 triangle C5 fade t 0.005 0.22 0.16
sox -R "$tmp/s1.wav" "$tmp/s2.wav" -b 16 "$tmp/stop.wav"
sox -R "$tmp/stop.wav" "$out/SFX_STOP.wav" gain -n -4
# Play: a quick bright upward blip.
effect "$out/SFX_PLAY.wav" synth 0.18 sine 520:1040 fade t 0.005 0.18 0.08
# Pause: two soft taps.
sox -R -n -r 22050 -c 1 "$tmp/p1.wav" synth 0.07 sine 660 fade t 0.003 0.07 0.05 pad 0 0.05
sox -R -n -r 22050 -c 1 "$tmp/p2.wav" synth 0.07 sine 660 fade t 0.003 0.07 0.05
sox -R "$tmp/p1.wav" "$tmp/p2.wav" -b 16 "$tmp/pause.wav"
sox -R "$tmp/pause.wav" "$out/SFX_PAUSE.wav" gain -n -6
# Back: a slide down, like a slide in the playground.
effect "$out/SFX_BACK.wav" synth 0.32 sine 900:300 fade t 0.005 0.32 0.12

# The sample the headless microphone plays: a child-like voice, about four seconds.
espeak-ng -v en-us+f2 -p 78 -s 150 -w "$tmp/sample.wav" "$(cat "$src/voice-sample.txt")"
sox -R "$tmp/sample.wav" -b 16 -c 1 -r 22050 "$demo/voice-sample.wav" \
  silence 1 0.02 0.5% pad 0.2 0.3 gain -n -3

ls -l "$out"/*.wav "$demo/voice-sample.wav"
