# What the recorder's scripted sessions share; sourced by the tests/e2e/*.sh.
: "${SOLVA_SIM:?}" "${STAGE_DIR:?}" "${SOURCE_DIR:?}" "${PNGDIFF:?}" "${BUILD_DIR:?}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
TITLE="$STAGE_DIR/title"
SCREENS="$SOURCE_DIR/tests/e2e/screens"
ACTUAL="$BUILD_DIR/e2e-actual"

fail() {
  echo "FAIL: $*"
  exit 1
}

# run NAME [solva-sim options...] < script: one headless session of the recorder
# on a fresh device; its output in $work/NAME.out, its screens in $work/NAME/.
run() {
  local name=$1
  shift
  cat > "$work/$name.script"
  rm -rf "$work/$name"
  "$SOLVA_SIM" --title "$TITLE" --root "$work/$name/device" --shots "$work/$name/screens" \
    --answer "$work/$name/answer.json" --script "$work/$name.script" "$@" > "$work/$name.out" 2>&1 ||
    fail "$name: solva-sim ended with status $? ($(tail -3 "$work/$name.out"))"
}

answer() { cat "$work/$1/answer.json"; }
music() { echo "$work/$1/device/LocalData/Shared/Music"; }
index() { echo "$work/$1/device/LocalData/Shared/FileIndex"; }

# shot NAME FILE: the screenshot FILE of session NAME must equal the reference
# tests/e2e/screens/FILE pixel for pixel. On a mismatch the actual picture is kept
# as build/<preset>/e2e-actual/FILE_actual.png beside a copy of the expected one.
# With ZV_REGENERATE_SCREENS=1 the reference is written instead (look at it!).
shot() {
  local actual="$work/$1/screens/$2"
  [ -s "$actual" ] || fail "$1: no screenshot $2"
  if [ "${ZV_REGENERATE_SCREENS:-0}" = 1 ]; then
    cp "$actual" "$SCREENS/$2"
    return
  fi
  if ! "$PNGDIFF" "$SCREENS/$2" "$actual"; then
    mkdir -p "$ACTUAL"
    cp "$actual" "$ACTUAL/${2%.png}_actual.png"
    cp "$SCREENS/$2" "$ACTUAL/${2%.png}_expected.png"
    fail "$1: screen $2 differs; see $ACTUAL/${2%.png}_actual.png"
  fi
}

# hex FILE: the file's bytes as one line of hex digits.
hex() { od -An -tx1 -v "$1" | tr -d ' \n'; }

# duration FILE: the length in seconds of a WAV file, as soxi reads it.
duration() { soxi -D "$1"; }

# between VALUE LOW HIGH: LOW <= VALUE <= HIGH, in decimals.
between() { awk -v v="$1" -v lo="$2" -v hi="$3" 'BEGIN { exit !(v >= lo && v <= hi) }'; }
