#pragma once

namespace Vantrel {
namespace Solva {

// The display service: layers of pixels composed into the device's screen.
class CDisplaySvc {
 public:
  CDisplaySvc();
  virtual ~CDisplaySvc();
};

}  // namespace Solva
}  // namespace Vantrel
