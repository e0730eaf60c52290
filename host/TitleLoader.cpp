#include "TitleLoader.h"

#include <dirent.h>
#include <dlfcn.h>

#include <vector>

namespace {
typedef boost::shared_ptr<CAppInterface> (*CreateAppFunc)(void*);

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}
}  // namespace

TitleLoader::~TitleLoader() {
  // The plug-in stays mapped: static objects of the title may still be referenced
  // by the platform's registries until the process ends.
}

bool TitleLoader::Load(const std::string& folder, std::string* error) {
  std::string base = folder;
  if (!base.empty() && base.back() != '/') base += '/';
  std::vector<std::string> plugins;
  DIR* dir = opendir(base.c_str());
  if (dir == nullptr) {
    *error = "cannot open the title folder " + folder;
    return false;
  }
  bool hasRecorder = false;
  while (dirent* entry = readdir(dir)) {
    const std::string name = entry->d_name;
    if (name == "libMicrophoneWidget.so") hasRecorder = true;
    if (EndsWith(name, ".so")) plugins.push_back(name);
  }
  closedir(dir);
  if (hasRecorder) {
    mPath = base + "libMicrophoneWidget.so";
  } else if (plugins.size() == 1) {
    mPath = base + plugins[0];
  } else if (plugins.empty()) {
    *error = "no title plug-in (.so) in " + folder;
    return false;
  } else {
    *error = "several plug-ins in " + folder + " and none is libMicrophoneWidget.so";
    return false;
  }

  mHandle = dlopen(mPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (mHandle == nullptr) {
    *error = std::string("cannot load ") + mPath + ": " + dlerror();
    return false;
  }
  mCreateApp = dlsym(mHandle, "CreateApp");
  if (mCreateApp == nullptr) {
    *error = mPath + " has no CreateApp entry point";
    return false;
  }
  return true;
}

boost::shared_ptr<CAppInterface> TitleLoader::CreateApp(void* params) const {
  return reinterpret_cast<CreateAppFunc>(mCreateApp)(params);
}
