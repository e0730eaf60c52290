#pragma once
// One textured quad with the fixed-point profile: GL_FIXED vertex and texture
// coordinate arrays, two triangles. Shared by the GL tests and the 3D test title;
// it needs no test framework.

namespace zvtest {

// Draws texture `textureID` over the rectangle (x, y, width, height) in the current
// projection, the texture's first row at y, with whatever state is set.
void DrawTexturedQuad(unsigned textureID, int x, int y, int width, int height);

}  // namespace zvtest
