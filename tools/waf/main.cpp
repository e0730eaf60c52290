// waf: makes and inspects WAF archives, the framework's container of files
// compressed in 64 KiB blocks.
#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "Inspect.h"
#include "Pack.h"
#include "ParseCommandLine.h"

int main(int argc, char** argv) {
  CLI::App app{
      "waf: makes and inspects WAF archives (files compressed in independent 64 KiB zlib blocks)\n"
      "Exit status: 0 done, 1 a file could not be read or written or the archive is damaged, 2 bad usage."};
  app.require_subcommand(1);

  std::string out, folder, archive, name;
  int offset = 0;

  CLI::App* pack = app.add_subcommand(
      "pack", "pack every file below DIR into OUT.waf, named relative to DIR with \"/\", in name order");
  pack->add_option("OUT.waf", out, "the archive to write (replaced whole)")->required();
  pack->add_option("DIR", folder, "the folder to pack")->required();

  // The reading commands take an archive that may begin inside a host file.
  auto reading = [&](const char* command, const char* description) {
    CLI::App* sub = app.add_subcommand(command, description);
    sub->add_option("A.waf", archive, "the archive, or the host file that holds it")->required();
    sub->add_option("--offset", offset, "where the archive begins in the file, in bytes")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    return sub;
  };
  CLI::App* list = reading("list", "list each file's size and compressed size, and its name");
  CLI::App* cat = reading("cat", "write one file's content to standard output");
  cat->add_option("NAME", name, "the file's name in the archive")->required();
  CLI::App* check = reading("check", "check that every block inflates and every size agrees; "
                                     "exit status 1 and the first fault otherwise");

  if (std::optional<int> status = ParseCommandLine(app, argc, argv)) return *status;

  if (pack->parsed()) return Pack(out, folder);
  if (list->parsed()) return List(archive, offset);
  if (cat->parsed()) return Cat(archive, offset, name);
  if (check->parsed()) return Check(archive, offset);
  return 2;
}
