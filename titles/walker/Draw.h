#pragma once
// The walker's two ways of putting a rectangle on the 3D plane: a texture through
// the batch renderer, and a flat colour straight through the GL.
namespace walker {

// The part of `textureID` from (`s0`, `t0`) to (`s1`, `t1`) (fractions of its
// width and height, from its top left) stretched over the rectangle, in its own
// begin/end.
void DrawTexture(unsigned textureID, float s0, float t0, float s1, float t1, int x, int y, int width, int height);
// A flat rectangle in 8-bit R, G, B, A; texturing and the colour are put back.
void FillRect(int x, int y, int width, int height, unsigned rgba);

}  // namespace walker
