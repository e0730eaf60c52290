#include "Canvas/VT/ZvCanvasRender.h"

#include <float.h>
#include <math.h>
#include <string.h>

#include "Base/XAssert.h"
#include "CDisplaySvc.h"
#include "Canvas/CanvasSpans.h"
#include "Canvas/VT/ZvCanvasTypes.h"

using namespace Vantrel::Solva;

ZvCanvasRender::ZvCanvasRender() {}
ZvCanvasRender::~ZvCanvasRender() {}

void ZvCanvasRender::PreDraw() {}

void ZvCanvasRender::DrawLayer(CanvasLayer* layer, float alpha) {
  ZvCanvasLayer* ZvLayer = dynamic_cast<ZvCanvasLayer*>(layer);
  XASSERT(ZvLayer);
  if (ZvLayer->GetLayerType() != kZvLayerRGBA) return;

  CDisplaySvc display;
  const tDisplayHandle handle = ZvLayer->GetLayerHandle();
  const tPixelFormat PixelFormat = display.GetPixelFormat(handle);
  XASSERT(PixelFormat == kPixelFormatARGB8888);
  const int width = display.GetWidth(handle);
  const int height = display.GetHeight(handle);
  uint8* target = display.GetBuffer(handle);
  const uint8* source = ZvLayer->GetBuffer();

  if (fabsf(alpha - 1.0f) <= FLT_EPSILON) {
    memcpy(target, source, width * 4 * height);
  } else if (alpha == 0.0f) {
    memset(target, 0, width * 4 * height);
  } else {
    // A negative alpha (or none, NaN) counts as 0 and one above 1 as 1: the table has
    // no room beyond. Each pixel as T[byte][a] with a = (unsigned)(A x alpha).
    const float factor = !(alpha > 0.0f) ? 0.0f : (alpha > 1.0f ? 1.0f : alpha);
    CanvasSpans().fade(target, source, width * height, factor);
  }
  display.SwapBuffers(handle, 0);
}

void ZvCanvasRender::PostDraw() {}
