// The walker's one exported entry point.
#include <boost/shared_ptr.hpp>

#include "CAppInterface.h"
#include "WalkerInstance.h"

extern "C" __attribute__((visibility("default"))) boost::shared_ptr<CAppInterface> CreateApp(void* params) {
  // The shared pointer deletes the instance itself if its count cannot be made.
  return boost::shared_ptr<CAppInterface>(new walker::WalkerInstance(params));
}
