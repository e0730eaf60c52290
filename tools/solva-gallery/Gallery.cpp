#include "Gallery.h"

#include <fcntl.h>
#include <limits.h>
#include <ftw.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>

#include "BaseFramework/GameManager.h"
#include "GalleryArchive.h"
#include "MediaCenter/MediaCenter.h"
#include "solva/Device.h"

namespace gallery {
namespace {

using nlohmann::json;

const char* const kTypeNames[eRT_Num] = {
    "Photo", "Audio", "Video", "Art", "ScrapBook", "UnSharePhoto", "SpecificFolderPhoto", "SpecificFolderArt",
    "SpecificFolderAudio",
};

// The kinds indexed in one folder: the shared index folder, and the player's
// own for stories. A picture folder (SpecificFolderPhoto) has no index.
struct IndexFolder {
  const char* name;  // what findings about the folder's resid.bin are filed under
  std::vector<EResType> types;
};
const IndexFolder kIndexFolders[] = {
    {"Shared", {eRT_Photo, eRT_Audio, eRT_Video, eRT_Art, eRT_UnSharePhoto, eRT_SpecificFolderArt,
                eRT_SpecificFolderAudio}},
    {"ScrapBook", {eRT_ScrapBook}},
};

const char* const kFinding[] = {
    "interrupted operation", "unreadable check file", "story check file", "dropped at the next start",
    "missing file",          "file without a record", "number given again", "temporary file",
    "index of another version", "damaged index",      "resid.bin behind",
};
enum FindingKind {
  kInterrupted,
  kUnreadableCheck,
  kStoryCheck,
  kDropped,
  kMissingFile,
  kOrphan,
  kNumberAgain,
  kTemporary,
  kOtherVersion,
  kDamaged,
  kResidBehind,
};

// The store's whole gallery, as a title's manager owns it.
class GalleryGame : public GameManager {
 public:
  GalleryGame(const std::string& galleryRoot, const std::string& scratchRoot, bool repair) {
    mArchiver = new GalleryArchive(galleryRoot, scratchRoot, repair);
    // Every kind's upload folder: a deletion takes its line from the kind's list.
    mArchiver->Initialize(ZvArchive::eUpload_Photo | ZvArchive::eUpload_Video | ZvArchive::eUpload_Music |
                          ZvArchive::eUpload_Art);
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
  }
  ~GalleryGame() override {
    mArchiver->Destroy();
    mMediaCenter->Destroy();
    delete mMediaCenter;
    delete mArchiver;
  }
  void Destroy() override {}
  GalleryArchive& archive() { return static_cast<GalleryArchive&>(GetArchiver()); }
  MediaCenter& store() { return GetMediaCenter(); }
};

bool Exists(const std::string& path) {
  struct stat info;
  return !path.empty() && stat(path.c_str(), &info) == 0;
}

long long SizeOf(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) ? (long long)info.st_size : 0;
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string BaseName(const std::string& path) { return path.substr(path.rfind('/') + 1); }
std::string Folder(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

std::vector<int> Ids(const ResInfoList& list) {
  std::vector<int> ids;
  for (const ResInfo& record : list) ids.push_back(record.mResId);
  return ids;
}

// The ids of `from` that `to` no longer has.
std::vector<int> Gone(const std::vector<int>& from, const std::vector<int>& to) {
  std::vector<int> gone;
  for (int id : from) {
    if (std::find(to.begin(), to.end(), id) == to.end()) gone.push_back(id);
  }
  return gone;
}

std::string IdList(const std::vector<int>& ids) {
  std::string text;
  for (int id : ids) text += (text.empty() ? "" : ", ") + std::to_string(id);
  return text;
}

// The examination of the kinds whose index lies in one folder, by one store.
class Examination {
 public:
  Examination(const std::string& galleryRoot, const std::string& scratchRoot, Report* report)
      : mGame(galleryRoot, scratchRoot, false), mGalleryRoot(galleryRoot), mScratchRoot(scratchRoot), mReport(report) {}

  void Run(const IndexFolder& folder) {
    for (EResType type : folder.types) Kind(type);
    for (EResType type : folder.types) Files(type);
    ResidBin(folder);
  }

 private:
  // A path of the store's in the gallery, where it is a copy in the scratch root.
  std::string InGallery(const std::string& path) const {
    return path.compare(0, mScratchRoot.size(), mScratchRoot) == 0 ? mGalleryRoot + path.substr(mScratchRoot.size())
                                                                   : path;
  }

  void Add(EResType type, FindingKind kind, const std::string& path, const std::string& what, int id = -1) {
    Add(kTypeNames[type], kind, path, what, id);
  }
  void Add(const std::string& type, FindingKind kind, const std::string& path, const std::string& what, int id = -1) {
    Finding finding;
    finding.type = type;
    finding.kind = kFinding[kind];
    finding.path = InGallery(path);
    finding.what = what;
    finding.id = id;
    finding.fault = kind != kOrphan && kind != kTemporary;
    finding.repairable = kind != kUnreadableCheck && kind != kMissingFile && kind != kOtherVersion && finding.fault;
    mReport->findings.push_back(finding);
  }

  // The file that stands for a record: its media file, or a story's dataFile.json.
  std::string FileOf(EResType type, const ResInfo& record) {
    if (type == eRT_ScrapBook) return record.mName + "/dataFile.json";
    return mGame.store().GetResPath(type) + record.mName;
  }

  bool Deleted(const std::string& path) {
    const std::vector<std::string>& deleted = mGame.archive().Deleted();
    return std::find(deleted.begin(), deleted.end(), path) != deleted.end();
  }

  void Kind(EResType type) {
    MediaCenter& store = mGame.store();
    Listing listing;
    listing.type = kTypeNames[type];
    listing.index = InGallery(store.IndexDirectory(type) + MediaCenter::scResInfoSaveFileName[type] + ".bin");
    ResInfoList asStored;
    const MediaCenter::EIndexRead read = store.ReadResInfoFromBin(type, asStored);
    static const char* const kRead[] = {"missing", "other version", "damaged", "whole"};
    listing.read = kRead[read];
    for (ResInfo& record : asStored) {
      // Names of the common kinds are the store's to make; the others are kept in the index.
      if (type != eRT_ScrapBook && type != eRT_UnSharePhoto && type != eRT_SpecificFolderArt &&
          type != eRT_SpecificFolderAudio) {
        record.mName = store.GenerateResName(type, record.mResId);
      }
      Record out;
      out.id = record.mResId;
      out.name = record.mName;
      out.path = FileOf(type, record);
      out.present = Exists(out.path);
      out.size = SizeOf(out.path);
      listing.records.push_back(out);
    }
    const std::string checkFile = store.CheckFileName(type);
    listing.checkFile = Exists(checkFile);
    if (read == MediaCenter::eIndex_OtherVersion) {
      Add(type, kOtherVersion, listing.index,
          "the index is of another version: the store reads no record from it, and its next save of this kind "
          "replaces it");
    } else if (read == MediaCenter::eIndex_Damaged) {
      Add(type, kDamaged, listing.index,
          "the index ends inside its records: the store keeps the " + std::to_string(asStored.size()) +
              " whole ones, and its next save writes them whole");
    }

    // The next start: the load, which drops records whose files are gone...
    const std::vector<int> stored = Ids(asStored);
    store.LoadResInfo(type);
    const std::vector<int> loaded = Ids(store.GetResInfoList(type));
    for (const Record& record : listing.records) {
      if (std::find(loaded.begin(), loaded.end(), record.id) != loaded.end()) continue;
      Add(type, kDropped, record.path,
          "record " + std::to_string(record.id) + " has lost a file (" + BaseName(record.path) +
              " or its thumbnail): the next start drops the record and rewrites the index",
          record.id);
    }
    listing.maxGiven = store.GetMaxResId(type);
    mGiven = std::max(mGiven, listing.maxGiven);

    // ...then the recovery of a protected operation cut short.
    if (listing.checkFile && type == eRT_ScrapBook) {
      // The store protects no story operation; the next start would carry this one out blindly.
      Add(type, kStoryCheck, checkFile, "a check file the store never writes for stories: the next start acts on it");
    } else if (listing.checkFile) {
      const size_t deletedBefore = mGame.archive().Deleted().size();
      store.CheckResInfo(type);
      if (Exists(checkFile)) {
        Add(type, kUnreadableCheck, checkFile,
            "a check file of " + std::to_string(SizeOf(checkFile)) +
                " bytes, not the store's 12: the store leaves it where it is");
      } else {
        const std::vector<int> removed = Gone(loaded, Ids(store.GetResInfoList(type)));
        std::string files;
        const std::vector<std::string>& deleted = mGame.archive().Deleted();
        for (size_t i = deletedBefore; i < deleted.size(); ++i) {
          if (deleted[i] != checkFile && Exists(deleted[i])) files += (files.empty() ? "" : ", ") + BaseName(deleted[i]);
        }
        std::string what = "a protected operation was cut short by a power loss: ";
        if (removed.empty()) {
          what += "it had finished, or not yet begun; the next start only removes the check file";
        } else {
          what += "the next start removes record " + IdList(removed) +
                  (files.empty() ? " (its file never arrived)" : " and deletes " + files);
        }
        Add(type, kInterrupted, checkFile, what, removed.empty() ? -1 : removed.front());
      }
    }

    // What the next start leaves wrong.
    for (const ResInfo& record : store.GetResInfoList(type)) {
      const std::string file = FileOf(type, record);
      if (Exists(file) && !Deleted(file)) continue;
      Add(type, kMissingFile, file,
          "record " + std::to_string(record.mResId) + " lists " + BaseName(file) +
              ", which is missing: the store keeps such a record",
          record.mResId);
    }
    if (listing.read != "missing" || !listing.records.empty() || listing.checkFile) mReport->types.push_back(listing);
  }

  // Files in the kind's folders that no record of the store owns.
  void Files(EResType type) {
    if (type != eRT_Photo && type != eRT_Audio && type != eRT_Video && type != eRT_Art) return;
    MediaCenter& store = mGame.store();
    const std::string folder = store.GetResPath(type);
    if (folder.empty()) return;
    std::set<std::string> owned;
    for (const ResInfo& record : store.GetResInfoList(type)) {
      const std::string file = folder + record.mName;
      owned.insert(file);
      owned.insert(store.GetThumbImageName(file));
      owned.insert(store.GetCoverPhotoName(file));
    }
    // Where the kind's files lie: beside the media, their thumbnails and covers.
    const std::string sample = folder + store.GenerateResName(type, 1);
    const std::set<std::string> folders = {folder, Folder(store.GetThumbImageName(sample)),
                                           Folder(store.GetCoverPhotoName(sample))};
    const std::set<std::string> temporary = {store.temporaryAudioName(), store.temporaryVideoName()};
    for (const std::string& where : folders) {
      DIR* dir = opendir(where.c_str());
      if (dir == nullptr) continue;
      std::vector<std::string> names;
      while (dirent* entry = readdir(dir)) names.push_back(entry->d_name);
      closedir(dir);
      std::sort(names.begin(), names.end());
      for (const std::string& name : names) {
        const std::string path = where + name;
        struct stat info;
        if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode) || owned.count(path) || Deleted(path)) continue;
        if (temporary.count(path)) {
          Add(type, kTemporary, path, "a capture that was never stored: the next capture overwrites it");
          continue;
        }
        // The number between the last '_' and the extension, if the store would name a file so.
        const size_t under = name.rfind('_');
        const int id = under == std::string::npos ? -1 : atoi(name.c_str() + under + 1);
        if (id <= 0) continue;
        const std::string main = folder + store.GenerateResName(type, id);
        if (path != main && path != store.GetThumbImageName(main) && path != store.GetCoverPhotoName(main)) continue;
        if (unsigned(id) <= store.GetMaxResId(type)) {
          Add(type, kOrphan, path,
              "a file without a record, left by a deletion cut short: number " + std::to_string(id) +
                  " is never given again, and the file is yours to remove",
              id);
        } else {
          Add(type, kNumberAgain, path,
              "a file without a record above every number given out: the store would give number " +
                  std::to_string(id) + " again and write over it",
              id);
        }
      }
    }
  }

  // resid.bin keeps every number given out: what the store would write now is
  // what is there.
  void ResidBin(const IndexFolder& folder) {
    MediaCenter& store = mGame.store();
    const EResType type = folder.types.front();
    const std::string resid = store.IndexDirectory(type) + "resid.bin";
    // A folder where no number was ever given needs no resid.bin.
    if (!Exists(resid) && mGiven == 0) return;
    const std::string before = ReadAll(resid);
    store.SaveResInfo(type);
    if (ReadAll(resid) == before) return;
    Add(folder.name, kResidBehind, resid,
        before.empty() ? "resid.bin is missing: should an index be lost, numbers would be given twice"
                       : "resid.bin does not keep every number given out: should an index be lost, numbers would "
                         "be given twice; the store's next save brings it up");
  }

  GalleryGame mGame;
  const std::string mGalleryRoot;
  const std::string mScratchRoot;
  Report* mReport;
  unsigned mGiven = 0;  // the highest number given out of any kind examined
};

// Puts the device on the scratch root, where the store can do as it likes.
void ScratchDevice(const Options& options, const std::string& scratchRoot) {
  solva::ResetDevice();
  solva::SetDeviceRoot(scratchRoot);
  solva::SetCurrentPlayer(options.player);
  solva::SetTitlePath(scratchRoot + "title/");
  // A file the store opens without a folder (an upload list whose folder it was
  // never given) lands here, not where the tool was started.
  if (chdir(scratchRoot.c_str()) != 0) perror(scratchRoot.c_str());
}

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) { return remove(path); }

// Runs `work` in a child process in a scratch folder of its own; the child's
// standard output is the store's chatter, its result comes back as JSON.
bool InChild(const Options& options, const std::function<json(const std::string&)>& work, json* result,
             std::string* error) {
  const char* tmp = getenv("TMPDIR");
  std::string scratch = std::string(tmp && *tmp ? tmp : "/tmp") + "/solva-gallery-XXXXXX";
  if (mkdtemp(&scratch[0]) == nullptr) {
    *error = "cannot make a scratch folder: " + std::string(strerror(errno));
    return false;
  }
  scratch += "/";
  fflush(stdout);
  fflush(stderr);
  const pid_t child = fork();
  if (child == 0) {
    const int chatter = open((scratch + "store.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(chatter, 1);
    dup2(chatter, 2);
    const json out = work(scratch + "device/");
    std::ofstream(scratch + "result.json") << out.dump();
    fflush(stdout);
    _exit(0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) status = -1;
  const std::string chatter = ReadAll(scratch + "store.txt");
  const std::string text = ReadAll(scratch + "result.json");
  nftw(scratch.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
  if (options.storeOutput) fputs(chatter.c_str(), stderr);
  if (status != 0 || text.empty()) {
    // The store's last words: an assertion of its start-up, mostly.
    std::string last = chatter;
    while (!last.empty() && last.back() == '\n') last.pop_back();
    last = last.substr(last.rfind('\n') + 1);
    *error = "the media store stopped on this gallery" + (last.empty() ? std::string() : ": " + last);
    return false;
  }
  *result = json::parse(text);
  return true;
}

json ReportJson(const Report& report) {
  return json{{"root", report.root}, {"types", report.types}, {"findings", report.findings}};
}

Report ReportOf(const json& in) {
  Report report;
  report.root = in.at("root").get<std::string>();
  report.types = in.at("types").get<std::vector<Listing>>();
  report.findings = in.at("findings").get<std::vector<Finding>>();
  return report;
}

}  // namespace

bool FindDeviceRoot(const std::string& path, std::string* root, std::string* error) {
  char resolved[PATH_MAX];
  if (realpath(path.c_str(), resolved) == nullptr) {
    *error = "no device root at " + path + ": " + strerror(errno);
    return false;
  }
  *root = std::string(resolved) + "/";
  if (!Exists(*root + "LocalData/Shared/FileIndex")) {
    *error = path + " is not a device root: it has no LocalData/Shared/FileIndex/";
    return false;
  }
  return true;
}

int Report::Faults() const {
  return int(std::count_if(findings.begin(), findings.end(), [](const Finding& f) { return f.fault; }));
}

bool Examine(const Options& options, Report* report, std::string* error) {
  std::string root;
  if (!FindDeviceRoot(options.root, &root, error)) return false;
  json result;
  const bool ok = InChild(
      options,
      [&](const std::string& scratchRoot) {
        ScratchDevice(options, scratchRoot);
        Report here;
        here.root = root;
        for (const IndexFolder& folder : kIndexFolders) Examination(root, scratchRoot, &here).Run(folder);
        return ReportJson(here);
      },
      &result, error);
  if (ok) *report = ReportOf(result);
  return ok;
}

bool Repair(const Options& options, Report* before, Report* after, std::string* error) {
  if (!Examine(options, before, error)) return false;
  if (before->Faults() > 0) {
    std::string root;
    if (!FindDeviceRoot(options.root, &root, error)) return false;
    json done;
    const bool ok = InChild(
        options,
        [&](const std::string& scratchRoot) {
          ScratchDevice(options, scratchRoot);
          for (const IndexFolder& folder : kIndexFolders) {
            GalleryGame game(root, scratchRoot, true);
            MediaCenter& store = game.store();
            // The next start of a title that loads every kind.
            for (EResType type : folder.types) store.InitResInfo(type, "");
            // The store's save, where the examination found a number that could come back.
            for (EResType type : folder.types) {
              bool save = false;
              for (const Finding& finding : before->findings) {
                if (finding.kind == kFinding[kResidBehind]) {
                  save = save || (finding.type == folder.name && type == folder.types.front());
                } else if (finding.type == kTypeNames[type] && finding.repairable) {
                  if (finding.kind == kFinding[kNumberAgain]) store.RefreshMaxIdIndex(type, finding.id);
                  save = save || finding.kind == kFinding[kNumberAgain] || finding.kind == kFinding[kDamaged];
                }
              }
              if (save) store.SaveResInfo(type);
            }
          }
          return json::object();
        },
        &done, error);
    if (!ok) return false;
  }
  return Examine(options, after, error);
}

void to_json(json& out, const Record& record) {
  out = json{{"id", record.id},
             {"name", record.name},
             {"path", record.path},
             {"present", record.present},
             {"size", record.size}};
}

void from_json(const json& in, Record& record) {
  record.id = in.at("id").get<int>();
  record.name = in.at("name").get<std::string>();
  record.path = in.at("path").get<std::string>();
  record.present = in.at("present").get<bool>();
  record.size = in.at("size").get<long long>();
}

void to_json(json& out, const Listing& listing) {
  out = json{{"type", listing.type},         {"index", listing.index},         {"read", listing.read},
             {"maxGiven", listing.maxGiven}, {"checkFile", listing.checkFile}, {"records", listing.records}};
}

void from_json(const json& in, Listing& listing) {
  listing.type = in.at("type").get<std::string>();
  listing.index = in.at("index").get<std::string>();
  listing.read = in.at("read").get<std::string>();
  listing.maxGiven = in.at("maxGiven").get<unsigned>();
  listing.checkFile = in.at("checkFile").get<bool>();
  listing.records = in.at("records").get<std::vector<Record>>();
}

void to_json(json& out, const Finding& finding) {
  out = json{{"type", finding.type},   {"kind", finding.kind},   {"path", finding.path},
             {"what", finding.what},   {"id", finding.id},       {"fault", finding.fault},
             {"repairable", finding.repairable}};
}

void from_json(const json& in, Finding& finding) {
  finding.type = in.at("type").get<std::string>();
  finding.kind = in.at("kind").get<std::string>();
  finding.path = in.at("path").get<std::string>();
  finding.what = in.at("what").get<std::string>();
  finding.id = in.at("id").get<int>();
  finding.fault = in.at("fault").get<bool>();
  finding.repairable = in.at("repairable").get<bool>();
}

}  // namespace gallery
