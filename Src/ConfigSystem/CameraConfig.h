#ifndef SRC_CONFIGSYSTEM_CAMERACONFIG_H
#define SRC_CONFIGSYSTEM_CAMERACONFIG_H
// The title's one configuration tree, "res/CamCfg.xml".
#include "Base/singleton.h"
#include "ConfigSystem/ConfigFile.h"

class CameraConfig : public ConfigFile, public Singleton<CameraConfig, Tag_Singleton_Manual> {
 public:
  bool LoadConfig();
  void ReleaseConfig();
};

#endif
