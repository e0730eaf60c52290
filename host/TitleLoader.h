#pragma once
// Loads a title plug-in and makes its application object, as the device's
// application manager does: dlopen, then the one entry point CreateApp.
#include <boost/shared_ptr.hpp>
#include <string>

#include "CAppInterface.h"

class TitleLoader {
 public:
  TitleLoader() = default;
  ~TitleLoader();
  TitleLoader(const TitleLoader&) = delete;
  TitleLoader& operator=(const TitleLoader&) = delete;

  // Finds the plug-in in `folder`: libMicrophoneWidget.so, or else the one .so
  // there. False, with a message, when there is none, several, or it won't load.
  bool Load(const std::string& folder, std::string* error);
  const std::string& PluginPath() const { return mPath; }

  // CreateApp(params); `params` is null or a pointer to a shared pointer to the
  // launch parameters.
  boost::shared_ptr<CAppInterface> CreateApp(void* params) const;

 private:
  void* mHandle = nullptr;
  void* mCreateApp = nullptr;
  std::string mPath;
};
