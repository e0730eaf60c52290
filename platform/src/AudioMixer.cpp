#include "AudioMixer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

#include <strings.h>

#include "DeviceReset.h"
#include "SoundDecoder.h"
#include "backends/Speaker.h"
#include "solva/Audio.h"
#include "solva/Clock.h"

namespace solva {
namespace detail {
namespace {

// The order "default" tries; the others are taken by name only.
const SpeakerBackend* const kSpeakerBackends[] = {
    &kSdlSpeakerBackend,
    &kFileSpeakerBackend,
    &kNullSpeakerBackend,
};

const size_t kMaxEvents = 65536;
const uint64_t kChunkFrames = 4096;
// Stops, pauses and seeks fade over this long, as a sound device does, so that
// the output never steps from a sound to silence or to another place in it.
const uint64_t kRampMs = 5;

struct Voice {
  tAudioID id = kNoAudioID;
  std::string path;
  std::shared_ptr<const DecodedSound> sound;  // at the mixing rate
  uint64_t length = 0;  // frames of one pass at the mixing rate
  uint64_t pos = 0;     // frames into the current pass
  uint32_t playsLeft = 1;
  int volume = 0;
  float gain = 0;
  bool paused = false;
  bool ended = false;
  bool sounded = false;  // it has played since it started
  uint64_t rampIn = 0;   // frames of a fade-in still to come
  uint64_t rampOut = 0;  // a fading tail: frames still to come
};

float GainOf(int volume) { return float(std::min(volume, 100)) / 100.0f; }

class Mixer {
 public:
  Mixer() { mLastFrame = FrameNow(); }
  ~Mixer() {
    std::lock_guard<std::mutex> lock(mLock);
    PumpLocked();
    mSpeaker.reset();  // finishes a WAV file at the end of the run
  }

  std::mutex mLock;

  void Reset() {
    mVoices.clear();
    mTails.clear();
    mDeviceSuspended = false;
    mEvents.clear();
    mSpeaker.reset();
    mSpeakerName = "none";
    mRate = kDefaultMixRate;
    mNextId = 1;
    mLastFrame = FrameNow();
    mKeep = false;
    mKept.clear();
  }

  // Mixes the frames of device time that passed since the last call.
  void PumpLocked() {
    const uint64_t now = FrameNow();
    if (now < mLastFrame) {
      // The clock was set back (a new virtual clock): nothing to mix.
      mLastFrame = now;
      return;
    }
    const bool speaks = mSpeaker && mSpeaker->Renders();
    const bool renders = speaks || mKeep;
    uint64_t renderFrom = renders ? mLastFrame : now;
    if (speaks && !mKeep && mSpeaker->RealTime() && now - mLastFrame > uint64_t(mRate / 2)) {
      renderFrom = now - uint64_t(mRate / 2);
    }
    // Time that no one hears: the sounds move on without being computed.
    if (renderFrom > mLastFrame) AdvanceAll(nullptr, renderFrom - mLastFrame);
    while (mLastFrame < now) {
      const uint64_t chunk = std::min(kChunkFrames, now - mLastFrame);
      mMix.assign(size_t(chunk), 0.0f);
      AdvanceAll(mMix.data(), chunk);
      mOut.resize(size_t(chunk));
      for (size_t i = 0; i < size_t(chunk); ++i) {
        const float v = std::max(-1.0f, std::min(1.0f, mMix[i]));
        mOut[i] = int16_t(lrintf(v * 32767.0f));
      }
      if (speaks) mSpeaker->Write(mOut.data(), size_t(chunk));
      if (mKeep) mKept.insert(mKept.end(), mOut.begin(), mOut.end());
    }
  }

  void Keep(bool keep) {
    PumpLocked();
    mKeep = keep;
    mKept.clear();
  }

  std::vector<int16_t> TakeKept() {
    std::vector<int16_t> kept;
    kept.swap(mKept);
    return kept;
  }

  tAudioID Start(const std::string& path, U8 volume, U8 priority, S8 pan, U32 payload, U32 flags) {
    AudioEvent event = NewEvent(AudioEventKind::Start, kNoAudioID);
    event.path = path;
    event.volume = volume;
    event.priority = priority;
    event.pan = pan;
    event.payload = payload;
    event.flags = flags;
    std::string error;
    std::shared_ptr<const DecodedSound> sound = DecodeSoundFile(path, mRate, &error);
    if (!sound) {
      fprintf(stderr, "solva: audio: cannot play %s: %s\n", path.c_str(), error.c_str());
      event.kind = AudioEventKind::StartFailed;
      event.error = error;
      Log(event);
      return kNoAudioID;
    }
    Voice voice;
    voice.id = mNextId++;
    voice.path = path;
    voice.sound = sound;
    voice.length = sound->samples.size();
    voice.playsLeft = (flags == kAudioRepeat && payload > 1) ? payload : 1;
    voice.volume = volume;
    voice.gain = GainOf(volume);
    event.id = voice.id;
    Log(event);
    Settle(voice);
    if (voice.ended) {
      LogEnd(voice, mLastFrame);
    } else {
      mVoices.push_back(voice);
    }
    return voice.id;
  }

  tErrType Stop(tAudioID id, U8 mode) {
    AudioEvent event = NewEvent(AudioEventKind::Stop, id);
    event.value = mode;
    auto it = Find(id);
    event.existed = it != mVoices.end();
    if (event.existed) {
      event.path = it->path;
      FadeOut(*it);
      mVoices.erase(it);
    }
    Log(event);
    return event.existed ? kNoErr : kNotFoundErr;
  }

  void StopAll() {
    for (const Voice& voice : mVoices) {
      AudioEvent event = NewEvent(AudioEventKind::Stop, voice.id);
      event.path = voice.path;
      Log(event);
      FadeOut(voice);
    }
    mVoices.clear();
  }

  tErrType SetPaused(tAudioID id, bool paused) {
    AudioEvent event = NewEvent(paused ? AudioEventKind::Pause : AudioEventKind::Resume, id);
    auto it = Find(id);
    event.existed = it != mVoices.end();
    if (event.existed) {
      event.path = it->path;
      ChangePaused(*it, paused);
    }
    Log(event);
    return event.existed ? kNoErr : kNotFoundErr;
  }

  void SetAllPaused(bool paused) {
    for (Voice& voice : mVoices) {
      if (voice.paused == paused) continue;
      ChangePaused(voice, paused);
      AudioEvent event = NewEvent(paused ? AudioEventKind::Pause : AudioEventKind::Resume, voice.id);
      event.path = voice.path;
      Log(event);
    }
  }

  bool IsPlaying(tAudioID id) { return Find(id) != mVoices.end(); }

  tErrType SetVolume(tAudioID id, U8 volume) {
    auto it = Find(id);
    if (it == mVoices.end()) {
      AudioEvent event = NewEvent(AudioEventKind::Volume, id);
      event.volume = volume;
      event.existed = false;
      Log(event);
      return kNotFoundErr;
    }
    // Set each frame by the sound system: only changes are worth a line.
    if (it->volume != volume) {
      it->volume = volume;
      it->gain = GainOf(volume);
      AudioEvent event = NewEvent(AudioEventKind::Volume, id);
      event.path = it->path;
      event.volume = volume;
      Log(event);
    }
    return kNoErr;
  }

  U32 Time(tAudioID id) {
    auto it = Find(id);
    if (it == mVoices.end()) return 0;
    return MsOf(it->pos);
  }

  tErrType Seek(tAudioID id, U32 timeMs) {
    AudioEvent event = NewEvent(AudioEventKind::Seek, id);
    event.value = timeMs;
    auto it = Find(id);
    event.existed = it != mVoices.end();
    if (!event.existed) {
      Log(event);
      return kNotFoundErr;
    }
    event.path = it->path;
    Log(event);
    FadeOut(*it);
    // Rounded up, so that GetAudioTime answers the time asked for.
    it->pos = std::min(it->length, (uint64_t(timeMs) * uint64_t(mRate) + 999u) / 1000u);
    FadeIn(*it);
    Settle(*it);
    if (it->ended) {
      LogEnd(*it, mLastFrame);
      mVoices.erase(it);
    }
    return kNoErr;
  }

  bool SetRate(int rate) {
    if (rate < 8000 || rate > 96000) return false;
    PumpLocked();
    StopAll();
    mTails.clear();
    mSpeaker.reset();
    mSpeakerName = "none";
    mRate = rate;
    mLastFrame = FrameNow();
    return true;
  }

  bool SetSpeaker(const std::string& choice, std::string* error) {
    PumpLocked();
    mSpeaker.reset();
    mSpeakerName = "none";
    const bool isFile = choice.size() > 4 && strcasecmp(choice.c_str() + choice.size() - 4, ".wav") == 0;
    std::string why;
    for (const SpeakerBackend* backend : kSpeakerBackends) {
      const std::string name = backend->name;
      const bool wanted = isFile ? name == "file" : (choice == name || (choice == "default" && !backend->demandOnly));
      if (!wanted) continue;
      Speaker* speaker = backend->open(isFile ? choice : std::string(), mRate, &why);
      if (speaker != nullptr) {
        mSpeaker.reset(speaker);
        mSpeakerName = name;
        mLastFrame = FrameNow();
        return true;
      }
    }
    if (error) *error = why.empty() ? "no speaker called \"" + choice + "\"" : why;
    return false;
  }

  bool Flush(std::string* error) {
    PumpLocked();
    return mSpeaker ? mSpeaker->Flush(error) : true;
  }

  void Close() {
    PumpLocked();
    mSpeaker.reset();
    mSpeakerName = "none";
  }

  // The application manager's suspension of the title: its sounds fade out and
  // stand still, whatever the title had paused, until it is resumed.
  void SetDeviceSuspended(bool suspended) {
    if (suspended == mDeviceSuspended) return;
    for (Voice& voice : mVoices) {
      if (voice.paused) continue;
      if (suspended) {
        FadeOut(voice);
      } else {
        FadeIn(voice);
      }
    }
    mDeviceSuspended = suspended;
  }

  std::string SpeakerName() const { return mSpeakerName; }
  int Rate() const { return mRate; }
  std::vector<AudioEvent> Events() const { return std::vector<AudioEvent>(mEvents.begin(), mEvents.end()); }
  void ClearEvents() { mEvents.clear(); }

  std::vector<SoundState> Sounds() const {
    std::vector<SoundState> sounds;
    for (const Voice& voice : mVoices) {
      SoundState state;
      state.id = voice.id;
      state.path = voice.path;
      state.volume = voice.volume;
      state.paused = voice.paused;
      state.positionMs = MsOf(voice.pos);
      state.playsLeft = voice.playsLeft;
      sounds.push_back(state);
    }
    return sounds;
  }

 private:
  uint64_t FrameNow() const {
    return uint64_t((unsigned __int128)ClockMicros() * unsigned(mRate) / 1000000u);
  }

  // To the nearest millisecond: a frame count made from a whole number of
  // milliseconds of device time gives that number back.
  U32 MsOf(uint64_t frames) const { return U32((frames * 1000u + uint64_t(mRate) / 2) / uint64_t(mRate)); }

  std::vector<Voice>::iterator Find(tAudioID id) {
    return std::find_if(mVoices.begin(), mVoices.end(), [id](const Voice& v) { return v.id == id; });
  }

  AudioEvent NewEvent(AudioEventKind kind, tAudioID id) const {
    AudioEvent event;
    event.kind = kind;
    event.id = id;
    event.timeMs = ClockMicros() / 1000u;
    return event;
  }

  void Log(const AudioEvent& event) {
    if (mEvents.size() >= kMaxEvents) mEvents.pop_front();
    mEvents.push_back(event);
  }

  // A sound that ended at mixing frame `frame`: the event carries the first
  // millisecond at which it no longer plays.
  void LogEnd(const Voice& voice, uint64_t frame) {
    AudioEvent event = NewEvent(AudioEventKind::End, voice.id);
    event.path = voice.path;
    event.timeMs = (frame * 1000u + uint64_t(mRate) - 1) / uint64_t(mRate);
    Log(event);
  }

  // At the end of a pass: the next one, or the end.
  static void Settle(Voice& voice) {
    while (voice.pos >= voice.length && !voice.ended) {
      if (voice.playsLeft > 1 && voice.length > 0) {
        --voice.playsLeft;
        voice.pos = 0;
      } else {
        voice.ended = true;
      }
    }
  }

  uint64_t RampFrames() const { return uint64_t(mRate) * kRampMs / 1000u; }

  // A copy of `voice` that plays on from where it is while it fades to silence;
  // it starts at the level the voice has, mid-fade-in included. Only what was
  // heard needs one.
  void FadeOut(const Voice& voice) {
    if (!voice.sounded || voice.paused || mDeviceSuspended || voice.ended) return;
    Voice tail = voice;
    tail.rampOut = RampFrames() - std::min(RampFrames(), voice.rampIn);
    tail.rampIn = 0;
    if (tail.rampOut > 0) mTails.push_back(tail);
  }

  // A voice that was heard and now sounds again from silence comes in over a ramp.
  void FadeIn(Voice& voice) {
    if (voice.sounded) voice.rampIn = RampFrames();
  }

  void ChangePaused(Voice& voice, bool paused) {
    if (paused) {
      FadeOut(voice);
    } else if (!mDeviceSuspended) {
      FadeIn(voice);
    }
    voice.paused = paused;
  }

  // Adds `count` frames of `voice` from its position into `out`, with its ramps.
  void Render(const Voice& voice, float* out, uint64_t count) const {
    const float* src = voice.sound->samples.data() + voice.pos;
    const float gain = voice.gain;
    uint64_t i = 0;
    const float ramp = float(RampFrames());
    for (uint64_t left = voice.rampIn; i < count && left > 0; ++i, --left) {
      out[i] += src[i] * gain * (float(RampFrames() - left) / ramp);
    }
    if (voice.rampOut > 0) {
      for (uint64_t left = voice.rampOut; i < count && left > 0; ++i, --left) {
        out[i] += src[i] * gain * (float(left) / ramp);
      }
      return;  // a tail is silent after its ramp
    }
    for (; i < count; ++i) out[i] += src[i] * gain;
  }

  // Moves `voice` on by up to `count` frames, adding them into `out` when it is
  // given; returns the frames it sounded before it ended.
  uint64_t Advance(Voice& voice, float* out, uint64_t count) const {
    uint64_t done = 0;
    while (done < count && !voice.ended) {
      const uint64_t take = std::min(count - done, voice.length - voice.pos);
      if (out != nullptr) Render(voice, out + done, take);
      voice.pos += take;
      voice.rampIn -= std::min(voice.rampIn, take);
      if (voice.rampOut > 0) voice.rampOut -= std::min(voice.rampOut, take);
      voice.sounded = voice.sounded || take > 0;
      done += take;
      Settle(voice);
    }
    return done;
  }

  // The fading tails: they play their last frames and go, unseen by the programs.
  void AdvanceTails(float* out, uint64_t count) {
    for (auto it = mTails.begin(); it != mTails.end();) {
      Advance(*it, out, std::min(count, it->rampOut));
      if (it->rampOut == 0 || it->ended) {
        it = mTails.erase(it);
      } else {
        ++it;
      }
    }
  }

  void AdvanceAll(float* out, uint64_t count) {
    AdvanceTails(out, count);
    for (auto it = mVoices.begin(); it != mVoices.end();) {
      if (it->paused || mDeviceSuspended) {
        ++it;
        continue;
      }
      const uint64_t played = Advance(*it, out, count);
      if (it->ended) {
        LogEnd(*it, mLastFrame + played);
        it = mVoices.erase(it);
      } else {
        ++it;
      }
    }
    mLastFrame += count;
  }

  int mRate = kDefaultMixRate;
  std::unique_ptr<Speaker> mSpeaker;
  std::string mSpeakerName = "none";
  uint64_t mLastFrame = 0;  // mixing frames of device time done so far
  std::vector<Voice> mVoices;
  std::vector<Voice> mTails;  // stopped, paused or moved sounds fading out
  bool mDeviceSuspended = false;
  std::deque<AudioEvent> mEvents;
  tAudioID mNextId = 1;
  std::vector<float> mMix;
  std::vector<int16_t> mOut;
  bool mKeep = false;
  std::vector<int16_t> mKept;  // output held for TakeSpeakerOutput
};

Mixer& TheMixer() {
  static Mixer mixer;
  return mixer;
}

void ResetMixer() {
  Mixer& mixer = TheMixer();
  std::lock_guard<std::mutex> lock(mixer.mLock);
  mixer.Reset();
}
ResetHook gMixerReset(&ResetMixer);

// Locks the mixer and brings it up to the device time.
class Pumped {
 public:
  Pumped() : mLock(TheMixer().mLock) { TheMixer().PumpLocked(); }
  Mixer* operator->() { return &TheMixer(); }

 private:
  std::lock_guard<std::mutex> mLock;
};

}  // namespace

tAudioID MixerStart(const std::string& path, U8 volume, U8 priority, S8 pan, U32 payload, U32 flags) {
  return Pumped()->Start(path, volume, priority, pan, payload, flags);
}
tErrType MixerStop(tAudioID id, U8 mode) { return Pumped()->Stop(id, mode); }
void MixerStopAll() { Pumped()->StopAll(); }
void MixerPauseAll() { Pumped()->SetAllPaused(true); }
void MixerResumeAll() { Pumped()->SetAllPaused(false); }
tErrType MixerPause(tAudioID id) { return Pumped()->SetPaused(id, true); }
tErrType MixerResume(tAudioID id) { return Pumped()->SetPaused(id, false); }
bool MixerIsPlaying(tAudioID id) { return Pumped()->IsPlaying(id); }
tErrType MixerSetVolume(tAudioID id, U8 volume) { return Pumped()->SetVolume(id, volume); }
U32 MixerTime(tAudioID id) { return Pumped()->Time(id); }
tErrType MixerSeek(tAudioID id, U32 timeMs) { return Pumped()->Seek(id, timeMs); }
void MixerSuspendDevice(bool suspended) { Pumped()->SetDeviceSuspended(suspended); }

}  // namespace detail

using detail::TheMixer;

bool SetMixRate(int framesPerSecond) {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().SetRate(framesPerSecond);
}

int MixRate() {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().Rate();
}

bool SetSpeaker(const std::string& choice, std::string* error) {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().SetSpeaker(choice, error);
}

std::string SpeakerName() {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().SpeakerName();
}

void PumpAudio() {
  detail::Pumped pumped;
  (void)pumped;
}

bool FlushSpeaker(std::string* error) {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().Flush(error);
}

void CloseSpeaker() {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  TheMixer().Close();
}

void KeepSpeakerOutput(bool keep) {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  TheMixer().Keep(keep);
}

std::vector<int16_t> TakeSpeakerOutput() {
  detail::Pumped pumped;
  return pumped->TakeKept();
}

std::vector<AudioEvent> AudioEvents() {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  return TheMixer().Events();
}

void ClearAudioEvents() {
  std::lock_guard<std::mutex> lock(TheMixer().mLock);
  TheMixer().ClearEvents();
}

std::vector<SoundState> Sounds() {
  detail::Pumped pumped;
  return pumped->Sounds();
}

}  // namespace solva
