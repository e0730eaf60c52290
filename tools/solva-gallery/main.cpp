// solva-gallery: lists, checks and repairs a device's media gallery with the
// media store's own code.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

#include "Gallery.h"
#include "ParseCommandLine.h"

namespace {

void PrintFinding(const char* label, const gallery::Finding& finding) {
  printf("%-8s %s, %s: %s\n         %s\n", label, finding.type.c_str(), finding.kind.c_str(), finding.path.c_str(),
         finding.what.c_str());
}

int List(const gallery::Report& report, bool asJson) {
  if (asJson) {
    printf("%s\n", nlohmann::json{{"root", report.root}, {"types", report.types}}.dump(2).c_str());
    return 0;
  }
  printf("%s\n", report.root.c_str());
  if (report.types.empty()) printf("  no index file: the gallery is empty\n");
  for (const gallery::Listing& listing : report.types) {
    printf("%s: %s (%s), %zu record%s, numbers given up to %u%s\n", listing.type.c_str(), listing.index.c_str(),
           listing.read.c_str(), listing.records.size(), listing.records.size() == 1 ? "" : "s", listing.maxGiven,
           listing.checkFile ? ", a check file" : "");
    for (const gallery::Record& record : listing.records) {
      if (record.present) {
        printf("  %6d  %-28s %10lld bytes  %s\n", record.id, record.name.c_str(), record.size, record.path.c_str());
      } else {
        printf("  %6d  %-28s    missing        %s\n", record.id, record.name.c_str(), record.path.c_str());
      }
    }
  }
  return 0;
}

int Check(const gallery::Report& report, bool asJson) {
  const int faults = report.Faults();
  if (asJson) {
    printf("%s\n", nlohmann::json{{"root", report.root}, {"faults", faults}, {"findings", report.findings}}
                       .dump(2)
                       .c_str());
    return faults > 0 ? 1 : 0;
  }
  int repairable = 0;
  for (const gallery::Finding& finding : report.findings) {
    PrintFinding(finding.fault ? "fault" : "note", finding);
    repairable += finding.fault && finding.repairable ? 1 : 0;
  }
  const int notes = int(report.findings.size()) - faults;
  if (faults == 0) {
    printf("solva-gallery: %s: sound%s\n", report.root.c_str(),
           notes > 0 ? (", " + std::to_string(notes) + " note" + (notes == 1 ? "" : "s")).c_str() : "");
  } else {
    printf("solva-gallery: %s: %d fault%s, %d of them put right by 'repair'\n", report.root.c_str(), faults,
           faults == 1 ? "" : "s", repairable);
  }
  return faults > 0 ? 1 : 0;
}

int Repair(const gallery::Report& before, const gallery::Report& after, bool asJson) {
  std::vector<gallery::Finding> repaired;
  for (const gallery::Finding& was : before.findings) {
    bool remains = false;
    for (const gallery::Finding& is : after.findings) {
      remains = remains || (is.type == was.type && is.kind == was.kind && is.path == was.path);
    }
    if (was.fault && !remains) repaired.push_back(was);
  }
  const int faults = after.Faults();
  if (asJson) {
    printf("%s\n", nlohmann::json{{"root", after.root}, {"repaired", repaired}, {"faults", faults},
                                  {"findings", after.findings}}
                       .dump(2)
                       .c_str());
    return faults > 0 ? 1 : 0;
  }
  for (const gallery::Finding& finding : repaired) PrintFinding("repaired", finding);
  for (const gallery::Finding& finding : after.findings) PrintFinding(finding.fault ? "still" : "note", finding);
  printf("solva-gallery: %s: %zu fault%s repaired, %d left\n", after.root.c_str(), repaired.size(),
         repaired.size() == 1 ? "" : "s", faults);
  return faults > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  gallery::Options options;
  bool asJson = false;
  CLI::App app{"solva-gallery: lists, checks and repairs a device's media gallery with the media store's own code"};
  app.set_version_flag("--version", "solva-gallery " ZV_VERSION);
  app.add_option("--root", options.root, "the device's root folder (it holds LocalData/ and Upload/)")->required();
  app.add_option("--player", options.player, "the player whose stories are looked at")->capture_default_str();
  app.add_flag("--json", asJson, "print the result as JSON, for scripts");
  app.add_flag("--verbose", options.storeOutput, "show the media store's own lines (on standard error)");
  app.fallthrough();
  CLI::App* list = app.add_subcommand("list", "every record of the index files: number, name, file, size");
  CLI::App* check = app.add_subcommand(
      "check", "the index files against the files: exit status 1 when anything is wrong");
  CLI::App* repair = app.add_subcommand(
      "repair", "the store's own recovery, as the next start of a title makes it; then a check");
  app.require_subcommand(1, 1);
  if (std::optional<int> status = ParseCommandLine(app, argc, argv)) return *status;

  std::string root, error;
  if (!gallery::FindDeviceRoot(options.root, &root, &error)) {
    fprintf(stderr, "solva-gallery: %s\n", error.c_str());
    return 2;
  }
  gallery::Report before, after;
  if (repair->parsed() ? !gallery::Repair(options, &before, &after, &error) : !gallery::Examine(options, &before, &error)) {
    fprintf(stderr, "solva-gallery: %s\n", error.c_str());
    return 1;
  }
  if (list->parsed()) return List(before, asJson);
  if (check->parsed()) return Check(before, asJson);
  return Repair(before, after, asJson);
}
