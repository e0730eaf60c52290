#include "Canvas/VT/ZvCanvasRender.h"

#include <float.h>
#include <math.h>
#include <string.h>

#include "Base/XAssert.h"
#include "CDisplaySvc.h"
#include "Canvas/ColorBlendTable.h"
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
    // A negative alpha counts as 0 and one above 1 as 1: the table has no room beyond.
    const float factor = alpha < 0.0f ? 0.0f : (alpha > 1.0f ? 1.0f : alpha);
    const int bytes = width * 4 * height;
    for (int i = 0; i < bytes; i += 4) {
      const unsigned a = static_cast<unsigned>(static_cast<float>(source[i + 3]) * factor);
      target[i] = gColorBlendTable[source[i] * 256 + a];
      target[i + 1] = gColorBlendTable[source[i + 1] * 256 + a];
      target[i + 2] = gColorBlendTable[source[i + 2] * 256 + a];
      target[i + 3] = static_cast<uint8>(a);
    }
  }
  display.SwapBuffers(handle, 0);
}

void ZvCanvasRender::PostDraw() {}
