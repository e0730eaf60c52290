#include "ConfigSystem/CameraConfig.h"

bool CameraConfig::LoadConfig() { return load("res/CamCfg.xml"); }

void CameraConfig::ReleaseConfig() { release(); }
