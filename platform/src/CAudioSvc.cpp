#include "CAudioSvc.h"

#include "AudioMixer.h"
#include "CSystemData.h"
#include "Storage.h"

namespace Vantrel {
namespace Solva {

using namespace solva::detail;

CAudioSvc::CAudioSvc(const IEventListener* listener)
    : mListener(listener), mResourcePath(CSystemData::Instance()->GetCurrentTitlePath()) {}

// The listener would receive done messages; this device sends none.
CAudioSvc::~CAudioSvc() { (void)mListener; }

tAudioID CAudioSvc::StartAudio(const Glib::ustring& path, U8 volume, U8 priority, S8 pan,
                               const IEventListener* /*listener*/, U32 payload, U32 flags) {
  std::string full = path.raw();
  if (full.empty() || full[0] != '/') full = mResourcePath.raw() + full;
  return MixerStart(full, volume, priority, pan, payload, flags);
}

tErrType CAudioSvc::StopAudio(tAudioID id, U8 mode) { return MixerStop(id, mode); }
void CAudioSvc::StopAllAudio() { MixerStopAll(); }
void CAudioSvc::PauseAllAudio() { MixerPauseAll(); }
void CAudioSvc::ResumeAllAudio() { MixerResumeAll(); }
tErrType CAudioSvc::PauseAudio(tAudioID id) { return MixerPause(id); }
tErrType CAudioSvc::ResumeAudio(tAudioID id) { return MixerResume(id); }
bool CAudioSvc::IsAudioPlaying(tAudioID id) const { return MixerIsPlaying(id); }
tErrType CAudioSvc::SetAudioVolume(tAudioID id, U8 volume) { return MixerSetVolume(id, volume); }
U32 CAudioSvc::GetAudioTime(tAudioID id) const { return MixerTime(id); }
tErrType CAudioSvc::SeekAudioTime(tAudioID id, U32 timeMs) { return MixerSeek(id, timeMs); }

tErrType CAudioSvc::SetAudioResourcePath(const Glib::ustring& path) {
  if (path.empty()) return kInvalidParamErr;
  mResourcePath = FolderPath(path.raw());
  return kNoErr;
}

Glib::ustring CAudioSvc::GetAudioResourcePath() const { return mResourcePath; }

}  // namespace Solva
}  // namespace Vantrel
