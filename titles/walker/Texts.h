#pragma once
// The words the walker shows, read at start-up from "Texts.xml" in its WAF
// archive, so that they change without building the title again:
//
//   <Texts>
//     <Help>Tap the field and the walker goes there</Help>
//     <Blend>Blend</Blend> <Trail>Trail</Trail> <Glow>Glow</Glow>
//     <TuneKits>Tune kits:</TuneKits> <NoTuneKits>Tune kits: none</NoTuneKits>
//     <Steps>Steps:</Steps>
//   </Texts>
//
// Each text is an element's whole text, spaces included. What cannot be read
// keeps its built-in English, and the title says so in one line.
#include <string>

#include "FieldScene.h"

struct waf_archive;

namespace walker {

struct Texts {
  std::string help = "Tap the field and the walker goes there";
  std::string captions[eEffect_Num] = {"Blend", "Trail", "Glow"};
  std::string tuneKits = "Tune kits:";
  std::string noTuneKits = "Tune kits: none";
  std::string steps = "Steps:";

  // The file's name in the archive.
  static const char kFile[];
  // Reads the texts from `archive`, opened from `archivePath`. Returns what went
  // wrong, for a line of its own; empty when every text was read.
  std::string Load(waf_archive* archive, const char* archivePath);
};

}  // namespace walker
