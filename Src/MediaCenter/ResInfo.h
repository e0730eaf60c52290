#ifndef SRC_MEDIACENTER_RESINFO_H
#define SRC_MEDIACENTER_RESINFO_H
// One media record of the shared gallery, and the list that holds records by value.
#include <list>
#include <string>

#include "PlatformTypes.h"

typedef unsigned char uint8;

// The kinds of media; every table of the store has one row per kind, in this order.
enum EResType {
  eRT_Invalid = -1,
  eRT_Photo = 0,
  eRT_Audio = 1,
  eRT_Video = 2,
  eRT_Art = 3,
  eRT_ScrapBook = 4,
  eRT_UnSharePhoto = 5,
  eRT_SpecificFolderPhoto = 6,
  eRT_SpecificFolderArt = 7,
  eRT_SpecificFolderAudio = 8,
  eRT_Num = 9,
};

// A number within a type, given out from 1 upward and never reused.
typedef S32 ResID;
#define INVALID_RES_ID (-1)

struct ResInfo {
  ResInfo();
  // Decoded pictures are owned by the record. Records travel by value into the
  // lists; a copy gets its own copy of the pixels, so that two records never free
  // the same array.
  ResInfo(const ResInfo& other);
  ResInfo& operator=(const ResInfo& other);
  ~ResInfo();

  EResType mResType;
  ResID mResId;
  uint8* mMediaBuffer;  // RGB, 3 bytes a pixel
  uint8* mThumbBuffer;  // RGB, 3 bytes a pixel
  int mMediaWidth;
  int mMediaHeight;
  int mThumbWidth;
  int mThumbHeight;
  int mImgWidth;
  int mImgHeight;
  float mLength;
  std::string mName;
  std::string mAudioSrcName;
  int mViewMode;
  int mSSVersion;
};

typedef std::list<ResInfo> ResInfoList;
typedef ResInfoList::iterator ResInfoListIt;

#endif
