#!/usr/bin/env bash
# One of CI's monkey seeds: seed.bash SEED:SECONDS [solva-sim options...]. A
# failure keeps the session's script and output in build/<preset>/monkey-failed/.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${SOURCE_DIR:?}" "${BUILD_DIR:?}"
seed=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
name=${seed//:/-}
options=("$@")
[[ " $* " == *" --params "* ]] || options+=(--params '{}')
[[ " $* " == *" --mic "* ]] || options+=(--mic "$SOURCE_DIR/host/demo/voice-sample.wav")
set +e
"$SOLVA_SIM" --title "$STAGE_DIR/title" --root "$work/device" --monkey "$seed" --record-script "$work/$name.script" \
  "${options[@]}" > "$work/$name.out" 2>&1
status=$?
set -e
if [ $status != 0 ]; then
  kept="$BUILD_DIR/monkey-failed"
  mkdir -p "$kept"
  cp "$work/$name.script" "$work/$name.out" "$kept/"
  tail -40 "$work/$name.out"
  echo "FAIL: monkey $seed: status $status; its script and output are in $kept/$name.script and .out"
  exit 1
fi
grep 'session ran\|passed' "$work/$name.out"
