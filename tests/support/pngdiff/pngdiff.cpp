// pngdiff EXPECTED ACTUAL: compares the pixels of two PNG files. Exit 0 when they
// are the same, 1 (with the first difference and the count) when not, 2 when a
// file cannot be read.
#include <cstdio>
#include <string>

#include "support/PngImage.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: pngdiff EXPECTED.png ACTUAL.png\n");
    return 2;
  }
  zvtest::PngImage expected, actual;
  std::string error;
  if (!zvtest::ReadPng(argv[1], &expected, &error) || !zvtest::ReadPng(argv[2], &actual, &error)) {
    fprintf(stderr, "pngdiff: %s\n", error.c_str());
    return 2;
  }
  if (expected.width != actual.width || expected.height != actual.height) {
    printf("pngdiff: %s is %dx%d, %s is %dx%d\n", argv[1], expected.width, expected.height, argv[2], actual.width,
           actual.height);
    return 1;
  }
  long differing = 0;
  int firstX = -1, firstY = -1;
  for (int y = 0; y < expected.height; ++y) {
    for (int x = 0; x < expected.width; ++x) {
      if (expected.at(x, y) == actual.at(x, y)) continue;
      if (differing++ == 0) {
        firstX = x;
        firstY = y;
      }
    }
  }
  if (differing == 0) return 0;
  printf("pngdiff: %ld pixels differ; the first at (%d, %d): expected %08X, got %08X\n", differing, firstX, firstY,
         expected.at(firstX, firstY), actual.at(firstX, firstY));
  return 1;
}
