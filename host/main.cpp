// solva-sim: loads a title plug-in and runs it on the simulated device.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "Monkey.h"
#include "ParseCommandLine.h"
#include "Simulator.h"

int main(int argc, char** argv) {
  SimOptions options;
  options.titleDir = ZV_DEFAULT_TITLE_DIR;

  CLI::App app{"solva-sim: runs a title on the simulated handheld device"};
  app.add_option("--title", options.titleDir, "folder of the title plug-in (libMicrophoneWidget.so or the one .so)")
      ->capture_default_str();
  app.add_option("--root", options.root, "device root folder (gallery, upload areas, players)");
  app.add_option("--player", options.player, "current player")->capture_default_str();
  app.add_option("--params", options.params, "launch parameters: JSON text, or @FILE");
  app.add_option("--answer", options.answerFile, "also write the answer (the parameters after Exit) to FILE");
  app.add_flag("--headless", options.headless, "no window: run on the virtual clock");
  app.add_option("--script", options.scriptPath, "run the commands of FILE (implies --headless)");
  app.add_option("--fps", options.fps, "frames per second")->capture_default_str();
  app.add_option("--mic", options.mic, "microphone: default, none, tone or FILE.wav")->capture_default_str();
  app.add_option("--speaker", options.speaker, "speaker: default, none or FILE.wav")->capture_default_str();
  app.add_option("--free-bytes", options.freeBytes, "what the disk reports as free");
  app.add_flag("--no-accelerometer", options.noAccelerometer, "a device without a tilt sensor");
  app.add_option("--shots", options.shotsDir, "folder for screenshots");
  app.add_option("--movie", options.movie,
                 "write the session as a movie: FILE.avi (Motion-JPEG and PCM) or DIR/ (PNG frames and sound.wav)");
  app.add_option("--record-script", options.recordScript,
                 "write what happens to the device as a script that replays the session headless");
  app.add_option("--mod", options.mods,
                 "give player PLAYER the downloaded folder DIR (with its meta.json) before the title starts; "
                 "repeatable")
      ->type_name("PLAYER:DIR")
      ->allow_extra_args(false);
  std::string monkey;
  CLI::Option* monkeyOption = app.add_option(
      "--monkey", monkey,
      "SEED[:SECONDS]: a child's random session of SECONDS (60) of device time, headless, then checked; "
      "the same seed gives the same session");
  monkeyOption->excludes("--script");
  app.add_flag("--check", options.check,
               "after the session, check that the title ended cleanly, its answer is JSON and the gallery is sound");
  app.set_version_flag("--version", "solva-sim " ZV_VERSION);

  if (std::optional<int> status = ParseCommandLine(app, argc, argv)) return *status;

  if (!monkey.empty()) {
    std::string error;
    if (!Monkey::ParseArgument(monkey, &options.monkeySeed, &options.monkeySeconds, &error)) {
      fprintf(stderr, "solva-sim: %s\n", error.c_str());
      return 2;
    }
    options.monkey = true;
    options.check = true;
  }
  if (!options.scriptPath.empty() || options.monkey) options.headless = true;
  if (!options.headless) {
    const char* display = getenv("DISPLAY");
    const char* wayland = getenv("WAYLAND_DISPLAY");
    if ((display == nullptr || *display == 0) && (wayland == nullptr || *wayland == 0)) {
      printf("solva-sim: no display; running headless\n");
      options.headless = true;
    }
  }
  Simulator simulator;
  return simulator.Run(options);
}
