#pragma once
#include "CPowerMessage.h"

namespace Vantrel {
namespace Solva {

class CPowerSvc {
 public:
  CPowerSvc();
  virtual ~CPowerSvc();
  int GetPowerState() const;
};

}  // namespace Solva
}  // namespace Vantrel
