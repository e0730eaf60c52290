#pragma once
// The sprite builder: a description and its PNG frames in, a sprite folder out,
// in the layouts the framework reads.
#include <string>
#include <vector>

namespace spritebuilder {

struct Options {
  std::string description;               // the description file
  std::string out = "res/AnimatedSprites";  // the sprites' root folder
  int pageSize = 256;
};

struct Report {
  std::vector<std::string> written;   // the files, in the order written
  std::vector<std::string> warnings;
  std::string summary;                // one line
};

// False with a message in `error`; nothing is written unless every frame reads
// and fits.
bool Build(const Options& options, Report* report, std::string* error);

}  // namespace spritebuilder
