#include "CanvasReference.h"

#include <cstddef>
#include <cstring>

#include "Canvas/ColorBlendTable.h"

namespace canvasref {

namespace {

unsigned T(unsigned i, unsigned j) { return gColorBlendTable[i * 256 + j]; }

unsigned AlphaByte(float alpha) {
  if (!(alpha > 0.0f)) return 0;
  if (alpha > 1.0f) return 255;
  return static_cast<unsigned>(alpha * 255.0f);
}

int DestIndex(int orient, int X, int Y, int W, int H) {
  switch (orient) {
    case 0: return Y * W + X;
    case 2: return (H - 1 - Y) * W + (W - 1 - X);
    case 3: return (H - 1 - X) * W + Y;
    default: return X * W + (W - 1 - Y);
  }
}

void BlendThroughTable(uint8_t* dst, const uint8_t* src, unsigned a) {
  if (a == 0) return;
  if (a == 255) {  // the source word read whole, then written turned round
    const uint8_t word[4] = {src[2], src[1], src[0], src[3]};
    std::memcpy(dst, word, 4);
    return;
  }
  const unsigned d = T(dst[3], 255 - a);
  dst[2] = uint8_t(T(dst[2], d) + T(src[0], a));
  dst[1] = uint8_t(T(dst[1], d) + T(src[1], a));
  dst[0] = uint8_t(T(dst[0], d) + T(src[2], a));
  dst[3] = uint8_t(d + a);
}

void BlendDivided(uint8_t* dst, const uint8_t* src, unsigned a) {
  if (a == 0) return;
  if (a == 255) {
    for (int c = 0; c < 4; ++c) dst[c] = src[c];
    return;
  }
  const unsigned d = ((255 - a) * dst[3]) / 255;
  for (int c = 0; c < 3; ++c) dst[c] = uint8_t((src[c] * a + dst[c] * d) / 255);
  dst[3] = uint8_t(d + a);
}

}  // namespace

const char* Name(Form form) {
  switch (form) {
    case Form::ZvRGBA9: return "platform RGBA8888, 9 arguments";
    case Form::ZvRGBA11: return "platform RGBA8888, 11 arguments";
    case Form::ZvRGB6: return "platform RGB888, 6 arguments";
    case Form::ZvRGB10: return "platform RGB888, 10 arguments";
    case Form::PlainRGBA9: return "plain RGBA8888, 9 arguments";
    case Form::PlainRGBA11: return "plain RGBA8888, 11 arguments";
    case Form::PlainRGB6: return "plain RGB888, 6 arguments";
    case Form::PlainRGB10: return "plain RGB888, 10 arguments";
  }
  return "?";
}

bool IsRGBA(Form form) {
  return form == Form::ZvRGBA9 || form == Form::ZvRGBA11 || form == Form::PlainRGBA9 || form == Form::PlainRGBA11;
}

bool IsPlatform(Form form) {
  return form == Form::ZvRGBA9 || form == Form::ZvRGBA11 || form == Form::ZvRGB6 || form == Form::ZvRGB10;
}

void Apply(Form form, const Draw& draw, Pixels& layer) {
  const int W = layer.width;
  const int H = layer.height;
  const bool swapped = draw.orient != 0 && draw.orient != 2;
  const int limitX = swapped ? H : W;
  const int limitY = swapped ? W : H;
  const int x = draw.x, y = draw.y, srcW = draw.srcW, srcH = draw.srcH;
  if (x + srcW < 0 || x > limitX || y + srcH < 0 || y > limitY) return;
  int startX, runX, skipX, startY, runY, skipY;
  if (x < 0) {
    startX = 0;
    runX = limitX < x + srcW ? limitX : x + srcW;
    skipX = -x;
  } else {
    startX = x;
    runX = x + srcW > limitX ? limitX - x : srcW;
    skipX = 0;
  }
  if (y < 0) {
    startY = 0;
    runY = limitY < y + srcH ? limitY : y + srcH;
    skipY = -y;
  } else {
    startY = y;
    runY = y + srcH > limitY ? limitY - y : srcH;
    skipY = 0;
  }
  const bool withSize = form != Form::ZvRGB6 && form != Form::PlainRGB6;
  if (withSize) {
    runX = draw.w < runX ? draw.w : runX;
    runY = draw.h < runY ? draw.h : runY;
  }
  if (runY < 1) return;
  const bool withOrigin =
      form == Form::ZvRGBA11 || form == Form::ZvRGB10 || form == Form::PlainRGBA11 || form == Form::PlainRGB10;
  const int bytes = IsRGBA(form) ? 4 : 3;
  int first = 0;
  if (form != Form::ZvRGBA11) first += skipY * srcW + skipX;
  if (withOrigin) first += draw.srcY * srcW + draw.srcX;
  const unsigned b = AlphaByte(draw.alpha);
  for (int row = 0; row < runY; ++row) {
    for (int column = 0; column < runX; ++column) {
      const uint8_t* s = draw.src + (first + row * srcW + column) * bytes;
      uint8_t* d = layer.bytes.data() + DestIndex(draw.orient, startX + column, startY + row, W, H) * 4;
      switch (form) {
        case Form::ZvRGBA9: BlendThroughTable(d, s, T(b, s[3])); break;
        case Form::ZvRGBA11: BlendThroughTable(d, s, (s[3] * b + 1) >> 8); break;
        case Form::PlainRGBA9:
        case Form::PlainRGBA11: BlendDivided(d, s, s[3] * b / 255); break;
        case Form::ZvRGB6:
        case Form::ZvRGB10: {  // the three bytes read, then the word written
          const uint8_t word[4] = {s[2], s[1], s[0], 255};
          std::memcpy(d, word, 4);
          break;
        }
        case Form::PlainRGB6:
        case Form::PlainRGB10:
          d[0] = s[0];
          d[1] = s[1];
          d[2] = s[2];
          d[3] = 255;
          break;
      }
    }
  }
}

bool WithColor(Pixels& layer, int x, int y, int w, int h, int orient) {
  const int W = layer.width;
  const int H = layer.height;
  if (orient == 0) {
    if (x + w < 0 || x > H || y + h < 0 || y > W) return true;
  } else {
    if (x + w < 0 || x > W || y + h < 0 || y > H) return true;
  }
  if (h < 1 || w < 1) return true;
  const int pixels = W * H;
  for (int row = 0; row < h; ++row) {
    for (int column = 0; column < w; ++column) {
      const int X = column + x;
      const int Y = row + y;
      int index = Y * W + X;
      if (orient == 0) {
        if (index >= pixels) return false;
        index = X * W + (W - Y);
      }
      if (index < 0 || index >= pixels) continue;
      uint8_t* p = layer.bytes.data() + index * 4;
      const unsigned a = p[3];
      for (int c = 0; c < 3; ++c) p[c] = uint8_t(p[c] * a / 255);
    }
  }
  return true;
}

void Fade(const Pixels& layer, float alpha, std::vector<uint8_t>& display) {
  const float factor = alpha < 0.0f ? 0.0f : (alpha > 1.0f ? 1.0f : alpha);
  const std::vector<uint8_t>& source = layer.bytes;
  display.resize(source.size());
  for (std::size_t i = 0; i < source.size(); i += 4) {
    const unsigned a = static_cast<unsigned>(static_cast<float>(source[i + 3]) * factor);
    for (int c = 0; c < 3; ++c) display[i + c] = uint8_t(T(source[i + c], a));
    display[i + 3] = uint8_t(a);
  }
}

}  // namespace canvasref
