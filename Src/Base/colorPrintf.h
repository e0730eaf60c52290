#ifndef SRC_BASE_COLORPRINTF_H
#define SRC_BASE_COLORPRINTF_H

enum EPrintfColor {
  ePC_Default = 0,
  ePC_Red,
  ePC_Green,
  ePC_Yellow,
  ePC_Blue,
  ePC_Magenta,
  ePC_Cyan,
  ePC_White,
};

// printf with a colour that the device's console ignores: the colour has no effect.
int colorPrintf(EPrintfColor color, const char* format, ...) __attribute__((format(printf, 2, 3)));

#endif
