#!/usr/bin/env bash
# One of CI's monkey seeds: seed.bash SEED:SECONDS [--title NAME] [solva-sim options...]. A
# failure keeps the session's script and output in build/<preset>/monkey-failed/.
set -euo pipefail
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${SOURCE_DIR:?}" "${BUILD_DIR:?}"
seed=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
name=${seed//:/-}
options=()
title="$STAGE_DIR/title"
# "--title NAME" on a seed's line names a title staged beside the recorder.
while [ $# -gt 0 ]; do
  if [ "$1" = --title ]; then
    title="$STAGE_DIR/$2"
    shift 2
  else
    options+=("$1")
    shift
  fi
done
[[ " ${options[*]} " == *" --params "* ]] || options+=(--params '{}')
[[ " ${options[*]} " == *" --mic "* ]] || options+=(--mic "$SOURCE_DIR/host/demo/voice-sample.wav")
set +e
"$SOLVA_SIM" --title "$title" --root "$work/device" --monkey "$seed" --record-script "$work/$name.script" \
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
