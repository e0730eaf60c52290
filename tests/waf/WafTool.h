#pragma once
// Runs the built `waf` tool, as a title developer does, and keeps what it said.
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "support/TestSupport.h"

namespace waftest {

struct ToolRun {
  int status = -1;  // the exit status; -1 when it did not exit
  std::string out;
  std::string err;
};

inline std::string Quote(const std::string& text) {
  std::string out = "'";
  for (char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return out + "'";
}

// `arguments` as the shell reads them; standard output and error go to files in
// `scratch`.
inline ToolRun RunWaf(const zvtest::TempDir& scratch, const std::string& arguments) {
  const std::string out = scratch.file("waf.out"), err = scratch.file("waf.err");
  const std::string command = Quote(ZV_WAF_TOOL) + " " + arguments + " >" + Quote(out) + " 2>" + Quote(err);
  const int raw = std::system(command.c_str());
  ToolRun run;
  if (raw != -1 && WIFEXITED(raw)) run.status = WEXITSTATUS(raw);
  run.out = zvtest::ReadText(out);
  run.err = zvtest::ReadText(err);
  return run;
}

}  // namespace waftest
