#pragma once
// The canvas layers' drawing as it was first written: one pixel at a time, rows outer
// and columns inner, blending through gColorBlendTable (platform layers) or with
// divisions (the portable layer). The layers' spans are judged against it.
#include <cstdint>
#include <vector>

namespace canvasref {

// A layer's pixels: width x height x 4 bytes.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> bytes;
};

enum class Form {
  ZvRGBA9,      // ZvCanvasLayer::Draw_Image_RGBA8888(x, y, w, h, ...)
  ZvRGBA11,     // ZvCanvasLayer::Draw_Image_RGBA8888(x, y, srcX, srcY, w, h, ...), no skips
  ZvRGB6,       // ZvCanvasLayer and ZvCanvasRGBALayer::Draw_Image_RGB888(x, y, ...)
  ZvRGB10,      // ZvCanvasLayer::Draw_Image_RGB888(x, y, srcX, srcY, w, h, ...)
  PlainRGBA9,   // CanvasLayer::Draw_Image_RGBA8888(x, y, w, h, ...)
  PlainRGBA11,  // CanvasLayer::Draw_Image_RGBA8888(x, y, srcX, srcY, w, h, ...)
  PlainRGB6,    // CanvasLayer::Draw_Image_RGB888(x, y, ...)
  PlainRGB10,   // CanvasLayer::Draw_Image_RGB888(x, y, srcX, srcY, w, h, ...)
};
const Form kForms[] = {Form::ZvRGBA9,    Form::ZvRGBA11,    Form::ZvRGB6,    Form::ZvRGB10,
                       Form::PlainRGBA9, Form::PlainRGBA11, Form::PlainRGB6, Form::PlainRGB10};
const char* Name(Form form);
bool IsRGBA(Form form);
bool IsPlatform(Form form);

// The arguments of one draw; forms without them ignore srcX, srcY, w, h or alpha.
struct Draw {
  int x = 0, y = 0, srcX = 0, srcY = 0, w = 0, h = 0;
  const uint8_t* src = nullptr;
  int srcW = 0, srcH = 0;
  float alpha = 1.0f;
  int orient = 0;
};

void Apply(Form form, const Draw& draw, Pixels& layer);

// CanvasLayer::Draw_Image_WithColor; false where it stops at its failing check.
bool WithColor(Pixels& layer, int x, int y, int w, int h, int orient);

// ZvCanvasRender::DrawLayer's blend for an alpha other than 0 and 1.
void Fade(const Pixels& layer, float alpha, std::vector<uint8_t>& display);

}  // namespace canvasref
