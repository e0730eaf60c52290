#pragma once
// The display service: surfaces of pixels ("handles") that the device composes into
// its 480 x 272 screen by their z-order. Every instance is a client of the one
// display of the device; handles outlive the instance that made them.
#include "PlatformTypes.h"

namespace Vantrel {
namespace Solva {

// An opaque surface; null is no surface.
typedef void* tDisplayHandle;
const tDisplayHandle kInvalidDisplayHandle = 0;

// Pixel formats of a surface, by the numbers the device expects.
enum tPixelFormat {
  kPixelFormatError = 0,
  kPixelFormatRGB4444 = 1,
  kPixelFormatRGB565 = 2,
  kPixelFormatARGB8888 = 3,  // 32-bit words 0xAARRGGBB, little-endian: bytes B, G, R, A
  kPixelFormatRGB888 = 4,
  kPixelFormatYUV420 = 5,    // planar YV12, see CreateHandle
};

// Where a surface lies among the others: a higher value lies on top; equal values
// lie in the order of registration, the later on top.
typedef S32 tDisplayZOrder;
const tDisplayZOrder kDisplayOnBottom = 0;
const tDisplayZOrder kDisplayOnOverlay = 1;
const tDisplayZOrder kDisplayOnTop = 2;

// Which screens a call is for; the device has one.
typedef unsigned long tDisplayScreen;
const tDisplayScreen kDisplayScreenAllScreens = 0xFFFFFFFFul;

typedef U8 Boolean;

// The device's screen.
const U16 kDisplayScreenWidth = 480;
const U16 kDisplayScreenHeight = 272;

class CDisplaySvc {
 public:
  CDisplaySvc();
  virtual ~CDisplaySvc();

  // A surface of width x height pixels, zeroed (a YUV surface black), or null for a
  // format the device cannot show, a zero size, or a buffer given by the caller
  // (the device allocates its surfaces itself). ARGB8888 rows are width x 4 bytes
  // apart. A YUV420 surface has rows of pitch = 2 x width bytes (width rounded up to
  // even): luma in the left `width` bytes of each row, and at half resolution the U
  // plane in the right part of the upper height/2 rows and the V plane in the right
  // part of the rows below.
  tDisplayHandle CreateHandle(U16 height, U16 width, tPixelFormat colorDepth, U8* pBuffer);
  // Frees the surface; the handle is stale from then on.
  tErrType DestroyHandle(tDisplayHandle hndl, Boolean destroyBuffer);

  // Puts the surface on the screen at (xPos, yPos), shown, at its full size.
  tErrType Register(tDisplayHandle hndl, S16 xPos, S16 yPos, tDisplayZOrder initialZOrder, tDisplayScreen screen);
  tErrType UnRegister(tDisplayHandle hndl, tDisplayScreen screen);

  // The plane's opacity in percent (0 to 100), applied over its pixels' own alpha
  // when enabled; a plane without alpha covers what lies beneath.
  tErrType SetAlpha(tDisplayHandle hndl, U8 level, Boolean enable);
  // Moves the plane, sets how much of it shows (at most the surface), shows or
  // hides it.
  tErrType SetWindowPosition(tDisplayHandle hndl, S16 x, S16 y, U16 width, U16 height, Boolean visible);

  U16 GetWidth(tDisplayHandle hndl) const;
  U16 GetHeight(tDisplayHandle hndl) const;
  U16 GetPitch(tDisplayHandle hndl) const;
  // The memory to write the next picture into; SwapBuffers shows it.
  U8* GetBuffer(tDisplayHandle hndl) const;
  tPixelFormat GetPixelFormat(tDisplayHandle hndl) const;

  // Shows what was written to the buffer: the written buffer becomes the one on
  // the screen, and GetBuffer from now on gives the one that was on it.
  tErrType SwapBuffers(tDisplayHandle hndl, Boolean waitVSync);

  U16 GetNumberOfScreens() const;
};

}  // namespace Solva
}  // namespace Vantrel
