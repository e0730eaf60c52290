#include "SessionCheck.h"

#include <nlohmann/json.hpp>

#include "Gallery.h"
#include "solva/Capture.h"
#include "solva/Display.h"
#include "solva/Events.h"

std::vector<std::string> SessionCheck::Problems(const std::string& answer, const std::string& root, int player) {
  std::vector<std::string> problems;
  // A title that ended cleanly left nothing of itself running on the device.
  if (solva::GetCaptureInfo().active) problems.push_back("a capture still runs after the title's Exit");
  const int listeners =
      solva::RegisteredEventListeners() + solva::RegisteredButtonListeners() + solva::RegisteredUsbListeners();
  if (listeners > 0) problems.push_back("listeners still registered after Exit: " + std::to_string(listeners));
  if (solva::RegisteredDisplayHandleCount() > 0) {
    problems.push_back("display surfaces still registered after Exit: " +
                       std::to_string(solva::RegisteredDisplayHandleCount()));
  }

  if (!nlohmann::json::accept(answer)) problems.push_back("the answer is not JSON: " + answer);

  gallery::Options options;
  options.root = root;
  options.player = player;
  gallery::Report report;
  std::string error;
  if (!gallery::Examine(options, &report, &error)) {
    problems.push_back("solva-gallery check: " + error);
    return problems;
  }
  for (const gallery::Finding& finding : report.findings) {
    if (!finding.fault) continue;
    problems.push_back("solva-gallery check: " + finding.type + ", " + finding.kind + ": " + finding.path + ": " +
                       finding.what);
  }
  return problems;
}
