#ifndef SRC_RENDERSYSTEM_ANIMATEDMODEL2DRENDER_H
#define SRC_RENDERSYSTEM_ANIMATEDMODEL2DRENDER_H
// Collects textured 2D quads during a frame and draws them with one draw call per
// texture: quads are sorted into a batch per texture as they arrive, so callers
// may interleave textures freely. Positions and texture coordinates are 16.16
// fixed point from the writer to the GL.
//
// A title with 3D on creates the singleton after its GL context. Writers store
// quads straight through the current batch's cursors:
//
//   AnimatedModel2DRender& r = AnimatedModel2DRender::sInstance();
//   r.begin(0, 1);
//   r.swapTexture(texture->mTextureID);
//   AnimatedModel2DRender::BatchBuffer& b = r.mBatches[r.mCurrentBatch];
//   *b.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(left);  // x, y of four vertices:
//   ...                                                            // top-left, top-right,
//   r.end();                                                       // bottom-right, bottom-left
//
// Across textures, batches are drawn in the order their textures first appeared,
// not in the order of the quads: keep overlapping sprites of different textures in
// separate begin/end pairs.
#include <GLES/gl.h>

#include "Base/singleton.h"

class AnimatedModel2DRender : public Singleton<AnimatedModel2DRender, Tag_Singleton_Manual> {
 public:
  enum {
    MAX_TEXTURE_SWAP = 10,  // batches: distinct textures in one begin/end pair
    MAX_VERTEX_NUM = 6000,  // vertices in one batch (1500 quads)
  };

  // The client-side arrays of one texture's quads.
  struct BatchBuffer {
    BatchBuffer();
    ~BatchBuffer();
    // Allocates the arrays and puts the cursors at their starts.
    void init();

    GLfixed* mVertexBase;         // x, y pairs
    GLfixed* mTexCoordBase;       // u, v pairs
    unsigned char* mColorBase;    // red, green, blue, alpha
    GLfixed* mVertexPtr;          // write cursors
    GLfixed* mTexCoordPtr;
    unsigned char* mColorPtr;
    unsigned int mTextureID;      // 0 when free
    int mInUse;                   // 1 when a texture was assigned

   private:
    BatchBuffer(const BatchBuffer&);
    BatchBuffer& operator=(const BatchBuffer&);
  };

  // Needs the GL context current: makes the three dynamic vertex buffers and the
  // static index buffer, and allocates every batch.
  AnimatedModel2DRender();
  ~AnimatedModel2DRender();

  // Opens a collection; ignored (arguments and all) while one is open.
  void begin(int useColor, int useTexture);
  // Makes the batch of `textureID` (nonzero) the one that receives the next quads.
  int swapTexture(unsigned int textureID);
  // Draws every batch and closes the collection.
  void end();

  // A pixel coordinate, and a texel over its texture's size, as 16.16 fixed point.
  static GLfixed PixelToFixed(float pixel) { return GLfixed(pixel * 65536.0f); }
  static GLfixed TexelToFixed(float texel, float textureSize) { return GLfixed(texel / textureSize * 65536.0f); }

  unsigned int mVertexVBO;
  unsigned int mTexCoordVBO;
  unsigned int mIndexVBO;
  unsigned int mColorVBO;
  int mInBatch;         // set between begin and end
  int usedBatchCount;   // batches in use
  int mCurrentBatch;    // the batch that receives quads
  int mUseColor;        // per-vertex colours are drawn
  int mUseTexture;      // textures are drawn
  BatchBuffer mBatches[MAX_TEXTURE_SWAP];

 private:
  AnimatedModel2DRender(const AnimatedModel2DRender&);
  AnimatedModel2DRender& operator=(const AnimatedModel2DRender&);
};

#endif
