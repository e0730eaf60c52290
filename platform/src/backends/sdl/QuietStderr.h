#pragma once
// The audio libraries beneath SDL write their own error lines to standard error
// when there is no sound card; the device says so once, in its own words. While
// one of these lives, standard error goes nowhere.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace solva {
namespace detail {

class QuietStderr {
 public:
  QuietStderr() {
    fflush(stderr);
    mSaved = dup(2);
    const int nowhere = open("/dev/null", O_WRONLY);
    if (mSaved >= 0 && nowhere >= 0) dup2(nowhere, 2);
    if (nowhere >= 0) close(nowhere);
  }
  ~QuietStderr() {
    fflush(stderr);
    if (mSaved >= 0) {
      dup2(mSaved, 2);
      close(mSaved);
    }
  }
  QuietStderr(const QuietStderr&) = delete;
  QuietStderr& operator=(const QuietStderr&) = delete;

 private:
  int mSaved = -1;
};

}  // namespace detail
}  // namespace solva
