#include "Base/colorPrintf.h"

#include <stdarg.h>
#include <stdio.h>

int colorPrintf(EPrintfColor /*color*/, const char* format, ...) {
  va_list args;
  va_start(args, format);
  const int written = vprintf(format, args);
  va_end(args);
  return written;
}
