#pragma once
// The device's audio service: plays WAV and Ogg Vorbis files through the
// device's speaker, mixed with whatever else sounds.
//
// All sounds belong to the device, not to one service object: ids are unique
// on the device, and the "all" operations act on every sound. Positions and ends
// follow the device clock.
#include <glibmm/ustring.h>

#include "IEventListener.h"
#include "PlatformTypes.h"

// A sound started by StartAudio. Ids start at 1; kNoAudioID names no sound.
typedef S32 tAudioID;
const tAudioID kNoAudioID = -1;

// StartAudio flags: with kAudioRepeat the payload is the number of times the
// file plays in all (0 counts as 1); 0x40000000 is, in practice, for ever.
const U32 kAudioRepeat = 2;

namespace Vantrel {
namespace Solva {

class CAudioSvc {
 public:
  // The listener would receive the device's audio messages; it may be null.
  explicit CAudioSvc(const IEventListener* listener = NULL);
  virtual ~CAudioSvc();

  // Starts `path` (relative to the resource path unless it begins with "/") at
  // `volume` (0 to 100; more counts as 100). The device has one speaker, so
  // `pan` is kept but not applied, and every priority sounds. Returns the id, or
  // kNoAudioID when the file cannot be read as sound.
  tAudioID StartAudio(const Glib::ustring& path, U8 volume, U8 priority, S8 pan,
                      const IEventListener* listener = NULL, U32 payload = 0, U32 flags = 0);

  // Ends the sound at once. `mode` 1 tells that it had already ended (no done
  // message); the effect is the same. kNotFoundErr for an id that names no sound.
  tErrType StopAudio(tAudioID id, U8 mode);
  void StopAllAudio();
  void PauseAllAudio();
  void ResumeAllAudio();
  tErrType PauseAudio(tAudioID id);
  tErrType ResumeAudio(tAudioID id);

  // True from StartAudio until the sound ends or is stopped, paused or not.
  bool IsAudioPlaying(tAudioID id) const;
  tErrType SetAudioVolume(tAudioID id, U8 volume);
  // Milliseconds into the current pass of the file; 0 for no sound.
  U32 GetAudioTime(tAudioID id) const;
  // Jumps to `timeMs` into the file; past its end, the pass ends.
  tErrType SeekAudioTime(tAudioID id, U32 timeMs);

  // The folder against which StartAudio resolves relative paths; the running
  // title's folder until set.
  tErrType SetAudioResourcePath(const Glib::ustring& path);
  Glib::ustring GetAudioResourcePath() const;

 private:
  CAudioSvc(const CAudioSvc&);
  CAudioSvc& operator=(const CAudioSvc&);

  const IEventListener* mListener;
  Glib::ustring mResourcePath;  // ends in a slash
};

}  // namespace Solva
}  // namespace Vantrel
