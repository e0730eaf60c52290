#include "Base/XAssert.h"

#include <stdio.h>
#include <stdlib.h>

namespace {
XAssertHandler sHandler = 0;
}

XAssertHandler XAssertSetHandler(XAssertHandler handler) {
  XAssertHandler before = sHandler;
  sHandler = handler;
  return before;
}

void XAssertFailed(const char* expression, const char* reason) {
  if (reason != 0) {
    printf("Assertion failed: %s (%s)\n", expression, reason);
  } else {
    printf("Assertion failed: %s\n", expression);
  }
  // The fault below ends the process without flushing stdio; the line must not die
  // in the buffer.
  fflush(stdout);
  if (sHandler != 0) sHandler(expression, reason);
  *static_cast<volatile int*>(0) = 0;
  abort();  // only reached where the null page is mapped
}
