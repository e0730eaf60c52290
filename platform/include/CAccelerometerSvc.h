#pragma once
#include "CAccelerometerMessage.h"

namespace Vantrel {
namespace Solva {

class CAccelerometerSvc {
 public:
  CAccelerometerSvc();
  virtual ~CAccelerometerSvc();
  bool IsAccelerometerPresent() const;
  tOrientation GetOrientation() const;
  // How often and in which form tilt events come; kept, and reported back.
  tErrType SetAccelerometerRate(U32 rate);
  tErrType SetAccelerometerMode(U32 mode);
  U32 GetAccelerometerRate() const;
  U32 GetAccelerometerMode() const;
};

}  // namespace Solva
}  // namespace Vantrel
