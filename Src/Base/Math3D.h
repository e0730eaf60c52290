#ifndef SRC_BASE_MATH3D_H
#define SRC_BASE_MATH3D_H
// Small float vectors of the render code.

namespace Math3D {

struct vec2 {
  float x, y;
};
struct vec3 {
  float x, y, z;
};
struct vec4 {
  float x, y, z, w;
};

}  // namespace Math3D

#endif
