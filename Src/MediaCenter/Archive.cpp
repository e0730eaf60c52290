#include "MediaCenter/Archive.h"

#include <stdio.h>
#include <sys/stat.h>

#include "Base/File.h"

Archive::Archive() : mCurrentPlayerId(0) {}

Archive::~Archive() {}

void Archive::Initialize(int /*mask*/) {}

void Archive::Destroy() {}

int Archive::GetFileSize(const std::string& path) const {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) return 0;
  return static_cast<int>(info.st_size);
}

int Archive::getCurrentPlayID() { return mCurrentPlayerId; }

bool Archive::IsFileExist(const std::string& path) const {
  File file(path.c_str(), "rb");
  return file.isOpened();
}

bool Archive::IsFileInDirectory(const std::string& name, const std::string& dir) const {
  FILE* file = fopen((dir + name).c_str(), "rb");
  if (file == 0) return false;
  fclose(file);
  return true;
}
