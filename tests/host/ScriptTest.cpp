#include "Script.h"

#include <gtest/gtest.h>

namespace {

TEST(Script, ParsesEveryCommand) {
  Script script;
  std::string error;
  ASSERT_TRUE(script.Parse(
      "# a whole session\n"
      "wait 1.5\nframes 3\ndown 10 20\nmove 11 21\nup\ntap 240 136\n"
      "press up\nrelease 0\nclick back\nrotate 3\nmic unplug\nmic plug\npower low\npower ok\n"
      "suspend\nresume 600\nfree-bytes 1000\nscreenshot a.png\nexit\nexit 4  # with a code\n",
      "s", &error))
      << error;
  const auto& c = script.Commands();
  ASSERT_EQ(20u, c.size());
  EXPECT_EQ(ScriptCommand::Wait, c[0].kind);
  EXPECT_DOUBLE_EQ(1.5, c[0].seconds);
  EXPECT_EQ(2, c[0].line);
  EXPECT_EQ(3, c[1].number);
  EXPECT_EQ(10, c[2].x);
  EXPECT_EQ(21, c[3].y);
  EXPECT_EQ(ScriptCommand::Tap, c[5].kind);
  EXPECT_EQ(0, c[6].number);
  EXPECT_EQ(5, c[8].number);
  EXPECT_EQ(3, c[9].number);
  EXPECT_EQ(ScriptCommand::MicUnplug, c[10].kind);
  EXPECT_EQ(ScriptCommand::PowerOk, c[13].kind);
  EXPECT_DOUBLE_EQ(600, c[15].seconds);
  EXPECT_EQ(1000, c[16].number);
  EXPECT_EQ("a.png", c[17].text);
  EXPECT_EQ(0, c[18].number);
  EXPECT_EQ(4, c[19].number);
}

struct BadLine {
  const char* text;
  const char* message;
};

void PrintTo(const BadLine& value, std::ostream* out) { *out << value.text; }

class ScriptErrorTest : public testing::TestWithParam<BadLine> {};

TEST_P(ScriptErrorTest, NamesTheLineAndTheMistake) {
  Script script;
  std::string error;
  EXPECT_FALSE(script.Parse(std::string("frames 1\n\n") + GetParam().text + "\nframes 2\n", "demo.script", &error));
  EXPECT_EQ(std::string("demo.script:3: ") + GetParam().message, error);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptErrorTest,
    testing::Values(BadLine{"jump 3", "unknown command 'jump'"},
                    BadLine{"wait soon", "wait takes seconds, e.g. 'wait 1.5'"},
                    BadLine{"wait -1", "wait takes seconds, e.g. 'wait 1.5'"},
                    BadLine{"frames 2.5", "frames takes a count, e.g. 'frames 3'"},
                    BadLine{"tap 10", "tap takes two coordinates, e.g. 'tap 240 136'"},
                    BadLine{"press jump", "unknown button 'jump'"},
                    BadLine{"press 9", "button 9 has no key on the device"},
                    BadLine{"rotate 4", "rotate takes an orientation 0..3"},
                    BadLine{"mic off", "mic takes 'unplug' or 'plug'"},
                    BadLine{"power 3", "power takes 'low' or 'ok'"},
                    BadLine{"resume", "resume takes the seconds spent away, e.g. 'resume 600'"},
                    BadLine{"exit 300", "exit takes an optional pending-exit code 0..255"},
                    BadLine{"screenshot", "screenshot takes a file name, e.g. 'screenshot ready.png'"},
                    BadLine{"mod mods/stickers", "mod takes a player and a mod folder, e.g. 'mod 1 mods/stickers'"},
                    BadLine{"mod -1 mods/stickers", "mod takes a player and a mod folder, e.g. 'mod 1 mods/stickers'"},
                    BadLine{"mod 1 a b", "mod takes a player and a mod folder, e.g. 'mod 1 mods/stickers'"}),
    [](const testing::TestParamInfo<BadLine>& info) { return "Line" + std::to_string(info.index); });

TEST(Script, ModGivesAPlayerAFolder) {
  Script script;
  std::string error;
  ASSERT_TRUE(script.Parse("mod 2 mods/stickers\n", "s", &error)) << error;
  ASSERT_EQ(1u, script.Commands().size());
  EXPECT_EQ(ScriptCommand::Mod, script.Commands()[0].kind);
  EXPECT_EQ(2, script.Commands()[0].number);
  EXPECT_EQ("mods/stickers", script.Commands()[0].text);
  EXPECT_EQ(0, Script::FramesOf(script.Commands()[0], 30));
}

TEST(Script, ButtonsByNameAndIndexMapToTheDevicesMaskBits) {
  EXPECT_EQ(5, Script::ButtonIndex("back"));
  EXPECT_EQ(5, Script::ButtonIndex("b"));
  EXPECT_EQ(16, Script::ButtonIndex("pause"));
  EXPECT_EQ(12, Script::ButtonIndex("12"));
  EXPECT_EQ(-1, Script::ButtonIndex("17"));
  EXPECT_EQ(0x20u, Script::ButtonMask(5));
  EXPECT_EQ(0x1u, Script::ButtonMask(15));
  EXPECT_EQ(0x10000u, Script::ButtonMask(16));
  for (int index : {8, 9, 10, 11, 14}) EXPECT_EQ(0u, Script::ButtonMask(index)) << index;
}

}  // namespace
