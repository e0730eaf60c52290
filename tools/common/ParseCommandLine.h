// The command-line parse shared by solva-sim and the tools: --help and --version
// print and end with 0, bad usage prints CLI11's message and ends with status 2.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>

// Returns the exit status when the program must end now, nothing when it goes on.
inline std::optional<int> ParseCommandLine(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& done) {  // --help, --version
    return app.exit(done);
  } catch (const CLI::ParseError& error) {
    app.exit(error);
    return 2;
  }
  return std::nullopt;
}
