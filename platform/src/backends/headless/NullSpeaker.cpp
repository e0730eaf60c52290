// "none": the output goes nowhere; sounds still play and end on the device clock.
#include "backends/Speaker.h"

namespace solva {
namespace detail {
namespace {

class NullSpeaker : public Speaker {
 public:
  bool Renders() const override { return false; }
  void Write(const int16_t*, size_t) override {}
};

Speaker* OpenNullSpeaker(const std::string&, int, std::string*) { return new NullSpeaker(); }

}  // namespace

const SpeakerBackend kNullSpeakerBackend = {"none", true, &OpenNullSpeaker};

}  // namespace detail
}  // namespace solva
