#include "MediaCenter/MediaCenter.h"

#include <assert.h>
#include <stdio.h>
#include <string.h>
#include <tinyxml.h>

#include <fstream>
#include <vector>

#include "AtomicFile.h"
#include "Base/File.h"
#include "BaseUtils.h"
#include "BaseFramework/GameManager.h"
#include "CMetaInfo.h"
#include "MediaCenter/Archive.h"
#include "SolvaFileOps.h"

const double MEDIA_DEVICE_DISK_BYTES = 1825361100.8;

namespace {

// Room kept back: nothing is created below it.
const unsigned kReservedBytes = 524288000u;
// Room kept back when counting free video time, and one second of video.
const unsigned kVideoReservedBytes = 20971520u;
const int kVideoBytesShift = 18;  // 262144 bytes
const unsigned kLeastVideoSeconds = 5;

// resid.bin: "RID\0", then the nine maxima.
const unsigned kResIdMagic = 0x00444952u;
const unsigned kResIdFileSize = 4 + 4 * eRT_Num;

// A cursor over a file read whole. Nothing is read past the end: a field that no
// longer fits stops the parse, as if the file ended before it.
class ByteReader {
 public:
  ByteReader(const unsigned char* data, unsigned size) : mData(data), mSize(size), mAt(0) {}
  bool ReadU32(unsigned& value) {
    if (mSize - mAt < 4) return false;
    memcpy(&value, mData + mAt, 4);
    mAt += 4;
    return true;
  }
  bool ReadI32(int& value) {
    unsigned raw;
    if (!ReadU32(raw)) return false;
    memcpy(&value, &raw, 4);
    return true;
  }
  bool ReadF32(float& value) {
    unsigned raw;
    if (!ReadU32(raw)) return false;
    memcpy(&value, &raw, 4);
    return true;
  }
  // A length, then the bytes; the text ends at its first zero byte.
  bool ReadString(std::string& text) {
    unsigned length;
    if (!ReadU32(length)) return false;
    if (mSize - mAt < length) return false;
    const char* body = reinterpret_cast<const char*>(mData + mAt);
    text.assign(body, strnlen(body, length));
    mAt += length;
    return true;
  }

 private:
  const unsigned char* mData;
  unsigned mSize;
  unsigned mAt;
};

// Inserts "_<word>" before the last underscore, makes the extension ".jpg" and puts
// the file into the subfolder <Folder> of its folder.
std::string DerivedPictureName(const std::string& path, const char* word, const char* folder) {
  std::string name = path;
  name.insert(name.rfind('_'), word);
  name.replace(name.rfind('.'), 4, ".jpg");
  const std::string subFolder = std::string("/") + folder;
  size_t at = name.rfind('/');
  if (at == std::string::npos) at = name.rfind('\\');
  if (at != std::string::npos) name.insert(at, subFolder);
  return name;
}

}  // namespace

const char* const MediaCenter::scResInfoSaveFileName[eRT_Num] = {
    "vtwgPhotoResInfo",     "vtwgAudioResInfo", "vtwgVideoResInfo",        "vtwgArtResInfo",
    "vtwgScrapBookResInfo", "vtwgUnSharePhoto", "vtwgSpecificFolderPhoto", "vtwgSpecificFolderArt",
    "vtwgSpecificFolderAudio",
};

const char* const MediaCenter::scResInfoXmlNodeName[eRT_Num] = {
    "WidgetPhoto",        "WidgetAudio",          "WidgetVideo",
    "WidgetArt",          "WidgetScrapBook",      "WidgetUnSharePhoto",
    "WidgetSpecificFolderPhoto", "WidgetSpecificFolderArt", "WidgetSpecificFolderAudio",
};

const char* const MediaCenter::scResInfoXmlItemName[eRT_Num] = {
    "PhotoItem",          "AudioItem",          "VideoItem",
    "ArtItem",            "ScrapBookItem",      "UnSharePhotoItem",
    "SpecificFolderPhotoItem", "SpecificFolderArtItem", "SpecificFolderAudioItem",
};

// The last name is irregular on purpose: other programs look for it as it is.
const char* const MediaCenter::scResSaveCheckFileName[eRT_Num] = {
    "PhotoCheck",        "AudioCheck",          "VideoCheck",
    "ArtCheck",          "ScrapBookCheck",      "UnSharePhotoCheck",
    "SpecificFolderPhotoCheck", "SpecificFolderArtCheck", "SpecificFolderArtAudio",
};

// Only seven rows were ever filled: the last two types carry version 0.
const unsigned MediaCenter::scResFileVersion[eRT_Num] = {
    9213426, 9213426, 9213426, 9213426, 9213426, 9213426, 9213426, 0, 0,
};

MediaCenter::MediaCenter(GameManager* manager)
    : mOperResType(eRT_Invalid), mGameManager(manager), mArchiver(0) {
  for (int i = 0; i < eRT_Num; ++i) mMaxResId[i] = 0;
}

MediaCenter::~MediaCenter() {
  for (int i = 0; i < eRT_Num; ++i) mResInfoList[i].clear();
}

void MediaCenter::Initialize() {
  mArchiver = &mGameManager->GetArchiver();
  mResPath[eRT_Photo] = mArchiver->mPhotoPath;
  mResPath[eRT_Audio] = mArchiver->mMusicPath;
  mResPath[eRT_Video] = mArchiver->mVideoPath;
  mResPath[eRT_Art] = mArchiver->mArtPath;
  // Empty at this moment: a story's records carry their whole folder in mName.
  mResPath[eRT_ScrapBook] = mArchiver->mScrapBookPath;
}

void MediaCenter::Destroy() {}

std::string MediaCenter::IndexDirectory(EResType type) const {
  // Stories are indexed per player, everything else once for all players.
  return type == eRT_ScrapBook ? mArchiver->mPlayerRootPath : mArchiver->mFileIndexPath;
}

std::string MediaCenter::CheckFileName(EResType type) const {
  return IndexDirectory(type) + scResSaveCheckFileName[type] + ".bin";
}

// ---------------------------------------------------------------------------
// Records and index files

void MediaCenter::InitResInfo(EResType type, const std::string& folder) {
  if (type != eRT_SpecificFolderPhoto) {
    LoadResInfo(type);
    CheckResInfo(type);
    return;
  }
  // A picture folder has no index: its files are the list, numbered from 0.
  std::vector<std::string> names;
  mArchiver->GetAllFileNameInPath(folder, "*.jpg", names, false);
  ResInfoList& list = mResInfoList[eRT_SpecificFolderPhoto];
  list.clear();
  for (size_t i = 0; i < names.size(); ++i) {
    ResInfo record;
    record.mResType = eRT_SpecificFolderPhoto;
    record.mResId = static_cast<ResID>(i);
    record.mName = folder + "/" + names[i];
    list.push_back(record);
  }
}

void MediaCenter::LoadResInfo(EResType resType) {
  LoadResInfoFromBin(resType);

  const std::string path = IndexDirectory(resType) + "resid.bin";
  FILE* stream = fopen(path.c_str(), "rb");
  if (stream == 0) return;
  std::vector<unsigned char> data;
  unsigned char chunk[512];
  bool failed = false;
  for (;;) {
    const size_t got = fread(chunk, 1, sizeof chunk, stream);
    data.insert(data.end(), chunk, chunk + got);
    if (got < sizeof chunk) {
      failed = ferror(stream) != 0;
      break;
    }
  }
  fclose(stream);
  if (failed) return;

  // A short file keeps what it has; a foreign one is ignored; nothing is lowered.
  ByteReader reader(data.data(), static_cast<unsigned>(data.size()));
  unsigned magic;
  if (!reader.ReadU32(magic) || magic != kResIdMagic) return;
  for (int i = 0; i < eRT_Num; ++i) {
    unsigned value;
    if (!reader.ReadU32(value)) break;
    if (value > mMaxResId[i]) mMaxResId[i] = value;
  }
}

void MediaCenter::LoadResInfoFromBin(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  ResInfoList& list = mResInfoList[resType];
  list.clear();

  const std::string path = IndexDirectory(resType) + scResInfoSaveFileName[resType] + ".bin";
  File file(path.c_str(), "rb");
  if (!file.isOpened()) {
    printf("Open File Failed:%s\n", path.c_str());
    return;
  }
  File::FBuffer buffer = {0, 0};
  file.readFile2Buf(&buffer);
  file.close();

  ByteReader reader(buffer.mData, buffer.mSize);
  unsigned version;
  if (!reader.ReadU32(version) || version != scResFileVersion[resType]) {
    printf("File version is not same:%s\n", path.c_str());
    File::releaseFileBuf(&buffer);
    return;
  }
  int count = 0;
  reader.ReadI32(count);
  for (int i = 0; i < count; ++i) {
    ResInfo record;
    int type;
    if (!reader.ReadI32(record.mResId)) break;
    // At once, so that even a damaged record keeps its number from coming back.
    RefreshMaxIdIndex(resType, record.mResId);
    if (!reader.ReadI32(type)) break;
    record.mResType = static_cast<EResType>(type);
    if (!reader.ReadI32(record.mViewMode)) break;
    bool whole = true;
    switch (record.mResType) {
      case eRT_Photo:
      case eRT_Art:
        whole = reader.ReadI32(record.mImgWidth) && reader.ReadI32(record.mImgHeight);
        break;
      case eRT_Audio:
      case eRT_Video:
        whole = reader.ReadF32(record.mLength);
        break;
      case eRT_ScrapBook:
        whole = reader.ReadI32(record.mSSVersion) && reader.ReadString(record.mName);
        break;
      case eRT_UnSharePhoto:
      case eRT_SpecificFolderArt:
        whole = reader.ReadI32(record.mImgWidth) && reader.ReadI32(record.mImgHeight) &&
                reader.ReadString(record.mName);
        break;
      case eRT_SpecificFolderAudio:
        whole = reader.ReadString(record.mName);
        break;
      default:
        break;
    }
    if (!whole) break;
    list.push_back(record);
  }
  File::releaseFileBuf(&buffer);

  bool removed = false;
  for (ResInfoListIt it = list.begin(); it != list.end();) {
    const EResType type = it->mResType;
    if (type == eRT_UnSharePhoto || type == eRT_SpecificFolderArt || type == eRT_SpecificFolderAudio) {
      ++it;
      continue;
    }
    if (type != eRT_ScrapBook) it->mName = GenerateResName(type, it->mResId);
    if (IsResCorrupted(*it)) {
      it = list.erase(it);
      removed = true;
    } else {
      ++it;
    }
  }
  if (removed) {
    puts("Res Corrupted, Refresh the *.bin file");
    SaveResInfo(resType);
  }
  if (resType == eRT_ScrapBook) SortStoryStudioResInfo();
}

void MediaCenter::SaveResInfo(EResType resType) {
  SaveResInfoToBin(resType);

  unsigned char buffer[512];
  memset(buffer, 0, sizeof buffer);
  memcpy(buffer, &kResIdMagic, 4);
  memcpy(buffer + 4, mMaxResId, 4 * eRT_Num);
  const std::string path = IndexDirectory(resType) + "resid.bin";
  FILE* stream = fopenAtomic(path.c_str(), "wb");
  if (stream == 0) return;
  fwrite(buffer, kResIdFileSize, 1, stream);
  fcloseAtomic(stream);
}

void MediaCenter::SaveResInfoToBin(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  const std::string path = IndexDirectory(resType) + scResInfoSaveFileName[resType] + ".bin";
  File file(path.c_str(), "wb");
  if (!file.isOpened()) {
    printf("Open File Failed:%s\n", path.c_str());
    return;
  }
  if (resType == eRT_ScrapBook) SortStoryStudioResInfo();

  ResInfoList& list = mResInfoList[resType];
  int count = 0;
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) ++count;
  file.writeUInt(scResFileVersion[resType]);
  file.writeInt(count);
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    file.writeInt(it->mResId);
    file.writeInt(it->mResType);
    file.writeInt(it->mViewMode);
    switch (resType) {
      case eRT_Photo:
      case eRT_Art:
        file.writeInt(it->mImgWidth);
        file.writeInt(it->mImgHeight);
        break;
      case eRT_Audio:
      case eRT_Video:
        file.write(&it->mLength, sizeof it->mLength, 1);
        break;
      case eRT_ScrapBook:
        file.writeInt(it->mSSVersion);
        file.writeString(it->mName.c_str());
        break;
      case eRT_UnSharePhoto:
      case eRT_SpecificFolderArt:
        file.writeInt(it->mImgWidth);
        file.writeInt(it->mImgHeight);
        file.writeString(it->mName.c_str());
        break;
      case eRT_SpecificFolderAudio:
        file.writeString(it->mName.c_str());
        break;
      default:
        break;
    }
  }
  file.close();
}

void MediaCenter::SaveResInfoToXml(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  const std::string path = mArchiver->mFileIndexPath + scResInfoSaveFileName[resType] + ".xml";
  TiXmlDocument document;
  TiXmlElement* root = new TiXmlElement(scResInfoXmlNodeName[resType]);
  root->SetAttribute("Version", static_cast<int>(scResFileVersion[resType]));
  document.LinkEndChild(root);
  ResInfoList& list = mResInfoList[resType];
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    TiXmlElement* item = new TiXmlElement(scResInfoXmlItemName[resType]);
    item->SetAttribute("ResID", it->mResId);
    item->SetAttribute("Type", it->mResType);
    item->SetAttribute("ViewMode", it->mViewMode);
    switch (resType) {
      case eRT_Photo:
      case eRT_Art:
        item->SetAttribute("ImgWidth", it->mImgWidth);
        item->SetAttribute("ImgHeight", it->mImgHeight);
        break;
      case eRT_Audio:
      case eRT_Video:
        item->SetDoubleAttribute("Length", it->mLength);
        break;
      case eRT_UnSharePhoto:
      case eRT_SpecificFolderArt:
        item->SetAttribute("ImgWidth", it->mImgWidth);
        item->SetAttribute("ImgHeight", it->mImgHeight);
        item->SetAttribute("Name", it->mName.c_str());
        break;
      case eRT_SpecificFolderAudio:
        item->SetAttribute("Name", it->mName.c_str());
        break;
      default:
        break;
    }
    root->LinkEndChild(item);
  }
  // Through the device's whole-file replacement, like every other index.
  File file(path.c_str(), "wb");
  if (!file.isOpened()) return;
  document.SaveFile(file.stream());
  file.close();
}

void MediaCenter::LoadResInfoFromXml(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  ResInfoList& list = mResInfoList[resType];
  list.clear();
  const std::string path = mArchiver->mFileIndexPath + scResInfoSaveFileName[resType] + ".xml";
  TiXmlDocument document(path.c_str());
  if (!document.LoadFile()) return;

  TiXmlElement* root = document.FirstChildElement();
  int version = 0;
  if (root != 0) root->QueryIntAttribute("Version", &version);
  if (static_cast<unsigned>(version) != scResFileVersion[resType]) {
    printf("File version is not same:%s\n", path.c_str());
    return;
  }
  if (root == 0) return;
  for (TiXmlElement* item = root->FirstChildElement(); item != 0; item = item->NextSiblingElement()) {
    if (strcmp(item->Value(), scResInfoXmlItemName[resType]) != 0) continue;
    ResInfo newResInfo;
    item->QueryIntAttribute("ResID", &newResInfo.mResId);
    RefreshMaxIdIndex(resType, newResInfo.mResId);
    int type = eRT_Invalid;
    item->QueryIntAttribute("Type", &type);
    newResInfo.mResType = static_cast<EResType>(type);
    assert(newResInfo.mResType > eRT_Invalid && newResInfo.mResType < eRT_Num);
    item->QueryIntAttribute("ViewMode", &newResInfo.mViewMode);
    switch (resType) {
      case eRT_Photo:
      case eRT_Art:
        item->QueryIntAttribute("ImgWidth", &newResInfo.mImgWidth);
        item->QueryIntAttribute("ImgHeight", &newResInfo.mImgHeight);
        break;
      case eRT_Audio:
      case eRT_Video: {
        double length = 0.0;
        item->QueryDoubleAttribute("Length", &length);
        newResInfo.mLength = static_cast<float>(length);
        break;
      }
      case eRT_UnSharePhoto:
      case eRT_SpecificFolderArt: {
        item->QueryIntAttribute("ImgWidth", &newResInfo.mImgWidth);
        item->QueryIntAttribute("ImgHeight", &newResInfo.mImgHeight);
        const char* name = item->Attribute("Name");
        if (name != 0) newResInfo.mName = name;
        break;
      }
      case eRT_SpecificFolderAudio: {
        const char* name = item->Attribute("Name");
        if (name != 0) newResInfo.mName = name;
        break;
      }
      default:
        break;
    }
    list.push_back(newResInfo);
  }
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    const EResType type = it->mResType;
    if (type == eRT_UnSharePhoto || type == eRT_SpecificFolderArt || type == eRT_SpecificFolderAudio) continue;
    it->mName = GenerateResName(type, it->mResId);
  }
}

void MediaCenter::CheckResInfo(EResType type) {
  const std::string path = CheckFileName(type);
  File file(path.c_str(), "rb");
  if (!file.isOpened()) return;
  // Anything but three numbers is not a journal entry of ours: left alone.
  if (file.getFileSize() != 12) {
    file.close();
    return;
  }
  const int operType = file.readInt();
  assert(operType > ePOT_Invalid && operType < ePOT_Num);
  const EResType resType = static_cast<EResType>(file.readInt());
  assert((int)resType == type);
  const ResID resId = file.readInt();
  assert(resId != -1);

  if (operType == ePOT_Create) {
    ResInfo* resInfo = GetResInfo(type, resId, false);
    if (resInfo != 0) {
      const std::string mainPath = mResPath[type] + resInfo->mName;
      bool complete = mArchiver->IsFileExist(mainPath);
      switch (type) {
        case eRT_Photo:
        case eRT_Art:
        case eRT_UnSharePhoto:
        case eRT_SpecificFolderArt:
          complete = complete && mArchiver->IsFileExist(GetThumbImageName(mainPath));
          break;
        case eRT_Video:
          complete = complete && mArchiver->IsFileExist(GetCoverPhotoName(mainPath));
          break;
        default:
          break;
      }
      if (!complete) {
        DeleteRes(type, resId, true);
        SaveResInfo(type);
      }
    }
  } else {
    DeleteRes(type, resId, true);
    SaveResInfo(type);
  }
  file.close();
  mArchiver->ArchiveDeleteFile(path);
}

bool MediaCenter::IsResCorrupted(const ResInfo& resInfo) {
  switch (resInfo.mResType) {
    case eRT_Photo: {
      const std::string path = mArchiver->mPhotoPath + resInfo.mName;
      return !mArchiver->IsFileExist(path) || !mArchiver->IsFileExist(GetThumbImageName(path));
    }
    case eRT_Video: {
      const std::string path = mArchiver->mVideoPath + resInfo.mName;
      return !mArchiver->IsFileExist(path) || !mArchiver->IsFileExist(GetThumbImageName(path)) ||
             !mArchiver->IsFileExist(GetCoverPhotoName(path));
    }
    case eRT_Art: {
      const std::string path = mArchiver->mArtPath + resInfo.mName;
      return !mArchiver->IsFileExist(path) || !mArchiver->IsFileExist(GetThumbImageName(path));
    }
    case eRT_ScrapBook:
      return !mArchiver->IsFileExist(resInfo.mName + "/dataFile.json");
    default:
      // A clip without its file stays listed.
      return false;
  }
}

ResInfoList& MediaCenter::GetResInfoList(EResType type) {
  assert(type > eRT_Invalid && type < eRT_Num);
  return mResInfoList[type];
}

ResInfo* MediaCenter::GetResInfo(EResType type, int id, bool withThumb) {
  assert(type > eRT_Invalid && type < eRT_Num);
  ResInfoListIt it = GetResInfoIt(type, id);
  if (it == mResInfoList[type].end()) return 0;
  // Decoding the thumbnail is the image pipeline's, which is not part of this
  // store yet; nobody may ask for it until then.
  assert(!withThumb && "thumbnail decoding is not available");
  return &*it;
}

ResInfo* MediaCenter::GetResInfo(EResType type, const std::string& name, bool withThumb) {
  assert(type > eRT_Invalid && type < eRT_Num);
  ResInfoList& list = mResInfoList[type];
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    if (it->mName.size() == name.size() && memcmp(it->mName.data(), name.data(), name.size()) == 0) {
      assert(!withThumb && "thumbnail decoding is not available");
      return &*it;
    }
  }
  return 0;
}

ResInfoListIt MediaCenter::GetResInfoIt(EResType type, int id) {
  assert(type > eRT_Invalid && type < eRT_Num);
  ResInfoList& list = mResInfoList[type];
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    if (it->mResId == id) return it;
  }
  return list.end();
}

ResInfo* MediaCenter::getLastPhotoRes() {
  ResInfoList& list = mResInfoList[eRT_Photo];
  return list.empty() ? 0 : &list.back();
}

bool MediaCenter::SSVersionSort(const ResInfo& first, const ResInfo& second) {
  return first.mSSVersion < second.mSSVersion;
}

void MediaCenter::SortStoryStudioResInfo() { mResInfoList[eRT_ScrapBook].sort(SSVersionSort); }

ResInfoListIt MediaCenter::GetStoryStudioResInfoIt(int version) {
  ResInfoList& list = mResInfoList[eRT_ScrapBook];
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    if (it->mSSVersion == version) return it;
  }
  return list.end();
}

ResInfoListIt MediaCenter::GetStoryStudioResInfoItEnd(int version) {
  ResInfoListIt it = GetStoryStudioResInfoIt(version);
  while (it != mResInfoList[eRT_ScrapBook].end() && it->mSSVersion == version) ++it;
  return it;
}

// ---------------------------------------------------------------------------
// Life cycle

int MediaCenter::GenerateNewResId(EResType type) { return static_cast<int>(++mMaxResId[type]); }

void MediaCenter::RefreshMaxIdIndex(EResType type, int id) {
  if (static_cast<unsigned>(id) > mMaxResId[type]) mMaxResId[type] = static_cast<unsigned>(id);
}

std::string MediaCenter::GenerateResName(EResType type, ResID resId) {
  assert(type > eRT_Invalid && type < eRT_Num);
  assert(resId != -1);
  char name[256];
  name[0] = 0;
  switch (type) {
    case eRT_Photo: snprintf(name, sizeof name, "vtwgphoto_%d.jpg", resId); break;
    case eRT_Audio: snprintf(name, sizeof name, "vtwgaudio_%d.wav", resId); break;
    case eRT_Video: snprintf(name, sizeof name, "vtwgvideo_%d.avi", resId); break;
    case eRT_Art: snprintf(name, sizeof name, "vtwgart_%d.jpg", resId); break;
    case eRT_ScrapBook: {
      // The story's folder; naming it points the archive's story paths at it.
      snprintf(name, sizeof name, "/SD-%d-%d/", mArchiver->getCurrentPlayID(), resId);
      mArchiver->CreateScrapBookSubFolder(name);
      return mArchiver->mScrapBookPath;
    }
    case eRT_UnSharePhoto: snprintf(name, sizeof name, "vtwgunsharephoto_%d.jpg", resId); break;
    case eRT_SpecificFolderArt: snprintf(name, sizeof name, "vtwspecificart_%d.jpg", resId); break;
    case eRT_SpecificFolderAudio: snprintf(name, sizeof name, "vtwspecificaudio_%d.wav", resId); break;
    default: break;
  }
  return name;
}

ResInfo* MediaCenter::CreateNewRes(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  if (resType == eRT_SpecificFolderPhoto) assert(0);
  if (mArchiver->GetAvailableDiskSpace() < kReservedBytes) {
    puts("Not Enough Space to create ResInfo!");
    return 0;
  }
  ResInfo record;
  record.mResType = resType;
  record.mResId = GenerateNewResId(resType);
  record.mName = GenerateResName(resType, record.mResId);
  printf("New ResInfo:%s\n", record.mName.c_str());
  mResInfoList[resType].push_back(record);
  return &mResInfoList[resType].back();
}

EMediaErrorCode MediaCenter::RequestResSpace(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  if (resType == eRT_SpecificFolderPhoto) assert(0);
  return mArchiver->GetAvailableDiskSpace() < kReservedBytes ? eMedia_NoSpace : eMedia_Ok;
}

unsigned MediaCenter::availableMediaBytes() { return mArchiver->GetAvailableDiskSpace(); }

float MediaCenter::MediaConsumedRatio() {
  double free = static_cast<double>(availableMediaBytes()) - static_cast<double>(kReservedBytes);
  if (free < 0.0) free = 0.0;
  return static_cast<float>(1.0 - free / (MEDIA_DEVICE_DISK_BYTES - 524288000.0));
}

int MediaCenter::availableVideoDuration() {
  const unsigned free = availableMediaBytes();
  if (free < kVideoReservedBytes) return 0;
  const unsigned seconds = (free - kVideoReservedBytes) >> kVideoBytesShift;
  return seconds < kLeastVideoSeconds ? 0 : static_cast<int>(seconds);
}

std::string MediaCenter::temporaryAudioName() { return mArchiver->mMusicPath + "audio.tmp"; }

std::string MediaCenter::temporaryVideoName() { return mArchiver->mVideoPath + "video.tmp"; }

void MediaCenter::StartOperProtected(EResType resType, ResID resId, eProtectedOperType operType) {
  assert(resType != eRT_Invalid);
  assert(mOperResType == eRT_Invalid);
  assert(operType > ePOT_Invalid && operType < ePOT_Num);
  mOperResType = resType;
  const std::string path = CheckFileName(resType);
  File file(path.c_str(), "wb");
  if (file.isOpened()) {
    printf("Open Filee OK:%s", path.c_str());
    file.writeInt(operType);
    file.writeInt(resType);
    file.writeInt(resId);
  } else {
    // Unprotected, but the work goes on.
    printf("Open Filee Error:%s", path.c_str());
  }
  file.close();
}

void MediaCenter::EndOperProtected(EResType type) {
  assert(type != eRT_Invalid);
  assert(mOperResType == type);
  mOperResType = eRT_Invalid;
  mArchiver->ArchiveDeleteFile(CheckFileName(type));
}

void MediaCenter::StoreAudioToDisk(EResType type, int id) {
  assert(type == eRT_Audio || type == eRT_SpecificFolderAudio);
  ResInfo* resInfo = GetResInfo(type, id, false);
  assert(resInfo);
  // A folder audio's name is a whole path.
  const std::string target = type == eRT_Audio ? mResPath[type] + resInfo->mName : resInfo->mName;
  printf("Audio filename:%s\n", target.c_str());
  solvaRename(temporaryAudioName().c_str(), target.c_str());
  WriteUploadFileIncreased(resInfo);
}

void MediaCenter::StoreVideoToDisk(int id) {
  ResInfo* resInfo = GetResInfo(eRT_Video, id, false);
  assert(resInfo);
  assert(resInfo->mResType == eRT_Video);
  const std::string target = mResPath[eRT_Video] + resInfo->mName;
  printf("StoreVideo:%s to Disk!\n", target.c_str());
  solvaRename(temporaryVideoName().c_str(), target.c_str());
  WriteUploadFileIncreased(resInfo);
}

void MediaCenter::DeleteRes(EResType type, ResID resid, bool) {
  assert(type > eRT_Invalid && type < eRT_Num);
  assert(resid != -1);
  ResInfoListIt it = GetResInfoIt(type, resid);
  if (it == mResInfoList[type].end()) return;

  const std::string mainPath = mResPath[type] + it->mName;
  std::string thumbPath;
  std::string coverPath;
  if (type == eRT_Photo || type == eRT_Art || type == eRT_UnSharePhoto || type == eRT_Video) {
    thumbPath = GetThumbImageName(mainPath);
  }
  if (type == eRT_Video) coverPath = GetCoverPhotoName(mainPath);

  if (type == eRT_ScrapBook) {
    std::string item = it->mName;
    for (size_t i = 0; i < item.size(); ++i) {
      if (item[i] == '/') item[i] = '\\';
    }
    // The story's folder goes with all it holds, as "rm -f -r" of that one path
    // would take it, but in-process rather than through a shell.
    BaseUtils::Instance()->RMTree(it->mName);
    mResInfoList[type].erase(it);
    UploadFileDeleteItem(eRT_ScrapBook, item);
    return;
  }

  // The index forgets the resource before any of its files goes.
  mResInfoList[type].erase(it);
  StartOperProtected(type, resid, ePOT_Delete);
  SaveResInfo(type);
  mArchiver->ArchiveDeleteFile(mainPath);
  mArchiver->ArchiveDeleteFile(thumbPath);
  if (type == eRT_Video) mArchiver->ArchiveDeleteFile(coverPath);
  EndOperProtected(type);
  UploadFileDeleteItem(type, mainPath);
}

void MediaCenter::DeleteRes(EResType type, ResInfo* resInfo, bool unused) {
  assert(type > eRT_Invalid && type < eRT_Num);
  assert(resInfo);
  DeleteRes(type, resInfo->mResId, unused);
}

// ---------------------------------------------------------------------------
// Derived picture names

std::string MediaCenter::GetThumbImageName(const std::string& path) {
  return DerivedPictureName(path, "_thumb", "Thumb");
}

std::string MediaCenter::GetCoverPhotoName(const std::string& path) {
  return DerivedPictureName(path, "_cover", "Cover");
}

// ---------------------------------------------------------------------------
// Upload lists

void MediaCenter::WriteUploadFileIncreased(const ResInfo* inResInfo) {
  assert(inResInfo);
  std::string item;
  std::string list;
  std::string kind;
  switch (inResInfo->mResType) {
    case eRT_Photo:
      item = mArchiver->mPhotoPath + inResInfo->mName;
      list = mArchiver->mUploadPhotoPath + "UploadPhotoList.txt";
      kind = "Photos";
      break;
    case eRT_Video:
      item = mArchiver->mVideoPath + inResInfo->mName;
      list = mArchiver->mUploadVideoPath + "UploadVideoList.txt";
      kind = "Videos";
      break;
    case eRT_Art:
      item = mArchiver->mArtPath + inResInfo->mName;
      list = mArchiver->mUploadArtPath + "UploadArtList.txt";
      kind = "Art";
      break;
    case eRT_Audio:
      item = mArchiver->mMusicPath + inResInfo->mName;
      list = mArchiver->mUploadMusicPath + "UploadAudioList.txt";
      kind = "Audio";
      break;
    case eRT_ScrapBook: {
      puts("ttt\n\n\n");
      // Only naming the story sets the story upload folder.
      char subFolder[64];
      snprintf(subFolder, sizeof subFolder, "/SD-%d-%d/", mArchiver->getCurrentPlayID(), inResInfo->mResId);
      mArchiver->CreateScrapBookSubFolder(subFolder);
      item = inResInfo->mName;
      list = mArchiver->mUploadStoryPath + "UploadScrapBookList.txt";
      kind = "StoryBooks";
      break;
    }
    default:
      break;
  }
  printf("Path:%s\nName:%s\n", item.c_str(), list.c_str());
  if (kind.empty()) return;

  FILE* stream = fopen(list.c_str(), "rb");
  if (stream != 0) {
    fseek(stream, 0, SEEK_END);
    const long size = ftell(stream);
    fseek(stream, 0, SEEK_SET);
    std::vector<char> text(size > 0 ? size_t(size) + 1 : 1, 0);
    if (size > 0) {
      const size_t got = fread(text.data(), 1, size_t(size), stream);
      text[got] = 0;
    }
    fclose(stream);
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\n' || text[i] == '\r') text[i] = 0;
    }
    for (size_t at = 0; at + 1 < text.size();) {
      const size_t length = strlen(text.data() + at);
      if (length == item.size() && item.compare(0, length, text.data() + at, length) == 0) return;
      at += length + 1;
    }
  }

  stream = fopenAtomic(list.c_str(), "a");
  if (stream == 0) return;
  fputs(item.c_str(), stream);
  fputc('\n', stream);
  fcloseAtomic(stream);
  WriteUploadPath(kind);
}

void MediaCenter::WriteUploadPath(const std::string& kind) {
  Catalog::CMetaInfo title(mArchiver->mTitlePath);
  std::string folder;
  std::string list;
  if (kind == "Photos") {
    folder = mArchiver->mUploadPhotoPath;
    list = folder + "UploadPhotoList.txt";
  } else if (kind == "Videos") {
    folder = mArchiver->mUploadVideoPath;
    list = folder + "UploadVideoList.txt";
  } else if (kind == "Art") {
    folder = mArchiver->mUploadArtPath;
    list = folder + "UploadArtList.txt";
  } else if (kind == "Audio") {
    folder = mArchiver->mUploadMusicPath;
    list = folder + "UploadAudioList.txt";
  } else if (kind == "StoryBooks") {
    folder = mArchiver->mUploadStoryPath;
    list = folder + "UploadScrapBookList.txt";
  } else {
    assert(false);
  }
  Catalog::CMetaInfo upload(folder);
  // The folder is this title's already: nothing to change.
  if (upload.GetPackageId() == title.GetPackageId()) return;
  upload.SetDeviceType(title.GetDeviceType());
  upload.SetPackageType(Catalog::tPackageType(kind));
  upload.SetPackageId(title.GetPackageId());
  upload.SetProductId(title.GetProductId());
  upload.SetTagString("PathToUploadContentList", list);
  upload.SetTagString("OptionalUpload", "1");
}

void MediaCenter::UploadFileDeleteItem(EResType type, const std::string& item) {
  std::string list;
  switch (type) {
    case eRT_Photo: list = mArchiver->mUploadPhotoPath + "UploadPhotoList.txt"; break;
    case eRT_Video: list = mArchiver->mUploadVideoPath + "UploadVideoList.txt"; break;
    case eRT_Art: list = mArchiver->mUploadArtPath + "UploadArtList.txt"; break;
    case eRT_Audio: list = mArchiver->mUploadMusicPath + "UploadAudioList.txt"; break;
    case eRT_ScrapBook: list = mArchiver->mUploadStoryPath + "UploadScrapBookList.txt"; break;
    default:
      printf("Delete item in type %d is not supported.\n", type);
      return;
  }
  std::vector<std::string> lines;
  {
    std::ifstream in(list.c_str());
    std::string line;
    while (std::getline(in, line)) lines.push_back(line);
  }
  FILE* stream = fopenAtomic(list.c_str(), "w");
  if (stream == 0) return;
  // Any line that holds the item goes, not only the equal one.
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].find(item) == std::string::npos) fprintf(stream, "%s\n", lines[i].c_str());
  }
  fcloseAtomic(stream);
}

void MediaCenter::StoreStoryBookUploadInfo(const ResInfo* inResInfo) { WriteUploadFileIncreased(inResInfo); }
