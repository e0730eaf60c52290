#pragma once
// Counts the draw calls and texture binds a program makes, and keeps what it
// uploads into array buffers, for tests and benchmarks of batching. The program
// that links GLCallCounter.cpp defines glDrawElements, glBindTexture, glBindBuffer
// and glBufferSubData itself; its definitions note each call and pass it on to
// the GL library's own, so everything is still drawn.
//
//   zvtest::GLCalls().Reset();
//   ... draw ...
//   EXPECT_EQ(3, zvtest::GLCalls().drawElements);
#include <vector>

namespace zvtest {

struct GLCallCounts {
  int drawElements = 0;
  int bindTexture = 0;
  std::vector<int> drawnIndices;     // the count of each glDrawElements
  std::vector<unsigned> boundTextures;  // the texture of each glBindTexture
  // Each glBufferSubData into a GL_ARRAY_BUFFER, with the buffer bound then.
  struct Upload {
    unsigned buffer;
    std::vector<unsigned char> bytes;
  };
  std::vector<Upload> uploads;
  bool keepUploads = true;  // benchmarks turn it off
  unsigned arrayBuffer = 0;  // bound now
  void Reset() {
    const unsigned bound = arrayBuffer;
    const bool keep = keepUploads;
    *this = GLCallCounts();
    arrayBuffer = bound;
    keepUploads = keep;
  }
};

GLCallCounts& GLCalls();

}  // namespace zvtest
