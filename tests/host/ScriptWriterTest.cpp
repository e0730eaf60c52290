#include "ScriptWriter.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace {

ScriptCommand Command(ScriptCommand::Kind kind, int64_t number = 0, int x = 0, int y = 0) {
  ScriptCommand command;
  command.kind = kind;
  command.number = number;
  command.x = x;
  command.y = y;
  return command;
}

TEST(ScriptFormat, EveryCommandReadsBackAsItself) {
  std::vector<ScriptCommand> commands = {
      Command(ScriptCommand::Frames, 3),        Command(ScriptCommand::Down, 0, 10, 20),
      Command(ScriptCommand::Move, 0, -5, 271), Command(ScriptCommand::Up, 0, 11, 21),
      Command(ScriptCommand::Tap, 0, 240, 136), Command(ScriptCommand::Press, 5),
      Command(ScriptCommand::Release, 16),      Command(ScriptCommand::Click, 12),
      Command(ScriptCommand::Press, 15),        Command(ScriptCommand::Rotate, 3),
      Command(ScriptCommand::MicUnplug),        Command(ScriptCommand::MicPlug),
      Command(ScriptCommand::PowerLow),         Command(ScriptCommand::PowerOk),
      Command(ScriptCommand::Suspend),          Command(ScriptCommand::FreeBytes, 524287999),
      Command(ScriptCommand::Exit, 4),
  };
  ScriptCommand wait = Command(ScriptCommand::Wait);
  wait.seconds = 1.0 / 3.0;
  commands.push_back(wait);
  ScriptCommand resume = Command(ScriptCommand::Resume);
  resume.seconds = 12.345;
  commands.push_back(resume);
  ScriptCommand shot = Command(ScriptCommand::Screenshot);
  shot.text = "solva-1.png";
  commands.push_back(shot);
  ScriptCommand mod = Command(ScriptCommand::Mod, 2);
  mod.text = "mods/stickers";
  commands.push_back(mod);

  std::string text;
  for (const ScriptCommand& command : commands) text += Script::Format(command) + "\n";
  Script script;
  std::string error;
  ASSERT_TRUE(script.Parse(text, "formatted", &error)) << error << "\n" << text;
  ASSERT_EQ(commands.size(), script.Commands().size());
  for (size_t i = 0; i < commands.size(); ++i) {
    const ScriptCommand& a = commands[i];
    const ScriptCommand& b = script.Commands()[i];
    SCOPED_TRACE(Script::Format(a));
    EXPECT_EQ(a.kind, b.kind);
    EXPECT_EQ(a.number, b.number);
    EXPECT_EQ(a.x, b.x);
    EXPECT_EQ(a.y, b.y);
    EXPECT_NEAR(a.seconds, b.seconds, 0.5e-6);
    EXPECT_EQ(a.text, b.text);
  }
}

TEST(ScriptFormat, ButtonsAreWrittenByTheirNamesAndIndicesWithoutANameByNumber) {
  EXPECT_EQ("press back", Script::Format(Command(ScriptCommand::Press, 5)));
  EXPECT_EQ("release pause", Script::Format(Command(ScriptCommand::Release, 16)));
  EXPECT_EQ("click 15", Script::Format(Command(ScriptCommand::Click, 15)));
  ScriptCommand wait = Command(ScriptCommand::Wait);
  wait.seconds = 600;
  EXPECT_EQ("wait 600", Script::Format(wait));
  wait.seconds = 1.5;
  EXPECT_EQ("wait 1.5", Script::Format(wait));
}

TEST(ScriptFormat, UpTakesWhereTheFingerLeftOrNothing) {
  Script script;
  std::string error;
  ASSERT_TRUE(script.Parse("up\nup 30 40\n", "s", &error)) << error;
  EXPECT_EQ(0, script.Commands()[0].x);
  EXPECT_EQ(30, script.Commands()[1].x);
  EXPECT_EQ(40, script.Commands()[1].y);
  EXPECT_FALSE(script.Parse("up 30\n", "s", &error));
  EXPECT_EQ("s:1: up takes nothing, or where the finger left, e.g. 'up 240 136'", error);
}

TEST(ScriptWriter, TheFramesBetweenTwoEventsBecomeAWaitOfDeviceTime) {
  ScriptWriter writer(30);
  writer.Add(0, Command(ScriptCommand::Down, 0, 5, 6));
  writer.Add(45, Command(ScriptCommand::Up, 0, 5, 6));
  writer.Add(45, Command(ScriptCommand::Rotate, 1));
  writer.Add(46, Command(ScriptCommand::MicUnplug));
  std::string error;
  EXPECT_TRUE(writer.Finish(100, &error));
  EXPECT_EQ("down 5 6\nwait 1.5\nup 5 6\nrotate 1\nwait 0.033333\nmic unplug\nwait 1.8\n", writer.Text());
}

TEST(ScriptWriter, AWrittenWaitRunsTheSameFramesWhenPlayedBack) {
  for (int fps : {1, 24, 25, 30, 60, 144, 1000}) {
    for (uint64_t frames : {1u, 2u, 7u, 29u, 1001u, 86399u}) {
      ScriptWriter writer(fps);
      std::string error;
      writer.Finish(frames, &error);
      Script script;
      ASSERT_TRUE(script.Parse(writer.Text(), "w", &error)) << error;
      ASSERT_EQ(1u, script.Commands().size());
      EXPECT_EQ(int64_t(frames), Script::FramesOf(script.Commands()[0], fps)) << fps << " fps, " << frames;
    }
  }
}

TEST(ScriptWriter, ACommandThatRunsFramesItselfIsNotFollowedByThemAgain) {
  ScriptWriter writer(30);
  writer.Add(10, Command(ScriptCommand::Tap, 0, 1, 2));   // runs frames 10 and 11
  writer.Add(12, Command(ScriptCommand::Click, 4));       // right after: no wait
  writer.Add(20, Command(ScriptCommand::Frames, 5));      // runs 20 to 24
  writer.Add(30, Command(ScriptCommand::Suspend));
  std::string error;
  writer.Finish(30, &error);
  EXPECT_EQ("wait 0.333333\ntap 1 2\nclick a\nwait 0.2\nframes 5\nwait 0.166667\nsuspend\n", writer.Text());
}

TEST(ScriptWriter, TheFileGetsTheHeaderAndEachLineAsItIsWritten) {
  zvtest::TempDir dir;
  ScriptWriter writer(30);
  std::string error;
  ASSERT_TRUE(writer.Open(dir.file("s.script"), "# recorded\n", &error)) << error;
  writer.Add(3, Command(ScriptCommand::PowerLow));
  // Before the session ends: a session ended by force still leaves its script.
  EXPECT_EQ("# recorded\nwait 0.1\npower low\n", zvtest::ReadText(dir.file("s.script")));
  EXPECT_TRUE(writer.Finish(3, &error));
  EXPECT_EQ(writer.Text(), zvtest::ReadText(dir.file("s.script")));
}

TEST(ScriptWriter, AFileThatCannotBeWrittenIsRefused) {
  ScriptWriter writer(30);
  std::string error;
  EXPECT_FALSE(writer.Open("/nonexistent-folder/s.script", "", &error));
  EXPECT_EQ("cannot write the script /nonexistent-folder/s.script", error);
}

}  // namespace
