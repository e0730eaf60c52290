#include "MediaCenter/MediaCenter.h"

#include <assert.h>
#include <stdio.h>
#include <string.h>
#include <tinyxml.h>

#include <fstream>
#include <stdexcept>
#include <vector>

#include "AtomicFile.h"
#include "Base/File.h"
#include "BaseUtils.h"
#include "BaseFramework/GameManager.h"
#include "CMetaInfo.h"
#include "MediaCenter/Archive.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/TGAFile.h"
#include "SolvaFileOps.h"

// jpeglib.h needs size_t and FILE declared first.
#include <jpeglib.h>

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

const int kJpegQuality = 80;

// Thumbnails are 80 x 80 whatever the picture's shape; covers 320 x 240.
const int kThumbSize = 80;
const int kCoverWidth = 320;
const int kCoverHeight = 240;

// One output row of `rgb` scaled by 0.5 (2 x 2 averages; an odd last column or
// row stands for itself) or 2 (each pixel four times).
void ScaledRow(const uint8* rgb, int width, int height, float scale, int row, uint8* out, int outWidth) {
  if (scale == 1.0f) {
    memcpy(out, rgb + size_t(row) * width * 3, size_t(width) * 3);
  } else if (scale == 2.0f) {
    const uint8* from = rgb + size_t(row / 2) * width * 3;
    for (int x = 0; x < outWidth; ++x) memcpy(out + x * 3, from + (x / 2) * 3, 3);
  } else {
    const int y0 = row * 2;
    const int y1 = y0 + 1 < height ? y0 + 1 : height - 1;
    for (int x = 0; x < outWidth; ++x) {
      const int x0 = x * 2;
      const int x1 = x0 + 1 < width ? x0 + 1 : width - 1;
      for (int c = 0; c < 3; ++c) {
        const int sum = rgb[(size_t(y0) * width + x0) * 3 + c] + rgb[(size_t(y0) * width + x1) * 3 + c] +
                        rgb[(size_t(y1) * width + x0) * 3 + c] + rgb[(size_t(y1) * width + x1) * 3 + c];
        out[x * 3 + c] = uint8((sum + 2) / 4);
      }
    }
  }
}

// The source step of ScaleBuffer along one axis, shared with the check of how far
// it reads.
float ScaleStep(int newSize, int oldSize) { return 1.0f / (float(newSize) / float(oldSize)); }

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
  RaiseMaxResIdsFrom(IndexDirectory(resType) + "resid.bin");
}

void MediaCenter::RaiseMaxResIdsFrom(const std::string& path) {
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

MediaCenter::EIndexRead MediaCenter::ReadResInfoFromBin(EResType resType, ResInfoList& records) {
  return ParseResInfoBin(resType, records, false);
}

MediaCenter::EIndexRead MediaCenter::ParseResInfoBin(EResType resType, ResInfoList& list, bool raiseMaxima) {
  const std::string path = IndexDirectory(resType) + scResInfoSaveFileName[resType] + ".bin";
  File file(path.c_str(), "rb");
  if (!file.isOpened()) return eIndex_Missing;
  File::FBuffer buffer = {0, 0};
  file.readFile2Buf(&buffer);
  file.close();

  ByteReader reader(buffer.mData, buffer.mSize);
  unsigned version;
  if (!reader.ReadU32(version) || version != scResFileVersion[resType]) {
    File::releaseFileBuf(&buffer);
    return eIndex_OtherVersion;
  }
  int count = 0;
  bool whole = reader.ReadI32(count);
  for (int i = 0; whole && i < count; ++i) {
    ResInfo record;
    int type;
    whole = reader.ReadI32(record.mResId);
    if (!whole) break;
    // At once, so that even a damaged record keeps its number from coming back.
    if (raiseMaxima) RefreshMaxIdIndex(resType, record.mResId);
    whole = reader.ReadI32(type);
    if (!whole) break;
    record.mResType = static_cast<EResType>(type);
    whole = reader.ReadI32(record.mViewMode);
    switch (record.mResType) {
      case eRT_Photo:
      case eRT_Art:
        whole = whole && reader.ReadI32(record.mImgWidth) && reader.ReadI32(record.mImgHeight);
        break;
      case eRT_Audio:
      case eRT_Video:
        whole = whole && reader.ReadF32(record.mLength);
        break;
      case eRT_ScrapBook:
        whole = whole && reader.ReadI32(record.mSSVersion) && reader.ReadString(record.mName);
        break;
      case eRT_UnSharePhoto:
      case eRT_SpecificFolderArt:
        whole = whole && reader.ReadI32(record.mImgWidth) && reader.ReadI32(record.mImgHeight) &&
                reader.ReadString(record.mName);
        break;
      case eRT_SpecificFolderAudio:
        whole = whole && reader.ReadString(record.mName);
        break;
      default:
        break;
    }
    if (whole) list.push_back(record);
  }
  File::releaseFileBuf(&buffer);
  return whole ? eIndex_Whole : eIndex_Damaged;
}

void MediaCenter::LoadResInfoFromBin(EResType resType) {
  assert(resType > eRT_Invalid && resType < eRT_Num);
  ResInfoList& list = mResInfoList[resType];
  list.clear();

  const EIndexRead read = ParseResInfoBin(resType, list, true);
  const std::string path = IndexDirectory(resType) + scResInfoSaveFileName[resType] + ".bin";
  if (read == eIndex_Missing) {
    printf("Open File Failed:%s\n", path.c_str());
    return;
  }
  if (read == eIndex_OtherVersion) {
    printf("File version is not same:%s\n", path.c_str());
    return;
  }

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

  const std::string path = IndexDirectory(resType) + "resid.bin";
  // Departure: a save that comes before resid.bin was read (a corrupted record
  // dropped while loading the index) would lower the numbers it holds, and numbers
  // of deleted resources would be given again; what the file holds is kept.
  RaiseMaxResIdsFrom(path);
  unsigned char buffer[512];
  memset(buffer, 0, sizeof buffer);
  memcpy(buffer, &kResIdMagic, 4);
  memcpy(buffer + 4, mMaxResId, 4 * eRT_Num);
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
  if (withThumb) ExtractThumb(&*it);
  return &*it;
}

ResInfo* MediaCenter::GetResInfo(EResType type, const std::string& name, bool withThumb) {
  assert(type > eRT_Invalid && type < eRT_Num);
  ResInfoList& list = mResInfoList[type];
  for (ResInfoListIt it = list.begin(); it != list.end(); ++it) {
    if (it->mName.size() == name.size() && memcmp(it->mName.data(), name.data(), name.size()) == 0) {
      if (withThumb) ExtractThumb(&*it);
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

bool MediaCenter::StoreImageToDisk(ResInfo* inResInfo, uint8* buf, int width, int height, float scale) {
  assert(buf);
  assert(inResInfo);
  assert(inResInfo->mResType == eRT_Photo || inResInfo->mResType == eRT_Art ||
         inResInfo->mResType == eRT_UnSharePhoto || inResInfo->mResType == eRT_ScrapBook ||
         inResInfo->mResType == eRT_SpecificFolderArt);
  std::string target = mResPath[inResInfo->mResType] + inResInfo->mName;
  if (!GenerateJpgFromRGB8(target, buf, width, height, scale)) return false;
  StoreThumbToDisk(inResInfo, buf, width, height);
  WriteUploadFileIncreased(inResInfo);
  return true;
}

void MediaCenter::StoreThumbToDisk(ResInfo* inResInfo, uint8* buf, int width, int height) {
  assert(buf);
  assert(inResInfo);
  assert(inResInfo->mResType == eRT_Photo || inResInfo->mResType == eRT_Art ||
         inResInfo->mResType == eRT_UnSharePhoto || inResInfo->mResType == eRT_ScrapBook ||
         inResInfo->mResType == eRT_SpecificFolderArt || inResInfo->mResType == eRT_Video);
  // Stretched to the square, not cropped.
  uint8* thumb = ScalePicture(kThumbSize, kThumbSize, width, height, buf);
  std::string target = GetThumbImageName(mResPath[inResInfo->mResType] + inResInfo->mName);
  GenerateJpgFromRGB8(target, thumb, kThumbSize, kThumbSize, 1.0f);
  delete[] thumb;
}

void MediaCenter::StoreCoverToDisk(ResInfo* inResInfo, uint8* buf, int width, int height) {
  assert(buf);
  assert(inResInfo);
  assert(inResInfo->mResType == eRT_Video);
  std::string target = GetCoverPhotoName(mResPath[eRT_Video] + inResInfo->mName);
  if ((width == 320 && height == 240) || (width == 640 && height == 480)) {
    uint8* cover = ScalePicture(kCoverWidth, kCoverHeight, width, height, buf);
    const BOOL saveResult = GenerateJpgFromRGB8(target, cover, kCoverWidth, kCoverHeight, 1.0f);
    delete[] cover;
    assert(saveResult);
  } else if ((width == 240 && height == 320) || (width == 480 && height == 640)) {
    // Portrait covers are not wanted; the writing below only happens where
    // assertions are off.
    assert(0);
    uint8* cover = ScalePicture(kCoverHeight, kCoverWidth, width, height, buf);
    const BOOL saveResult = GenerateJpgFromRGB8(target, cover, kCoverHeight, kCoverWidth, 1.0f);
    delete[] cover;
    assert(saveResult);
  } else {
    assert(0);
  }
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
// Pictures

BOOL MediaCenter::ExtractJpgToRGB8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom) {
  FILE* input = fopen(path.c_str(), "rb");
  if (input == NULL) {
    printf("[MediaCenter][ExtractJpgToRGB8] Extract jpg file failed. Cann't open file %s.\n", path.c_str());
    perror("[MediaCenter][ExtractJpgToRGB8] Problem :");
    return false;
  }
  struct jpeg_decompress_struct Cinfo;
  struct jpeg_error_mgr errors;
  Cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&Cinfo);
  jpeg_stdio_src(&Cinfo, input);
  jpeg_read_header(&Cinfo, TRUE);
  Cinfo.scale_num = 1;
  Cinfo.scale_denom = scaleDenom;
  jpeg_start_decompress(&Cinfo);
  assert(Cinfo.num_components == 3);

  const int outWidth = int(Cinfo.output_width);
  const int outHeight = int(Cinfo.output_height);
  const size_t rowBytes = size_t(outWidth) * 3;
  uint8* pixels = new uint8[rowBytes * outHeight];
  while (Cinfo.output_scanline < Cinfo.output_height) {
    JSAMPROW row = pixels + Cinfo.output_scanline * rowBytes;
    jpeg_read_scanlines(&Cinfo, &row, 1);
  }
  jpeg_finish_decompress(&Cinfo);
  jpeg_destroy_decompress(&Cinfo);
  fclose(input);

  buf = pixels;
  width = outWidth;
  height = outHeight;

  if (scaleDenom == 16) {
    // The library stops at one eighth; the last halving is done here.
    puts("[MediaCenter][ExtractJpgToRGB8] ScaleRationDenom is 16. More Operation.");
    const int halfWidth = width / 2;
    const int halfHeight = height / 2;
    uint8* half = new uint8[size_t(halfWidth) * halfHeight * 3];
    for (int y = 0; y < halfHeight; ++y)
      for (int x = 0; x < halfWidth; ++x)
        memcpy(half + (size_t(y) * halfWidth + x) * 3, buf + (size_t(y * 2) * width + x * 2) * 3, 3);
    delete[] buf;
    buf = half;
    width = halfWidth;
    height = halfHeight;
  }
  return true;
}

BOOL MediaCenter::ExtractJpgToRGBA8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom) {
  uint8* rgb = 0;
  int rgbWidth = 0;
  int rgbHeight = 0;
  if (!ExtractJpgToRGB8(path, rgb, rgbWidth, rgbHeight, scaleDenom)) return false;
  const size_t count = size_t(rgbWidth) * rgbHeight;
  uint8* rgba = new uint8[count * 4];
  for (size_t i = 0; i < count; ++i) {
    rgba[i * 4 + 0] = rgb[i * 3 + 0];
    rgba[i * 4 + 1] = rgb[i * 3 + 1];
    rgba[i * 4 + 2] = rgb[i * 3 + 2];
    rgba[i * 4 + 3] = 255;
  }
  delete[] rgb;
  buf = rgba;
  width = rgbWidth;
  height = rgbHeight;
  return true;
}

BOOL MediaCenter::ExtractTgaToRGBA8(std::string& path, uint8*& buf, int& width, int& height) {
  BMPData bmp;
  memset(&bmp, 0, sizeof bmp);
  if (LoadTGAFile(path.c_str(), &bmp) != 0) {
    UnloadBMPData(&bmp);
    return false;
  }
  width = bmp.width;
  height = bmp.height;
  const size_t count = size_t(width) * height;
  // A 24-bit file has three bytes a pixel, not the four read here: the reading
  // stops at the end of its pixels, and what it does not reach stays clear.
  const size_t have = count * size_t(bmp.bitsPerPixel >> 3);
  uint8* rgba = new uint8[count * 4]();
  for (size_t i = 0; i < count && i * 4 + 4 <= have; ++i) {
    rgba[i * 4 + 0] = bmp.pixels[i * 4 + 1];
    rgba[i * 4 + 1] = bmp.pixels[i * 4 + 2];
    rgba[i * 4 + 2] = bmp.pixels[i * 4 + 3];
    rgba[i * 4 + 3] = bmp.pixels[i * 4 + 0];
  }
  UnloadBMPData(&bmp);
  buf = rgba;
  return true;
}

BOOL MediaCenter::GenerateJpgFromRGB8(std::string& path, const uint8* rgb, int width, int height, float scale) {
  assert(scale == 0.5f || scale == 1.0f || scale == 2.0f);
  File file;
  if (!file.open(path.c_str(), "wb")) {
    perror("Problem :");
    return false;
  }
  // libjpeg-turbo has no scaling on the compression side, so the scaled rows are
  // made here, one at a time, at the size libjpeg's own scaling gives: half
  // rounded up, or double.
  int outWidth = width;
  int outHeight = height;
  if (scale == 0.5f) {
    outWidth = (width + 1) / 2;
    outHeight = (height + 1) / 2;
  } else if (scale == 2.0f) {
    outWidth = width * 2;
    outHeight = height * 2;
  }

  struct jpeg_compress_struct cinfo;
  struct jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_compress(&cinfo);
  jpeg_stdio_dest(&cinfo, file.stream());
  cinfo.image_width = JDIMENSION(outWidth);
  cinfo.image_height = JDIMENSION(outHeight);
  cinfo.input_components = 3;
  cinfo.in_color_space = JCS_RGB;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, kJpegQuality, TRUE);
  jpeg_start_compress(&cinfo, TRUE);
  uint8* line = new uint8[size_t(outWidth) * 3];
  while (cinfo.next_scanline < cinfo.image_height) {
    ScaledRow(rgb, width, height, scale, int(cinfo.next_scanline), line, outWidth);
    JSAMPROW row = line;
    jpeg_write_scanlines(&cinfo, &row, 1);
  }
  delete[] line;
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  file.close();
  printf("[MediaCenter] Generate POOL_NEW jpg file %s, with %d, height %d.\n", path.c_str(), outWidth, outHeight);
  return true;
}

bool MediaCenter::GetJpgInfo(std::string& path, int& width, int& height) {
  File file;
  if (!file.open(path.c_str(), "rb")) {
    printf("[MediaCenter][GetJpgInfo] Extract jpg file failed. Cann't open file %s.\n", path.c_str());
    return false;
  }
  struct jpeg_decompress_struct cinfo;
  struct jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, file.stream());
  jpeg_read_header(&cinfo, TRUE);
  width = int(cinfo.image_width);
  height = int(cinfo.image_height);
  jpeg_destroy_decompress(&cinfo);
  return true;
}

uint8* MediaCenter::ScaleBuffer(int newWidth, int newHeight, int format, int oldWidth, int oldHeight, uint8* src) {
  assert(newWidth != 0 && newHeight != 0 && oldWidth != 0 && oldHeight != 0);
  const int channels = format == 2 ? 4 : 3;
  uint8* dst = new uint8[size_t(newWidth) * newHeight * channels];
  if (newWidth == oldWidth && newHeight == oldHeight) {
    memcpy(dst, src, size_t(newWidth) * newHeight * channels);
    return dst;
  }
  const float scaleX = ScaleStep(newWidth, oldWidth);
  const float scaleY = ScaleStep(newHeight, oldHeight);
  uint8* out = dst;
  for (int y = 0; y < newHeight; ++y) {
    const float fy = float(y) * scaleY;
    const int iy = int(fy);
    const int y0 = iy > 0 ? iy : 0;
    // Stops one row past the last, unlike x1: see the header.
    const int y1 = y0 + 1 < oldHeight ? y0 + 1 : oldHeight;
    const float wy = fy - float(iy);
    for (int x = 0; x < newWidth; ++x) {
      const float fx = float(x) * scaleX;
      const int ix = int(fx);
      const int x0 = ix > 0 ? ix : 0;
      const int x1 = x0 + 1 < oldWidth ? x0 + 1 : oldWidth - 1;
      const float wx = fx - float(ix);
      const uint8* a = src + (size_t(y0) * oldWidth + x0) * channels;
      const uint8* b = src + (size_t(y0) * oldWidth + x1) * channels;
      const uint8* c = src + (size_t(y1) * oldWidth + x0) * channels;
      const uint8* d = src + (size_t(y1) * oldWidth + x1) * channels;
      for (int k = 0; k < 3; ++k) {
        out[k] = uint8(float(a[k]) * (1 - wx) * (1 - wy) + float(b[k]) * wx * (1 - wy) + float(c[k]) * wy * (1 - wx) +
                       float(d[k]) * wy * wx);
      }
      // Opaque only where all four sources are.
      if (channels == 4) out[3] = uint8(a[3] & b[3] & c[3] & d[3]);
      out += channels;
    }
  }
  return dst;
}

uint8* MediaCenter::ScalePicture(int newWidth, int newHeight, int oldWidth, int oldHeight, uint8* src) {
  const bool sameSize = newWidth == oldWidth && newHeight == oldHeight;
  if (sameSize || newWidth == 0 || newHeight == 0 || oldWidth <= 0 || oldHeight <= 0) {
    return ScaleBuffer(newWidth, newHeight, 1, oldWidth, oldHeight, src);
  }
  // The last output row reads source row y0 + 1; when that is past the picture,
  // scale a copy whose extra row repeats the last one, as if the picture ended
  // there, rather than read past the array. Pictures that do not reach so far are
  // scaled as they are.
  const int lastRow = int(float(newHeight - 1) * ScaleStep(newHeight, oldHeight));
  if (lastRow + 1 < oldHeight) return ScaleBuffer(newWidth, newHeight, 1, oldWidth, oldHeight, src);
  const size_t rowBytes = size_t(oldWidth) * 3;
  uint8* padded = new uint8[rowBytes * (oldHeight + 1)];
  memcpy(padded, src, rowBytes * oldHeight);
  memcpy(padded + rowBytes * oldHeight, src + rowBytes * (oldHeight - 1), rowBytes);
  uint8* scaled = ScaleBuffer(newWidth, newHeight, 1, oldWidth, oldHeight, padded);
  delete[] padded;
  return scaled;
}

void MediaCenter::RotateBuf(uint8* dst, uint8* src, int& outWidth, int& outHeight, int width, int height, int angle,
                            int bytesPerPixel) {
  assert(dst && src);
  const int copy = bytesPerPixel == 4 ? 4 : 3;
  if (angle == -90 || angle == 270) {
    outWidth = height;
    outHeight = width;
  } else if (angle == 180 || angle == -180) {
    outWidth = width;
    outHeight = height;
  } else if (angle == 90 || angle == -270) {
    outWidth = height;
    outHeight = width;
  } else {
    assert(0);
    return;
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      int nx, ny;
      if (angle == -90 || angle == 270) {
        nx = y;
        ny = width - 1 - x;
      } else if (angle == 180 || angle == -180) {
        nx = width - 1 - x;
        ny = height - 1 - y;
      } else {
        nx = height - 1 - y;
        ny = x;
      }
      memcpy(dst + (size_t(ny) * outWidth + nx) * bytesPerPixel, src + (size_t(y) * width + x) * bytesPerPixel, copy);
    }
  }
}

float MediaCenter::KernelBSpline(float x) {
  if (x > 2.0f) return 0.0f;
  const float xm1 = x - 1.0f;
  const float xp1 = x + 1.0f;
  const float xp2 = x + 2.0f;
  const float a = xp2 > 0.0f ? xp2 * xp2 * xp2 : 0.0f;
  const float b = xp1 > 0.0f ? xp1 * xp1 * xp1 : 0.0f;
  const float c = x > 0.0f ? x * x * x : 0.0f;
  const float d = xm1 > 0.0f ? xm1 * xm1 * xm1 : 0.0f;
  return (a - 4.0f * b + 6.0f * c - 4.0f * d) * 0.16666667f;
}

std::string MediaCenter::GetThumbImageName(const std::string& path) {
  return DerivedPictureName(path, "_thumb", "Thumb");
}

std::string MediaCenter::GetCoverPhotoName(const std::string& path) {
  return DerivedPictureName(path, "_cover", "Cover");
}

ResInfo* MediaCenter::ExtractThumb(ResInfo* InResInfo) {
  assert(InResInfo);
  assert(InResInfo->mResType > eRT_Invalid && InResInfo->mResType < eRT_Num);
  if (InResInfo->mThumbBuffer) return InResInfo;
  const std::string mainPath = mResPath[InResInfo->mResType] + InResInfo->mName;
  switch (InResInfo->mResType) {
    case eRT_Photo:
    case eRT_Art:
    case eRT_UnSharePhoto:
    case eRT_Video: {
      std::string thumb = GetThumbImageName(mainPath);
      ExtractJpgToRGB8(thumb, InResInfo->mThumbBuffer, InResInfo->mThumbWidth, InResInfo->mThumbHeight, 1);
      break;
    }
    case eRT_ScrapBook: {
      // The preset stands when the first page has no thumbnail.
      InResInfo->mThumbWidth = 90;
      InResInfo->mThumbHeight = 160;
      std::string thumb = InResInfo->mName + "Page1_thumb.jpg";
      ExtractJpgToRGB8(thumb, InResInfo->mThumbBuffer, InResInfo->mThumbWidth, InResInfo->mThumbHeight, 1);
      break;
    }
    case eRT_SpecificFolderPhoto: {
      // A picture folder has no thumbnail files: the thumbnail is made from the
      // picture itself.
      std::string path = InResInfo->mName;
      uint8* pixels = 0;
      int width = 0;
      int height = 0;
      // A missing file leaves the buffers null rather than scale a picture of no size.
      if (!ExtractJpgToRGB8(path, pixels, width, height, 1)) break;
      // A picture decoded before is replaced, not leaked.
      delete[] InResInfo->mMediaBuffer;
      InResInfo->mMediaBuffer = pixels;
      InResInfo->mMediaWidth = width;
      InResInfo->mMediaHeight = height;
      if (width == 320 && height == 240) {
        InResInfo->mViewMode = 0;
      } else if (width == 240 && height == 320) {
        InResInfo->mViewMode = 1;
      }
      InResInfo->mThumbBuffer = ScalePicture(kThumbSize, kThumbSize, width, height, pixels);
      InResInfo->mThumbWidth = kThumbSize;
      InResInfo->mThumbHeight = kThumbSize;
      break;
    }
    default:
      assert(0);
      break;
  }
  return InResInfo;
}

ResInfo* MediaCenter::ExtractMedia(EResType type, int id) {
  assert(type > eRT_Invalid && type < eRT_Num);
  if (id == -1) return 0;
  ResInfo* resInfo = GetResInfo(type, id, true);
  if (resInfo == 0) return 0;
  switch (type) {
    case eRT_Photo:
    case eRT_UnSharePhoto: {
      std::string path = mResPath[type] + resInfo->mName;
      if (resInfo->mMediaBuffer == 0) {
        // The camera's own sizes are decoded at half size.
        const bool large = (resInfo->mImgWidth == 640 && resInfo->mImgHeight == 480) ||
                           (resInfo->mImgWidth == 960 && resInfo->mImgHeight == 544);
        ExtractJpgToRGB8(path, resInfo->mMediaBuffer, resInfo->mMediaWidth, resInfo->mMediaHeight, large ? 2 : 1);
      }
      printf("[MediaCenter][ExtractMedia] Extract Photo Res %s success.\n", path.c_str());
      return resInfo;
    }
    case eRT_SpecificFolderPhoto: {
      if (resInfo->mMediaBuffer != 0) return resInfo;
      std::string path = resInfo->mName;
      ExtractJpgToRGB8(path, resInfo->mMediaBuffer, resInfo->mMediaWidth, resInfo->mMediaHeight, 1);
      printf("[MediaCenter][ExtractMedia] Extract Specific Photo Res %s success.\n", path.c_str());
      return resInfo;
    }
    case eRT_Art:
    case eRT_SpecificFolderArt: {
      std::string path = mResPath[type] + resInfo->mName;
      if (resInfo->mMediaBuffer == 0) {
        ExtractJpgToRGB8(path, resInfo->mMediaBuffer, resInfo->mMediaWidth, resInfo->mMediaHeight, 1);
      }
      printf("[MediaCenter][ExtractMedia] Extract Atr Res %s success.\n", path.c_str());
      return resInfo;
    }
    case eRT_ScrapBook: {
      if (resInfo->mMediaBuffer != 0) return resInfo;
      std::string path = resInfo->mName + "Page1.jpg";
      ExtractJpgToRGB8(path, resInfo->mMediaBuffer, resInfo->mMediaWidth, resInfo->mMediaHeight, 1);
      printf("[MediaCenter][ExtractMedia] Extract Story Res %s success.\n", path.c_str());
      return resInfo;
    }
    default:
      // Videos and sounds have no picture to decode.
      return 0;
  }
}

void MediaCenter::ReturnThumb(ResInfo* InResInfo) {
  assert(InResInfo);
  delete[] InResInfo->mThumbBuffer;
  InResInfo->mThumbBuffer = 0;
  InResInfo->mThumbWidth = 0;
  InResInfo->mThumbHeight = 0;
}

void MediaCenter::ReturnThumb(EResType type, int id) {
  assert(type > eRT_Invalid && type < eRT_Num);
  if (id == -1) return;
  // The lookup decodes a thumbnail that is not there yet, only to release it.
  ResInfo* resInfo = GetResInfo(type, id, true);
  if (resInfo != 0) ReturnThumb(resInfo);
}

void MediaCenter::ReturnMedia(EResType type, int id) {
  assert(type > eRT_Invalid && type < eRT_Num);
  if (id == -1) return;
  ResInfo* resInfo = GetResInfo(type, id, true);
  if (resInfo == 0) return;
  switch (type) {
    case eRT_Photo:
    case eRT_Art:
    case eRT_UnSharePhoto:
    case eRT_SpecificFolderPhoto:
    case eRT_ScrapBook:
    case eRT_SpecificFolderArt:
      // The size stays: it tells what the picture was.
      delete[] resInfo->mMediaBuffer;
      resInfo->mMediaBuffer = 0;
      break;
    default:
      break;
  }
}

// ---------------------------------------------------------------------------
// Videos and stories

namespace {

// RIFF words as they stand in the file, read as little-endian numbers.
const unsigned kFourCCRiff = 0x46464952u;  // "RIFF"
const unsigned kFourCCAvi = 0x20495641u;   // "AVI "
const unsigned kFourCCJunk = 0x4B4E554Au;  // "JUNK"
const unsigned kFourCCList = 0x5453494Cu;  // "LIST"
const unsigned kFourCCMovi = 0x69766F6Du;  // "movi"
const unsigned kFourCCAvih = 0x68697661u;  // "avih"
// A compressed video frame: two characters (the stream), then "dc".
const unsigned kFrameChunkHighHalf = 0x6364u;

// The standard main AVI header, the body of the "avih" chunk.
struct MainAVIHeader {
  uint32_t microSecPerFrame;
  uint32_t maxBytesPerSec;
  uint32_t paddingGranularity;
  uint32_t flags;
  uint32_t totalFrames;
  uint32_t initialFrames;
  uint32_t streams;
  uint32_t suggestedBufferSize;
  uint32_t width;
  uint32_t height;
  uint32_t reserved[4];
};
static_assert(sizeof(MainAVIHeader) == 56, "the main AVI header is 56 bytes");

// Four bytes as a little-endian word; false when fewer than four are left.
bool ReadWord(FILE* stream, unsigned& word) {
  unsigned char bytes[4];
  if (fread(bytes, 1, 4, stream) != 4) return false;
  word = unsigned(bytes[0]) | unsigned(bytes[1]) << 8 | unsigned(bytes[2]) << 16 | unsigned(bytes[3]) << 24;
  return true;
}

}  // namespace

bool MediaCenter::ExtractAVIFrame(const std::string& source, const std::string& output) {
  printf("[MediaCenter][ExtractAVIFrame]\nSource: %s\nOutput: %s\n", source.c_str(), output.c_str());
  FILE* in = 0;
  try {
    in = fopen(source.c_str(), "rb");
    if (in == 0) throw std::runtime_error("Can't open AVI file.");
    unsigned word;
    if (!ReadWord(in, word) || word != kFourCCRiff) throw std::runtime_error("Not a RIFF file.");
    fseek(in, 4, SEEK_CUR);  // the RIFF size
    if (!ReadWord(in, word) || word != kFourCCAvi) throw std::runtime_error("Not an AVI file.");

    // Top level: padding and lists are passed over until the list of the frames.
    for (;;) {
      if (!ReadWord(in, word)) throw std::runtime_error("Can't read block type.");
      unsigned size;
      if (word == kFourCCJunk) {
        if (!ReadWord(in, size)) throw std::runtime_error("Error reading JUNK size.");
        fseek(in, long(size), SEEK_CUR);
      } else if (word == kFourCCList) {
        if (!ReadWord(in, size)) throw std::runtime_error("Error reading LIST size.");
        const long end = ftell(in) + long(size);
        unsigned listType;
        if (!ReadWord(in, listType)) throw std::runtime_error("Error reading LIST item type.");
        if (listType == kFourCCMovi) break;
        fseek(in, end, SEEK_SET);
      } else {
        throw std::runtime_error("Unknown block type. Expect JUNK or LIST.");
      }
    }

    // Inside "movi", word by word up to the first frame chunk; other chunks are
    // not skipped by their sizes.
    do {
      if (!ReadWord(in, word)) throw std::runtime_error("Error reading MOVI item type.");
    } while ((word >> 16) != kFrameChunkHighHalf);
    unsigned size;
    if (!ReadWord(in, size)) throw std::runtime_error("Error reading image content size.");

    FILE* out = fopenAtomic(output.c_str(), "wb");
    if (out == 0) throw std::runtime_error("Error creating image file.");
    // The frame's bytes as they stand; a file that ends early gives a short output.
    char block[512];
    for (unsigned remaining = size; remaining > 0;) {
      const unsigned ask = remaining < sizeof block ? remaining : unsigned(sizeof block);
      const size_t got = fread(block, 1, ask, in);
      fwrite(block, 1, got, out);
      remaining -= ask;
      // Past the end of the file every further read gives nothing.
      if (got < ask) break;
    }
    fcloseAtomic(out);
    fclose(in);
    return true;
  } catch (const std::runtime_error& error) {
    if (in != 0) fclose(in);
    printf("[MediaCenter][ExtractAVIFrame] Extract failed: %s\n", error.what());
    return false;
  }
}

bool MediaCenter::DescendToSpecificFourCC(FILE* stream, unsigned fourCC) const {
  if (stream == 0) return false;
  for (;;) {
    const int first = fgetc(stream);
    if (first == EOF) return false;
    if (unsigned(first) != (fourCC & 0xFFu)) continue;
    unsigned char rest[3];
    if (fread(rest, 1, 3, stream) != 3) return false;
    const unsigned word = unsigned(first) | unsigned(rest[0]) << 8 | unsigned(rest[1]) << 16 | unsigned(rest[2]) << 24;
    if (word == fourCC) {
      fseek(stream, -4, SEEK_CUR);
      return true;
    }
    // The three bytes are not given back: a code that begins among them is missed.
  }
}

real MediaCenter::GetVideoLengthByResId(int id) {
  if (id == -1) return 0;
  ResInfo* resInfo = GetResInfo(eRT_Video, id, false);
  if (resInfo == 0) return 0;
  ExtractThumb(resInfo);
  const std::string path = mArchiver->mVideoPath + resInfo->mName;
  File file(path.c_str(), "rb");
  if (!file.isOpened()) return 0;
  const unsigned MarkFourCC = kFourCCAvih;
  if (!DescendToSpecificFourCC(file.stream(), MarkFourCC)) return 0;
  const unsigned FourCC = file.readUInt();
  assert(FourCC == MarkFourCC);
  const unsigned ChunkSize = file.readUInt();
  assert(ChunkSize == sizeof(MainAVIHeader));
  // Cleared, so that a file that ends inside the header reads as zeros there.
  uint8* bytes = new uint8[sizeof(MainAVIHeader)]();
  file.read(bytes, 1, sizeof(MainAVIHeader));
  MainAVIHeader header;
  memcpy(&header, bytes, sizeof header);
  const real seconds = real(header.microSecPerFrame) / 1000000.0f * real(header.totalFrames);
  delete[] bytes;
  file.close();
  return seconds;
}

void MediaCenter::StoreStoryBookToDisk(const ResInfo* record, uint8* rgb, int width, int height, int, int page) {
  char name[50];
  memset(name, 0, sizeof name);
  snprintf(name, sizeof name, "Page%d%s", page, ".jpg");
  std::string pagePath = record->mName + name;
  if (!GenerateJpgFromRGB8(pagePath, rgb, width, height, 1.0f)) return;

  if (page == 1) {
    memset(name, 0, sizeof name);
    snprintf(name, sizeof name, "Page%d_thumb%s", page, ".jpg");
    const int thumbWidth = width / 3;
    const int thumbHeight = height / 3;
    uint8* thumb = ScaleBuffer(thumbWidth, thumbHeight, 1, width, height, rgb);
    std::string thumbPath = record->mName + name;
    GenerateJpgFromRGB8(thumbPath, thumb, thumbWidth, thumbHeight, 1.0f);
    delete[] thumb;
  }

  // Every page asks; the list keeps one line for the story.
  WriteUploadFileIncreased(record);

  const std::string folder = record->mName + "Audio/";
  const std::string& source = record->mAudioSrcName;
  size_t slash = source.rfind('/');
  if (slash == std::string::npos) slash = source.rfind('\\');
  const std::string fileName = slash == std::string::npos ? std::string() : source.substr(slash + 1);
  const std::string target = folder + fileName;
  printf("src audio name:%s, audio name:%s\n", source.c_str(), target.c_str());
  solvaRename(source.c_str(), target.c_str());
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
