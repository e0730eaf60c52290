#pragma once
// A device's media gallery as the media store sees it: what its index files list,
// what is wrong with it, and the store's own repair. The store runs in a child
// process on a scratch device, so that neither its assertions nor its device
// settings reach the caller; looking at a gallery changes nothing in it.
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace gallery {

struct Options {
  std::string root;  // the device's root folder (it holds LocalData/ and Upload/)
  int player = 1;    // whose stories
  // The store's own lines go to standard error instead of nowhere.
  bool storeOutput = false;
};

struct Record {
  int id = -1;
  std::string name;  // as the store names it
  std::string path;  // its file (a story: the story's dataFile.json)
  bool present = false;
  long long size = 0;  // bytes of the file, 0 when missing
};

// One kind of media: its index file and records as they stand on disk.
struct Listing {
  std::string type;   // the store's name for it: "Audio", "Photo", ...
  std::string index;  // the index file
  std::string read;   // "missing", "other version", "damaged" or "whole"
  unsigned maxGiven = 0;  // the highest number given out (index and resid.bin)
  bool checkFile = false;  // a protected operation was cut short
  std::vector<Record> records;
};

// Something the check found. A fault makes the check fail; a note (a file the
// store leaves on purpose) does not.
struct Finding {
  std::string type;
  std::string kind;  // e.g. "interrupted operation", "file without a record"
  std::string path;
  std::string what;  // a sentence for a person
  int id = -1;       // the number of the resource concerned, if one is
  bool fault = true;
  bool repairable = false;  // the store's own recovery puts it right
};

struct Report {
  std::string root;
  std::vector<Listing> types;  // those with an index, a record or a check file
  std::vector<Finding> findings;
  int Faults() const;
};

// The absolute device root (ending in a slash) that `path` names; false, with a
// message, when it is not a device's root.
bool FindDeviceRoot(const std::string& path, std::string* root, std::string* error);

// Looks at the gallery: its listing and the check's findings. False, with a
// message, when the gallery cannot be looked at (no device root, the store's
// start-up fails an assertion, ...).
bool Examine(const Options& options, Report* report, std::string* error);

// The store's recovery, as the next start of a title that loads every kind of
// media runs it, and then the store's save where a number could come back
// (resid.bin behind its index, a file above every number given) or an index is
// damaged. `before` and `after` are the examinations on either side.
bool Repair(const Options& options, Report* before, Report* after, std::string* error);

void to_json(nlohmann::json& out, const Record& record);
void to_json(nlohmann::json& out, const Listing& listing);
void to_json(nlohmann::json& out, const Finding& finding);
void from_json(const nlohmann::json& in, Record& record);
void from_json(const nlohmann::json& in, Listing& listing);
void from_json(const nlohmann::json& in, Finding& finding);

}  // namespace gallery
