#pragma once
// The device's sound output: every sound of every CAudioSvc, mixed on the device
// clock. CAudioSvc and the device-control API (solva/Audio.h) are its two faces.
#include <string>

#include "CAudioSvc.h"

namespace solva {
namespace detail {

// Each of these first mixes up to the current device time.
tAudioID MixerStart(const std::string& path, U8 volume, U8 priority, S8 pan, U32 payload, U32 flags);
tErrType MixerStop(tAudioID id, U8 mode);
void MixerStopAll();
void MixerPauseAll();
void MixerResumeAll();
tErrType MixerPause(tAudioID id);
tErrType MixerResume(tAudioID id);
bool MixerIsPlaying(tAudioID id);
tErrType MixerSetVolume(tAudioID id, U8 volume);
U32 MixerTime(tAudioID id);
tErrType MixerSeek(tAudioID id, U32 timeMs);
// The application manager suspends the title's sound output, or resumes it.
void MixerSuspendDevice(bool suspended);

}  // namespace detail
}  // namespace solva
