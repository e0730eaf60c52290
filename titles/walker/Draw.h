#pragma once
// The walker's two ways of putting a rectangle on the 3D plane: a texture through
// the batch renderer, and a flat colour straight through the GL.
namespace walker {

// The part of `textureID` from its top left to (`s`, `t`) (fractions of its
// width and height) stretched over the rectangle, in its own begin/end.
void DrawTexture(unsigned textureID, float s, float t, int x, int y, int width, int height);
// A flat rectangle in 8-bit R, G, B, A; texturing and the colour are put back.
void FillRect(int x, int y, int width, int height, unsigned rgba);

}  // namespace walker
