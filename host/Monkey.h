#pragma once
// A child at the device: an endless stream of script commands drawn from a seed.
// Most of it is taps and drags on and near the recorder's controls, the rest the
// hardware buttons, turning the device, the microphone going and coming, time
// away (suspend and resume), the battery, the disk filling up and emptying again,
// and, in some sessions, the application manager ending the title at a random
// moment. The stream depends on the seed, the length of the session and the frame
// rate only, never on what the title does, so the same seed gives the same
// commands on every run and every machine.
//
// Taps aim at where the controls are: the monkey knows the recorder's layouts in
// both orientations, the orientation it turned the device to, and where its own
// drags have pushed the panel (any held touch drags it).
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "MonkeyRandom.h"
#include "Script.h"

class Monkey {
 public:
  // What the disk reports in a monkey's session until the monkey says otherwise.
  static constexpr int64_t kPlentyOfRoom = 2147483648;

  // "SEED" or "SEED:SECONDS" (SEED 0 to 2^64 - 1, SECONDS more than 0 and at
  // most a day, 60 when not given). False, with a message, when it is neither.
  static bool ParseArgument(const std::string& text, uint64_t* seed, double* seconds, std::string* error);
  // The argument that gives this session.
  static std::string Argument(uint64_t seed, double seconds);

  // A session of `frames` frames at `fps` frames per second.
  Monkey(uint64_t seed, int64_t frames, int fps);

  // The next command; false when the session's time is used up or the manager
  // has ended the title. Waits never run past the end of the session; a tap or a
  // click at its very end may run a frame or two over.
  bool Next(ScriptCommand* command);

  // A rectangle of the screen the monkey aims at, in layout coordinates of the
  // orientation's layout (flat: 480 x 272, upright: 272 x 480).
  struct Target {
    int x, y, width, height;
    int weight;
    bool onPanel;  // moves with the panel
  };
  // The targets of the flat (orientations 0 and 2) or upright (1 and 3) layout.
  static const std::vector<Target>& Targets(bool upright);
  // A point of a layout in screen coordinates, the device turned to `orientation`.
  static void LayoutToScreen(int orientation, int lx, int ly, int* x, int* y);
  // Where the monkey believes the panel's top-left corner is, in layout coordinates.
  void PanelPosition(bool upright, int* x, int* y) const;

 private:
  void Plan();
  void Push(ScriptCommand::Kind kind, int64_t number = 0, int x = 0, int y = 0);
  void PushWait(int64_t frames);
  // A point on or near a target of the current layout, in screen coordinates.
  void Aim(int* x, int* y);
  void AnyPoint(int* x, int* y);
  void Tap(int x, int y);
  // Finger down, a wander of `steps` moves of up to `reach` pixels, finger up.
  void Drag(int x, int y, int steps, int reach, bool worldMayChange);
  // Something of the world outside the title: a button, a turn, the microphone,
  // time away, the battery or the disk.
  void WorldEvent();
  void Click();
  void Hold();
  void Turn();
  void Microphone();
  void Away();
  void Power();
  void Disk();
  void Gap();
  bool Upright() const { return mOrientation == 1 || mOrientation == 3; }
  // The held touch ended at (x, y), having begun at (mDragX, mDragY): the panel
  // moves by as much, and stays on the screen, as the recorder keeps it.
  void PanelFollows(int x, int y);

  MonkeyRandom mRandom;
  const int64_t mBudget;
  const int mFps;
  int64_t mFrames = 0;
  int64_t mExitFrame = -1;  // when the manager ends the title; -1: it does not
  int mExitCode = 0;
  bool mEnded = false;
  std::deque<ScriptCommand> mQueue;

  int mOrientation = 0;
  bool mMicPlugged = true;
  bool mPowerLow = false;
  int mPanelX[2] = {0, 0};  // flat, upright
  int mPanelY[2] = {0, 0};
  int mDragX = 0, mDragY = 0;  // where the held touch began (or the device last turned under it)
};
