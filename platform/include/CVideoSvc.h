#pragma once

namespace Vantrel {
namespace Solva {

// The video playback service. The shell makes one; this title plays no video.
class CVideoSvc {
 public:
  CVideoSvc();
  virtual ~CVideoSvc();
};

}  // namespace Solva
}  // namespace Vantrel
