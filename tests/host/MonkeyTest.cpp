#include "Monkey.h"

#include <gtest/gtest.h>

#include <map>

namespace {

const int kFps = 30;

std::vector<ScriptCommand> Session(uint64_t seed, double seconds) {
  Monkey monkey(seed, int64_t(seconds * kFps), kFps);
  std::vector<ScriptCommand> commands;
  ScriptCommand command;
  while (monkey.Next(&command)) commands.push_back(command);
  return commands;
}

std::string Text(const std::vector<ScriptCommand>& commands) {
  std::string text;
  for (const ScriptCommand& command : commands) text += Script::Format(command) + "\n";
  return text;
}

int64_t FramesOf(const std::vector<ScriptCommand>& commands) {
  int64_t frames = 0;
  for (const ScriptCommand& command : commands) frames += Script::FramesOf(command, kFps);
  return frames;
}

bool Ends(const std::vector<ScriptCommand>& commands) {
  return !commands.empty() && commands.back().kind == ScriptCommand::Exit;
}

TEST(Monkey, TheSameSeedGivesTheSameSessionAndAnotherSeedAnother) {
  const std::string first = Text(Session(42, 60));
  EXPECT_EQ(first, Text(Session(42, 60)));
  EXPECT_NE(first, Text(Session(43, 60)));
  EXPECT_GT(first.size(), 1000u);
}

TEST(Monkey, ASessionOfTheSameSeedAsLongAsAnotherStartsTheSame) {
  // The seed decides the events; the length only where they stop.
  const std::string shorter = Text(Session(5, 20));
  const std::string longer = Text(Session(5, 40));
  ASSERT_FALSE(Ends(Session(5, 40)));
  const std::string common = shorter.substr(0, shorter.rfind("wait"));
  EXPECT_EQ(common, longer.substr(0, common.size()));
}

TEST(Monkey, ASessionRunsItsTimeOrEndsWithTheManagersExit) {
  for (uint64_t seed = 0; seed < 60; ++seed) {
    const std::vector<ScriptCommand> commands = Session(seed, 30);
    const int64_t frames = FramesOf(commands);
    SCOPED_TRACE(seed);
    EXPECT_LE(frames, 30 * kFps + 2);  // a tap or a click may end a frame or two late
    if (!Ends(commands)) {
      EXPECT_GE(frames, 30 * kFps);
    }
    for (size_t i = 0; i + 1 < commands.size(); ++i) EXPECT_NE(ScriptCommand::Exit, commands[i].kind);
  }
}

TEST(Monkey, TheManagerEndsAboutOneSessionInThreeAtARandomMoment) {
  int ended = 0;
  std::map<int64_t, int> when;
  for (uint64_t seed = 0; seed < 300; ++seed) {
    const std::vector<ScriptCommand> commands = Session(seed, 20);
    if (!Ends(commands)) continue;
    ++ended;
    ++when[FramesOf(commands) / (5 * kFps)];
    EXPECT_LE(commands.back().number, 7);
  }
  EXPECT_NEAR(100, ended, 25);
  // Early and late alike: each quarter of the session has its share.
  for (int64_t quarter = 0; quarter < 4; ++quarter) EXPECT_GT(when[quarter], 10) << quarter;
}

TEST(Monkey, EveryCommandReadsBackThroughTheScriptLanguage) {
  const std::vector<ScriptCommand> commands = Session(7, 120);
  Script script;
  std::string error;
  ASSERT_TRUE(script.Parse(Text(commands), "monkey", &error)) << error;
  ASSERT_EQ(commands.size(), script.Commands().size());
  for (size_t i = 0; i < commands.size(); ++i) {
    EXPECT_EQ(Script::Format(commands[i]), Script::Format(script.Commands()[i]));
    EXPECT_EQ(Script::FramesOf(commands[i], kFps), Script::FramesOf(script.Commands()[i], kFps));
  }
}

TEST(Monkey, AChildDoesEverythingTheDeviceAllowsSoonerOrLater) {
  std::map<ScriptCommand::Kind, int> kinds;
  bool diskFull = false, diskBack = false;
  for (uint64_t seed = 0; seed < 20; ++seed) {
    for (const ScriptCommand& command : Session(seed, 120)) {
      ++kinds[command.kind];
      if (command.kind == ScriptCommand::FreeBytes) {
        diskFull = diskFull || command.number == 0;
        diskBack = diskBack || command.number == Monkey::kPlentyOfRoom;
      }
    }
  }
  for (ScriptCommand::Kind kind :
       {ScriptCommand::Wait, ScriptCommand::Down, ScriptCommand::Move, ScriptCommand::Up, ScriptCommand::Tap,
        ScriptCommand::Press, ScriptCommand::Release, ScriptCommand::Click, ScriptCommand::Rotate,
        ScriptCommand::MicUnplug, ScriptCommand::MicPlug, ScriptCommand::PowerLow, ScriptCommand::PowerOk,
        ScriptCommand::Suspend, ScriptCommand::Resume, ScriptCommand::FreeBytes, ScriptCommand::Exit}) {
    EXPECT_GT(kinds[kind], 0) << "never: " << kind;
  }
  EXPECT_TRUE(diskFull);
  EXPECT_TRUE(diskBack);
  // Touches outnumber everything else.
  EXPECT_GT(kinds[ScriptCommand::Tap], kinds[ScriptCommand::Rotate] * 4);
}

TEST(Monkey, ATitleIsResumedRightAfterItIsSuspended) {
  for (uint64_t seed = 0; seed < 20; ++seed) {
    const std::vector<ScriptCommand> commands = Session(seed, 120);
    for (size_t i = 0; i < commands.size(); ++i) {
      if (commands[i].kind != ScriptCommand::Suspend) continue;
      ASSERT_LT(i + 1, commands.size());
      EXPECT_EQ(ScriptCommand::Resume, commands[i + 1].kind);
      EXPECT_GE(commands[i + 1].seconds, 0.05);
      EXPECT_LE(commands[i + 1].seconds, 86400.0);
    }
  }
}

TEST(Monkey, TouchesStayOnTheScreenAndAFingerIsDownOnlyOnce) {
  for (uint64_t seed = 0; seed < 20; ++seed) {
    bool down = false;
    const std::vector<ScriptCommand> commands = Session(seed, 120);
    for (const ScriptCommand& command : commands) {
      if (command.kind == ScriptCommand::Down || command.kind == ScriptCommand::Move ||
          command.kind == ScriptCommand::Tap || command.kind == ScriptCommand::Up) {
        EXPECT_GE(command.x, 0);
        EXPECT_LT(command.x, 480);
        EXPECT_GE(command.y, 0);
        EXPECT_LT(command.y, 272);
      }
      if (command.kind == ScriptCommand::Down) {
        EXPECT_FALSE(down);
        down = true;
      }
      if (command.kind == ScriptCommand::Move || command.kind == ScriptCommand::Tap) {
        EXPECT_EQ(command.kind == ScriptCommand::Move, down);
      }
      if (command.kind == ScriptCommand::Up) down = false;
    }
  }
}

TEST(Monkey, TheLayoutsTurnWithTheDeviceAsTheRecordersTouchPointsDo) {
  // The record button's middle, flat (80, 30) and upright (221, 62), is where the
  // scripted sessions tap it: 80 30 flat, 418 220 (a pixel off) turned once.
  struct Turn {
    int orientation, lx, ly, x, y;
  };
  for (const Turn& turn : {Turn{0, 80, 30, 80, 30}, Turn{1, 221, 62, 418, 221}, Turn{2, 80, 30, 400, 242},
                           Turn{3, 221, 62, 62, 51}}) {
    int x, y;
    Monkey::LayoutToScreen(turn.orientation, turn.lx, turn.ly, &x, &y);
    EXPECT_EQ(turn.x, x) << turn.orientation;
    EXPECT_EQ(turn.y, y) << turn.orientation;
  }
  const Monkey::Target& record = Monkey::Targets(false)[0];
  EXPECT_EQ(58, record.x);
  EXPECT_EQ(8, record.y);
  EXPECT_EQ(199, Monkey::Targets(true)[0].x);
}

// Whether (x, y) on the screen is on or within 16 pixels of a target of the
// layout of `orientation`, the panel standing at (panelX, panelY).
bool NearAControl(int orientation, int panelX, int panelY, int x, int y) {
  for (const Monkey::Target& target : Monkey::Targets(orientation % 2 == 1)) {
    if (target.width >= 200) continue;  // the panel and the bar: most of the screen's top
    const int dx = target.onPanel ? panelX : 0, dy = target.onPanel ? panelY : 0;
    int x0, y0, x1, y1;
    Monkey::LayoutToScreen(orientation, target.x + dx - 16, target.y + dy - 16, &x0, &y0);
    Monkey::LayoutToScreen(orientation, target.x + dx + target.width + 16, target.y + dy + target.height + 16, &x1,
                           &y1);
    if (x >= std::min(x0, x1) && x <= std::max(x0, x1) && y >= std::min(y0, y1) && y <= std::max(y0, y1)) {
      return true;
    }
  }
  return false;
}

TEST(Monkey, MostTapsLandOnOrNearAButtonWhereverThePanelHasBeenDragged) {
  int taps = 0, near = 0;
  bool moved = false;
  for (uint64_t seed = 0; seed < 20; ++seed) {
    Monkey monkey(seed, 120 * kFps, kFps);
    ScriptCommand command;
    int orientation = 0;
    while (monkey.Next(&command)) {
      if (command.kind == ScriptCommand::Rotate) orientation = int(command.number);
      if (command.kind != ScriptCommand::Tap) continue;
      int panelX, panelY;
      monkey.PanelPosition(orientation % 2 == 1, &panelX, &panelY);
      moved = moved || panelX != 0 || panelY != 0;
      ++taps;
      near += NearAControl(orientation, panelX, panelY, command.x, command.y) ? 1 : 0;
    }
  }
  EXPECT_TRUE(moved);
  // A tap anywhere falls near a button now and then too; aimed ones nearly always.
  EXPECT_GT(near, taps * 6 / 10) << near << " of " << taps;
}

TEST(Monkey, TheArgumentIsASeedAndMaybeSeconds) {
  uint64_t seed = 0;
  double seconds = 0;
  std::string error;
  ASSERT_TRUE(Monkey::ParseArgument("7", &seed, &seconds, &error));
  EXPECT_EQ(7u, seed);
  EXPECT_EQ(60, seconds);
  ASSERT_TRUE(Monkey::ParseArgument("18446744073709551615:0.5", &seed, &seconds, &error));
  EXPECT_EQ(UINT64_MAX, seed);
  EXPECT_EQ(0.5, seconds);
  EXPECT_EQ("18446744073709551615:0.5", Monkey::Argument(seed, seconds));
  EXPECT_EQ("3:120", Monkey::Argument(3, 120));
  for (const char* bad : {"", "x", "-1", "7:", "7:0", "7:-3", "7:abc", "7:86401", "18446744073709551616", "1 ", "7:1:2"}) {
    EXPECT_FALSE(Monkey::ParseArgument(bad, &seed, &seconds, &error)) << bad;
    EXPECT_NE(std::string::npos, error.find("--monkey")) << error;
  }
}

}  // namespace
