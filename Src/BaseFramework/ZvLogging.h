#ifndef SRC_BASEFRAMEWORK_ZVLOGGING_H
#define SRC_BASEFRAMEWORK_ZVLOGGING_H
// The device's usage log behind Logging. Its records are not written yet.
#include "BaseFramework/Logging.h"

class ZvLogging : public Logging {
 public:
  ZvLogging() {}
  virtual ~ZvLogging() {}
};

#endif
