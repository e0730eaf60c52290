#ifndef SRC_EXTERNAL_WAF_WAFARCHIVEMANAGER_H
#define SRC_EXTERNAL_WAF_WAFARCHIVEMANAGER_H
// Holds the system's WAF archive handles. The archive reader itself is not built
// yet; no title of this framework opens an archive so far.
#include "Base/singleton.h"

struct waf_archive;

class WafArchiveManager : public Singleton<WafArchiveManager, Tag_Singleton_Manual> {
 public:
  enum E_Archive { eArchive_0, eArchive_1, eArchive_2, eArchive_Num };

  WafArchiveManager() {
    for (int i = 0; i < eArchive_Num; ++i) mArchives[i] = 0;
  }
  virtual ~WafArchiveManager() {}

  // Does nothing on this device.
  void Initialize(const char* /*archivePath*/) {}
  waf_archive* GetArchive(E_Archive which) const { return mArchives[which]; }

 private:
  waf_archive* mArchives[eArchive_Num];
};

#endif
