#pragma once
// The capture service: records the microphone into a PCM WAV file (16-bit mono,
// 16 kHz, the canonical 44-byte header) until told to stop.
#include <glibmm/ustring.h>

#include "IEventListener.h"
#include "PlatformTypes.h"

typedef U32 tAudCapHndl;
const tAudCapHndl kInvalidAudCapHndl = 0;

namespace Vantrel {
namespace Solva {

class CCameraSvc {
 public:
  CCameraSvc();
  virtual ~CCameraSvc();

  // Whether the microphone is there.
  bool IsCameraPresent() const;
  // The folder relative capture paths are taken in; kNoErr when it exists.
  tErrType SetCameraAudioPath(const Glib::ustring& path);
  Glib::ustring GetCameraAudioPath() const;

  // Starts writing the microphone to `path` (relative paths are taken in the audio
  // path). `maxLength` in seconds stops the capture by itself when non-zero; the
  // listener and flag are kept for the device's interface and not used here.
  // Returns kInvalidAudCapHndl when the file cannot be made or no microphone is there.
  tAudCapHndl StartAudioCapture(const Glib::ustring& path, const IEventListener* listener, U32 maxLength,
                                bool flag);
  bool PauseAudioCapture(tAudCapHndl handle);
  bool ResumeAudioCapture(tAudCapHndl handle);
  // Finishes the file: its header sizes match its data afterwards.
  bool StopAudioCapture(tAudCapHndl handle);
};

}  // namespace Solva
}  // namespace Vantrel
