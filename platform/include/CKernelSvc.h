#pragma once

namespace Vantrel {
namespace Solva {

// The device's kernel service: the millisecond clock every part of a title keeps
// time by. The host decides whether it follows real time or a virtual clock.
class CKernelSvc {
 public:
  CKernelSvc();
  virtual ~CKernelSvc();

  // Milliseconds since the device started; wraps after 49.7 days.
  unsigned int GetElapsedTimeAsMSecs() const;
};

}  // namespace Solva
}  // namespace Vantrel
