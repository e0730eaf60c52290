#!/usr/bin/env bash
# The walker's resources rebuilt from their sources by the tools, compared byte
# for byte with the committed ones, so that tools and assets never drift apart:
# the art drawn again by tools/make-walker-art.py (frames, background, sounds;
# the texts and descriptions are written by hand),
# then sprites, fonts, the WAF archive and the sound project made from it by
# tools/make-walker-res.sh with the tools of this build.
set -euo pipefail
source "$(dirname "$0")/common.bash"
walker="$SOURCE_DIR/titles/walker"

python3 "$SOURCE_DIR/tools/make-walker-art.py" "$work/art" || fail "make-walker-art.py failed"
cp "$walker"/art/*.sprite "$walker"/art/*.soundproject "$work/art/"
cp "$walker/art/pack/Texts.xml" "$work/art/pack/"  # written by hand, like the sprites' descriptions
diff -r "$walker/art" "$work/art" || fail "the art drawn again differs from titles/walker/art"

"$SOURCE_DIR/tools/make-walker-res.sh" "$BUILD_DIR" "$work/res" "$work/art" > "$work/res.out" 2>&1 ||
  fail "make-walker-res.sh failed: $(cat "$work/res.out")"
diff -r "$walker/res" "$work/res" || fail "the rebuilt resources differ from titles/walker/res"
[ "$(ls -R "$walker/res" | wc -l)" -gt 10 ] || fail "titles/walker/res is nearly empty"
echo "walker resources: ok"
