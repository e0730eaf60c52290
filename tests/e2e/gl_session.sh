#!/usr/bin/env bash
# The 3D test title in solva-sim, headless: textures of every device format drawn
# by OpenGL ES (Mesa's llvmpipe) on the 3D plane, under the title's canvas strip,
# compared pixel for pixel with the reference screens; the arrows and a tap move
# the frame. Then the same title on a device without EGL: a clear message, and the
# title ends cleanly.
set -euo pipefail
source "$(dirname "$0")/common.bash"
TITLE="$STAGE_DIR/gltitle"

run gl --params '{}' <<'SCRIPT'
frames 3              # the third frame is the first that draws
screenshot g1-textures.png
click right
click right
click down            # from tile 0 to tile 7
screenshot g2-moved.png
tap 400 200           # the tile at the bottom right
frames 1
screenshot g3-tapped.png
click b
SCRIPT
shot gl g1-textures.png
shot gl g2-moved.png
shot gl g3-tapped.png
grep -q '^\[SolvaOpenGL create\]$' "$work/gl.out" || fail "gl: no 3D set-up"
grep -q '^\[CloseSolvaOpenGL\]$' "$work/gl.out" || fail "gl: the 3D context was not closed"
case "$(answer gl)" in
  '{"3d":1,"textures":15,"textureBytes":193184,"fonts":4,"selected":14,'*'"finished":1}') ;;
  *) fail "gl: answer was $(answer gl)" ;;
esac

# A device whose EGL has no driver (no vendor library to load).
__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent run noegl --params '{}' <<'SCRIPT'
frames 5
SCRIPT
grep -q '^\[SolvaOpenGL\] cannot create the 3D context: ' "$work/noegl.out" || fail "noegl: no message"
grep -q '^gltitle: the device has no 3D context; nothing to show$' "$work/noegl.out" || fail "noegl: title"
[ "$(answer noegl)" = '{"3d":0,"textures":0,"textureBytes":0,"fonts":0,"selected":0,"frames":0,"finished":1}' ] ||
  fail "noegl: answer was $(answer noegl)"
echo "gl session: ok"
