#ifndef SRC_EXTERNAL_WAF_WAFARCHIVEMANAGER_H
#define SRC_EXTERNAL_WAF_WAFARCHIVEMANAGER_H
// Holds the system's WAF archive handles, in three slots. A title that ships its
// resources in archives opens them into the slots; the manager closes them.
#include <string>

#include "Base/singleton.h"

struct waf_archive;

class WafArchiveManager : public Singleton<WafArchiveManager, Tag_Singleton_Manual> {
 public:
  enum E_Archive { eArchive_0, eArchive_1, eArchive_2, eArchive_Num };

  WafArchiveManager();
  // Closes every slot that holds an archive.
  virtual ~WafArchiveManager();

  // Opens nothing: this title reads its resources as plain files.
  void Initialize(const std::string& archivePath);
  waf_archive* getCompressedArchive(E_Archive which) const { return mCompressedArchives[which]; }

  waf_archive* mCompressedArchives[eArchive_Num];

 private:
  WafArchiveManager(const WafArchiveManager&);
  WafArchiveManager& operator=(const WafArchiveManager&);
};

#endif
