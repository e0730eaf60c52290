#include "ModFuzzSupport.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <fstream>

#include "ConfigSystem/CameraConfig.h"
#include "FuzzSupport.h"
#include "MediaCenter/MicroMods.h"
#include "solva/Device.h"
#include "solva/Downloads.h"
#include "solva/FaultInjection.h"

namespace fuzz {

namespace {

const char kConfig[] =
    "<Cfg><Node name=\"Archive\" nodeType=\"childNode\"><P nodeType=\"nodeProperty\">"
    "<Property name=\"ArchiveDataFileName\" type=\"string\" value=\"MicroModMarks.bin\"/></P></Node></Cfg>";

struct Device {
  Device() {
    const std::string base = ScratchFolder() + "mods";
    if (!solva::SetDeviceRoot(base)) abort();
    // The marks are written at every input: forcing them to the disk is not
    // what is fuzzed, and would slow every other program on the machine.
    solva::SetSyncWrites(false);
    std::ofstream(base + "/CamCfg.xml") << kConfig;
    CameraConfig::sCreate();
    if (!CameraConfig::sInstance().load((base + "/CamCfg.xml").c_str())) abort();
    // One mod folder, with the places every kind looks into.
    const std::string source = base + "/mod";
    solva::SetCurrentPlayer(1);
    if (mkdir(source.c_str(), 0755) != 0 || mkdir((source + "/Musics").c_str(), 0755) != 0) abort();
    std::ofstream(source + "/meta.json") << "{\"packageId\": \"pkg.mod\", \"tags\": {\"ModKitType\": \"Wigglo\"}}";
    std::ofstream(source + "/Musics/song.wav") << "song";
    std::ofstream(source + "/MicroModsConfig.xml") << "<MicroMods><BrushNumber>1</BrushNumber></MicroMods>";
    std::string installed;
    if (!solva::InstallMicroMod(1, source, nullptr, &installed)) abort();
    folder = installed + "/";
    archive.Initialize(0);
  }
  ZvArchive archive;
  std::string folder;
};

Device& TheDevice() {
  static Device* device = new Device();
  return *device;
}

}  // namespace

ZvArchive& ModArchive() { return TheDevice().archive; }
std::string ModFolder() { return TheDevice().folder; }

void LoadAndForgetMods() {
  ZvArchive& archive = ModArchive();
  archive.TryToLoadMdl();
  for (MicroMod* mod : archive.mMicroMods) delete mod;
  archive.mMicroMods.clear();
}

}  // namespace fuzz

// The whole machine's sync, which WriteMdlInformation calls after each write: the
// same reason.
extern "C" void sync(void) {}
