#ifndef SRC_RENDERSYSTEM_RENDERSTATESTACK_H
#define SRC_RENDERSYSTEM_RENDERSTATESTACK_H
// Saves, on construction, the pieces of GL state a special draw changes and puts
// them back when it ends. The colour ring is shared by all of them.
#include <list>

class RenderStateStack {
 public:
  struct Color {
    float r, g, b, a;
  };
  typedef std::list<Color> ColorRing;

  RenderStateStack();
  ~RenderStateStack();

  static void initialize();
  static void destory();  // spelled so, as every caller has it
  static ColorRing* GetColorContainer();

 private:
  int mTexEnvMode;
  int mBlendEnabled;
  int mBlendDst;
  int mBlendSrc;
  int mTexture2DEnabled;

  static ColorRing* mpStack;
};

#endif
