// Which build of the spans the layers draw with.
#include "Canvas/CanvasSpans.h"

#include <new>

namespace {

bool ProcessorRuns(ECanvasSpanPath path) {
  switch (path) {
    case kCanvasSpanPortable: return true;
#if defined(__x86_64__) || defined(__i386__)
    case kCanvasSpanSSE2:
      __builtin_cpu_init();  // may be asked before the C library's own start-up ran it
      return __builtin_cpu_supports("sse2");
    case kCanvasSpanAVX2: __builtin_cpu_init(); return __builtin_cpu_supports("avx2");
#endif
    default: return false;
  }
}

struct Choice {
  ECanvasSpanPath path;
  const CanvasSpanOps* ops;
};

Choice& Chosen() {
  static Choice choice = {CanvasBestSpanPath(), CanvasSpanOpsFor(CanvasBestSpanPath())};
  return choice;
}

}  // namespace

const CanvasSpanOps* CanvasSpanOpsFor(ECanvasSpanPath path) {
  const CanvasSpanOps* ops = 0;
  switch (path) {
    case kCanvasSpanPortable: ops = &gCanvasSpansPortable; break;
    case kCanvasSpanSSE2: ops = gCanvasSpansSSE2; break;
    case kCanvasSpanAVX2: ops = gCanvasSpansAVX2; break;
    default: break;
  }
  return ops && ProcessorRuns(path) ? ops : 0;
}

ECanvasSpanPath CanvasBestSpanPath() {
  if (CanvasSpanOpsFor(kCanvasSpanAVX2)) return kCanvasSpanAVX2;
  if (CanvasSpanOpsFor(kCanvasSpanSSE2)) return kCanvasSpanSSE2;
  return kCanvasSpanPortable;
}

const CanvasSpanOps& CanvasSpans() { return *Chosen().ops; }

ECanvasSpanPath CanvasSpanPath() { return Chosen().path; }

bool CanvasUseSpanPath(ECanvasSpanPath path) {
  const CanvasSpanOps* ops = CanvasSpanOpsFor(path);
  if (!ops) return false;
  Chosen().path = path;
  Chosen().ops = ops;
  return true;
}

uint8* NewCanvasBuffer(int bytes) { return new (std::align_val_t(64)) uint8[bytes]; }

void DeleteCanvasBuffer(uint8* buffer) { operator delete[](buffer, std::align_val_t(64)); }
