#include "External/waf/WafArchiveManager.h"

#include "External/waf/wafexp.h"

WafArchiveManager::WafArchiveManager() {
  for (int i = 0; i < eArchive_Num; ++i) mCompressedArchives[i] = 0;
}

WafArchiveManager::~WafArchiveManager() {
  for (int i = 0; i < eArchive_Num; ++i) {
    if (mCompressedArchives[i] != 0) waf_archive_close(mCompressedArchives[i]);
  }
}

void WafArchiveManager::Initialize(const std::string& /*archivePath*/) {}
