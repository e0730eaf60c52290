#include "Monkey.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

const int kScreenWidth = 480;
const int kScreenHeight = 272;

// The recorder's controls, from its layouts (res/UI/Page/menu_mic_widget*.xml and
// the pop-ups), with how often a child goes for each. The panel's own targets are
// placed as if the panel stood at 0 0; the pop-ups' buttons stand still.
const std::vector<Monkey::Target> kFlatTargets = {
    {58, 8, 44, 44, 30, true},     // record, stop
    {324, 8, 44, 44, 24, true},    // play, pause
    {106, 18, 210, 26, 18, true},  // the bar and its knob: seek
    {8, 8, 44, 44, 2, true},       // back: rarely, as it ends the session
    {0, 0, 416, 60, 6, true},      // the panel itself, to drag it
    {336, 162, 60, 60, 12, false}, // a pop-up's ok or back
};
const std::vector<Monkey::Target> kUprightTargets = {
    {199, 40, 44, 44, 30, true},
    {64, 40, 44, 44, 24, true},
    {20, 12, 210, 26, 18, true},
    {10, 40, 44, 44, 2, true},
    {0, 0, 252, 92, 6, true},
    {106, 314, 60, 60, 12, false},
};
// The panel itself is the fifth target: its size keeps it on the screen.
const size_t kPanel = 4;

// What a child does next, and how often, out of the sum of the weights.
enum Action { kTapControl, kTapBurst, kTapAnywhere, kLongPress, kDrag, kIdle, kWorld };
struct WeightedAction {
  Action action;
  int weight;
};
const WeightedAction kActions[] = {
    {kTapControl, 330}, {kTapBurst, 60}, {kTapAnywhere, 70}, {kLongPress, 40},
    {kDrag, 100},       {kIdle, 110},    {kWorld, 190},
};

// The hardware buttons by index, and how often each is pressed (back, 5, leaves
// the title with nothing to do until the manager ends it: rarely).
struct WeightedButton {
  int index;
  int weight;
};
const WeightedButton kButtons[] = {
    {4, 20}, {5, 3}, {0, 5}, {1, 5}, {2, 5}, {3, 5}, {6, 4}, {7, 4}, {12, 4}, {13, 4}, {16, 4},
};

// The room the gallery keeps in reserve: the disk is full below it.
const int64_t kReserve = 524288000;

int Clamp(int value, int low, int high) { return std::max(low, std::min(high, value)); }

// An entry of `table`, each as often as its weight says.
template <typename Table>
const auto& Pick(MonkeyRandom& random, const Table& table) {
  int64_t total = 0;
  for (const auto& entry : table) total += entry.weight;
  int64_t draw = int64_t(random.Below(uint64_t(total)));
  for (const auto& entry : table) {
    if (draw < entry.weight) return entry;
    draw -= entry.weight;
  }
  return *std::begin(table);
}

}  // namespace

bool Monkey::ParseArgument(const std::string& text, uint64_t* seed, double* seconds, std::string* error) {
  const size_t colon = text.find(':');
  const std::string seedText = text.substr(0, colon);
  char* end = nullptr;
  errno = 0;
  const unsigned long long value = seedText.empty() || seedText[0] == '-' ? 0 : strtoull(seedText.c_str(), &end, 10);
  if (end == nullptr || *end != 0 || errno != 0) {
    *error = "--monkey takes SEED or SEED:SECONDS, a whole number and a time, e.g. 7:120; not '" + text + "'";
    return false;
  }
  *seed = value;
  *seconds = 60;
  if (colon == std::string::npos) return true;
  const std::string secondsText = text.substr(colon + 1);
  end = nullptr;
  const double length = secondsText.empty() ? 0 : strtod(secondsText.c_str(), &end);
  if (end == nullptr || *end != 0 || !(length > 0) || length > 86400) {
    *error = "--monkey SEED:SECONDS takes a time of more than 0 and at most 86400 seconds; not '" + secondsText + "'";
    return false;
  }
  *seconds = length;
  return true;
}

std::string Monkey::Argument(uint64_t seed, double seconds) {
  char text[64];
  snprintf(text, sizeof text, "%llu:%.10g", static_cast<unsigned long long>(seed), seconds);
  return text;
}

Monkey::Monkey(uint64_t seed, int64_t frames, int fps) : mRandom(seed), mBudget(frames), mFps(fps) {
  // One session in three is ended by the application manager at a random moment,
  // with any of the codes it gives (each leads the title to its own exit reason).
  if (mBudget > 0 && mRandom.Chance(1, 3)) {
    mExitFrame = mRandom.Between(0, mBudget - 1);
    mExitCode = int(mRandom.Between(0, 7));
  }
}

const std::vector<Monkey::Target>& Monkey::Targets(bool upright) { return upright ? kUprightTargets : kFlatTargets; }

void Monkey::LayoutToScreen(int orientation, int lx, int ly, int* x, int* y) {
  // The inverse of the toolkit's turn of a touch into its layout.
  switch (orientation) {
    case 1: *x = kScreenWidth - ly; *y = lx; break;
    case 2: *x = kScreenWidth - lx; *y = kScreenHeight - ly; break;
    case 3: *x = ly; *y = kScreenHeight - lx; break;
    default: *x = lx; *y = ly; break;
  }
}

void Monkey::PanelPosition(bool upright, int* x, int* y) const {
  *x = mPanelX[upright ? 1 : 0];
  *y = mPanelY[upright ? 1 : 0];
}

bool Monkey::Next(ScriptCommand* command) {
  if (mEnded) return false;
  if (mExitFrame >= 0 && mFrames >= mExitFrame) {
    *command = ScriptCommand();
    command->kind = ScriptCommand::Exit;
    command->number = mExitCode;
    mEnded = true;
    return true;
  }
  const int64_t end = mExitFrame >= 0 ? mExitFrame : mBudget;
  while (true) {
    if (mFrames >= mBudget) {
      mEnded = true;
      return false;
    }
    if (mQueue.empty()) Plan();
    *command = mQueue.front();
    mQueue.pop_front();
    if (command->kind == ScriptCommand::Wait) {
      int64_t frames = Script::FramesOf(*command, mFps);
      if (mFrames + frames > end) {
        frames = end - mFrames;
        command->seconds = double(frames) / mFps;
      }
      if (frames == 0) continue;
    }
    mFrames += Script::FramesOf(*command, mFps);
    return true;
  }
}

void Monkey::Push(ScriptCommand::Kind kind, int64_t number, int x, int y) {
  ScriptCommand command;
  command.kind = kind;
  command.number = number;
  command.x = x;
  command.y = y;
  mQueue.push_back(command);
}

void Monkey::PushWait(int64_t frames) {
  if (frames <= 0) return;
  ScriptCommand wait;
  wait.kind = ScriptCommand::Wait;
  wait.seconds = double(frames) / mFps;
  mQueue.push_back(wait);
}

void Monkey::Plan() {
  switch (Pick(mRandom, kActions).action) {
    case kTapControl: {
      int x, y;
      Aim(&x, &y);
      Tap(x, y);
      break;
    }
    case kTapBurst: {
      // Again and again on the same spot, faster than any cue can end.
      int x, y;
      Aim(&x, &y);
      for (int64_t taps = mRandom.Between(2, 6); taps > 0; --taps) {
        Tap(Clamp(x + int(mRandom.Between(-3, 3)), 0, kScreenWidth - 1),
            Clamp(y + int(mRandom.Between(-3, 3)), 0, kScreenHeight - 1));
        PushWait(mRandom.Between(0, 3));
      }
      break;
    }
    case kTapAnywhere: {
      int x, y;
      AnyPoint(&x, &y);
      Tap(x, y);
      break;
    }
    case kLongPress: {
      // A finger held on a control, wobbling a little.
      int x, y;
      Aim(&x, &y);
      Drag(x, y, int(mRandom.Between(1, 4)), 3, false);
      break;
    }
    case kDrag: {
      int x, y;
      if (mRandom.Chance(3, 5)) {
        Aim(&x, &y);
      } else {
        AnyPoint(&x, &y);
      }
      Drag(x, y, int(mRandom.Between(2, 12)), 40, true);
      break;
    }
    case kIdle:
      // Long enough for a recording to grow, a clip to play out, a cue to end.
      PushWait(mRandom.Between(mFps / 2, 8 * mFps));
      break;
    case kWorld:
      WorldEvent();
      break;
  }
  Gap();
}

void Monkey::Gap() {
  const uint64_t kind = mRandom.Below(10);
  if (kind < 6) {
    PushWait(mRandom.Between(0, 6));
  } else if (kind < 9) {
    PushWait(mRandom.Between(6, 30));
  } else {
    PushWait(mRandom.Between(30, 90));
  }
}

void Monkey::Aim(int* x, int* y) {
  const bool upright = Upright();
  const Target& target = Pick(mRandom, Targets(upright));
  int lx, ly;
  if (mRandom.Chance(3, 5)) {
    // On it.
    lx = target.x + int(mRandom.Below(uint64_t(target.width)));
    ly = target.y + int(mRandom.Below(uint64_t(target.height)));
  } else {
    // Near it: up to 16 pixels beside.
    lx = target.x - 16 + int(mRandom.Below(uint64_t(target.width + 32)));
    ly = target.y - 16 + int(mRandom.Below(uint64_t(target.height + 32)));
  }
  if (target.onPanel) {
    lx += mPanelX[upright ? 1 : 0];
    ly += mPanelY[upright ? 1 : 0];
  }
  LayoutToScreen(mOrientation, lx, ly, x, y);
  *x = Clamp(*x, 0, kScreenWidth - 1);
  *y = Clamp(*y, 0, kScreenHeight - 1);
}

void Monkey::AnyPoint(int* x, int* y) {
  *x = int(mRandom.Below(kScreenWidth));
  *y = int(mRandom.Below(kScreenHeight));
}

void Monkey::Tap(int x, int y) { Push(ScriptCommand::Tap, 0, x, y); }

void Monkey::Drag(int x, int y, int steps, int reach, bool worldMayChange) {
  Push(ScriptCommand::Down, 0, x, y);
  mDragX = x;
  mDragY = y;
  // Now and then the world changes under the finger: the device turns, the
  // microphone goes, the title is suspended mid-drag.
  const int change = worldMayChange && mRandom.Chance(1, 4) ? int(mRandom.Below(uint64_t(steps))) : -1;
  for (int step = 0; step < steps; ++step) {
    PushWait(mRandom.Between(1, 4));
    if (step == change) {
      const int orientation = mOrientation;
      WorldEvent();
      if (mOrientation != orientation) {
        mDragX = x;
        mDragY = y;
      }
    }
    x = Clamp(x + int(mRandom.Between(-reach, reach)), 0, kScreenWidth - 1);
    y = Clamp(y + int(mRandom.Between(-reach, reach)), 0, kScreenHeight - 1);
    Push(ScriptCommand::Move, 0, x, y);
  }
  PushWait(mRandom.Between(1, 4));
  Push(ScriptCommand::Up, 0, x, y);
  PanelFollows(x, y);
}

void Monkey::PanelFollows(int x, int y) {
  int dx = x - mDragX;
  int dy = y - mDragY;
  if (Upright()) {
    const int turned = dx;
    dx = dy;
    dy = -turned;
  }
  if (mOrientation == 2 || mOrientation == 3) {
    dx = -dx;
    dy = -dy;
  }
  const bool upright = Upright();
  const Target& panel = Targets(upright)[kPanel];
  const int width = upright ? kScreenHeight : kScreenWidth;
  const int height = upright ? kScreenWidth : kScreenHeight;
  const int i = upright ? 1 : 0;
  mPanelX[i] = Clamp(mPanelX[i] + dx, 0, width - panel.width);
  mPanelY[i] = Clamp(mPanelY[i] + dy, 0, height - panel.height);
}

void Monkey::WorldEvent() {
  switch (mRandom.Below(20)) {
    case 0: case 1: case 2: case 3: case 4: Click(); break;
    case 5: case 6: Hold(); break;
    case 7: case 8: case 9: case 10: Turn(); break;
    case 11: case 12: case 13: Microphone(); break;
    case 14: case 15: case 16: Away(); break;
    case 17: Power(); break;
    default: Disk(); break;
  }
}

void Monkey::Click() { Push(ScriptCommand::Click, Pick(mRandom, kButtons).index); }

void Monkey::Hold() {
  const int index = Pick(mRandom, kButtons).index;
  Push(ScriptCommand::Press, index);
  PushWait(mRandom.Between(3, 45));
  Push(ScriptCommand::Release, index);
}

void Monkey::Turn() {
  // Any other way up. A turn under a held finger starts the panel's drag afresh
  // from where the finger is (the recorder does the same).
  const int orientation = (mOrientation + 1 + int(mRandom.Below(3))) % 4;
  Push(ScriptCommand::Rotate, orientation);
  mOrientation = orientation;
}

void Monkey::Microphone() {
  Push(mMicPlugged ? ScriptCommand::MicUnplug : ScriptCommand::MicPlug);
  mMicPlugged = !mMicPlugged;
}

void Monkey::Away() {
  // A moment, a minute, an hour or a day away, to the millisecond.
  int64_t millis;
  switch (mRandom.Below(10)) {
    case 0: case 1: case 2: case 3: millis = mRandom.Between(50, 2000); break;
    case 4: case 5: case 6: millis = mRandom.Between(2000, 120000); break;
    case 7: case 8: millis = mRandom.Between(120000, 3600000); break;
    default: millis = mRandom.Between(3600000, 86400000); break;
  }
  Push(ScriptCommand::Suspend);
  ScriptCommand resume;
  resume.kind = ScriptCommand::Resume;
  resume.seconds = double(millis) / 1000.0;
  mQueue.push_back(resume);
}

void Monkey::Power() {
  Push(mPowerLow ? ScriptCommand::PowerOk : ScriptCommand::PowerLow);
  mPowerLow = !mPowerLow;
}

void Monkey::Disk() {
  int64_t bytes;
  switch (mRandom.Below(10)) {
    case 0: case 1: case 2: case 3: bytes = 0; break;
    case 4: case 5: case 6: bytes = kReserve + mRandom.Between(-2000000, 2000000); break;
    default: bytes = kPlentyOfRoom; break;
  }
  Push(ScriptCommand::FreeBytes, bytes);
}
