#pragma once
// One textured quad with the fixed-point profile: GL_FIXED vertex and texture
// coordinate arrays, two triangles. Shared by the GL tests and the 3D test title;
// it needs no test framework.

namespace zvtest {

// Draws texture `textureID` over the rectangle (x, y, width, height) in the current
// projection, the texture's first row at y, with whatever state is set.
void DrawTexturedQuad(unsigned textureID, int x, int y, int width, int height);
// The same with the part of the texture from (s0, t0) to (s1, t1), in texture
// coordinates (1.0 the whole width or height), on the quad's left top to its
// right bottom; s0 above s1 mirrors it.
void DrawTexturedQuad(unsigned textureID, int x, int y, int width, int height, float s0, float t0, float s1,
                      float t1);

}  // namespace zvtest
