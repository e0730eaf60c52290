#include "YGUI/YGUIImage.h"

#include "Canvas/CanvasLayer.h"
#include "YGUI/YGUIGrid.h"

YGUIImage::YGUIImage(YGUIGrid& grid)
    : YGUIControl(grid),
      mRenderBuffer(0),
      mScaleType(eScale_Nearest),
      mPartRender(false),
      mPartVertical(false),
      mPartRatio(1),
      mRole(0) {}

void YGUIImage::Initialize() {
  mEnabled = 0;
  mAnimeAble = 1;
  mVisible = 1;
}

void YGUIImage::Destroy() {
  mImage.Release();
  mRenderBuffer = 0;
  YGUIFrame::Destroy();
}

void YGUIImage::SetImage(const std::string& file) {
  mImage.LoadImage(file, "res/UI/UITexture/");
  // The old buffer went with the old pixels; the next Render builds a new one.
  mRenderBuffer = 0;
}

bool YGUIImage::SetImageByPath(const char* path) {
  std::string whole(path ? path : "");
  std::string folder;
  std::string file = whole;
  std::string::size_type cut = whole.rfind('/');
  if (cut != std::string::npos) {
    folder = whole.substr(0, cut + 1);
    file = whole.substr(cut + 1);
  }
  cut = file.rfind('\\');
  if (cut != std::string::npos) {
    folder += file.substr(0, cut + 1);
    file = file.substr(cut + 1);
  }
  mImage.LoadImage(file, folder);
  mRenderBuffer = mImage.GetRenderBuffer(mRenderWidth, mRenderHeight, eScale_Nearest);
  return true;
}

void YGUIImage::SetImage(unsigned char* pixels, int width, int height) {
  mImage.SetImage(pixels, width, height, eImage_RGB888);
  YGUIControl::SetSize(width, height);
  mRenderBuffer = mImage.GetRenderBuffer(mRenderWidth, mRenderHeight, mScaleType);
}

void YGUIImage::SetSize(int width, int height) {
  YGUIControl::SetSize(width, height);
  mRenderBuffer = mImage.GetRenderBuffer(mRenderWidth, mRenderHeight, mScaleType);
}

void YGUIImage::SetPartRenderParm(bool enable, bool vertical, const int& ratio) {
  mPartRender = enable;
  mPartVertical = vertical;
  mPartRatio = ratio;
}

void YGUIImage::SetImageEmpty() {
  mImage.Release();
  mRenderBuffer = mImage.GetRenderBuffer(mRenderWidth, mRenderHeight, mScaleType);
}

void YGUIImage::Render(CanvasLayer& canvas, EOrientationStatus orient) {
  if (!mImage.mData) return;
  if (mRenderChanged || !mRenderBuffer) {
    mRenderBuffer = mImage.GetRenderBuffer(mRenderWidth, mRenderHeight, mScaleType);
    mGrid.mForceRedraw = 0;
  }
  // A size that gives no buffer draws nothing.
  if (!mRenderBuffer) return;
  const int left = mRenderLeft;
  const int top = mRenderTop;
  const int width = mRenderWidth;
  const int height = mRenderHeight;
  if (mImage.mType != eImage_RGBA8888) {
    canvas.Draw_Image_RGB888(left, top, mRenderBuffer, width, height, orient);
    return;
  }
  const float alpha = mRenderOpacity / 4096.0f;
  const long long r = mPartRatio;
  if (mPartRender && mPartVertical) {
    // The lower part of the image, at its place.
    const int y = (int)(top + height * (1 - r / 4096.0f));
    canvas.Draw_Image_RGBA8888(left, y, 0, (int)(((4096 - r) * height + 2048) >> 12), width,
                               (int)((r * height + 2048) >> 12), mRenderBuffer, width, height, alpha, orient);
  } else if (mPartRender) {
    // The left part.
    canvas.Draw_Image_RGBA8888(left, top, 0, 0, (int)((r * width + 2048) >> 12), height, mRenderBuffer, width, height,
                               alpha, orient);
  } else {
    canvas.Draw_Image_RGBA8888(left, top, width, height, mRenderBuffer, width, height, alpha, orient);
  }
}
