#pragma once
// The panel beside the device in the simulator's window: the state of the outside
// world and of the device, a toggle for each action that has a key (with the key
// shown), and a status line for the last file written. It is the host's, drawn
// next to the device and never on its screen.
#include <cstdint>
#include <string>
#include <vector>

struct _TTF_Font;

class DevicePanel {
 public:
  // What a click on the panel asks for; each has a key as well.
  enum Action { None, Microphone, Rotate, Battery, Suspend, Screenshot };

  struct State {
    bool micPresent = true;
    int orientation = 0;
    bool powerLow = false;
    bool suspended = false;
    uint32_t freeBytes = 0;      // what the disk reports to the title
    uint64_t deviceMicros = 0;   // the device clock
    uint64_t frameMicros = 0;    // host time the last frame took
    uint64_t frames = 0;
    std::string clock;           // "real time" or "frame clock"
    std::string status;          // the last screenshot or movie written
    std::string recording;       // what the session is being written to
  };

  // Window pixels of the panel's width; its height is the window's.
  static constexpr int kWidth = 320;
  // Where the toggles are: the first's top, and the step from one to the next,
  // in panel pixels; each is kToggleHeight high and spans the panel but for a
  // margin of kMargin.
  static constexpr int kFirstToggle = 44;
  static constexpr int kToggleStep = 40;
  static constexpr int kToggleHeight = 32;
  static constexpr int kMargin = 12;

  DevicePanel() = default;
  ~DevicePanel();
  DevicePanel(const DevicePanel&) = delete;
  DevicePanel& operator=(const DevicePanel&) = delete;

  // Loads the panel's font; false, with a message, when there is none.
  bool Open(int height, std::string* error);
  // Draws the state and hands the picture to the window; false when nothing
  // changed since the last time.
  bool Show(const State& state);
  // The toggle at panel pixel (x, y).
  static Action At(int x, int y);

 private:
  void Text(const std::string& text, int x, int y, uint32_t colour, bool bold = false);
  void Fill(int x, int y, int w, int h, uint32_t colour);

  _TTF_Font* mFont = nullptr;
  _TTF_Font* mBold = nullptr;
  int mHeight = 0;
  std::vector<uint32_t> mPixels;
  std::string mShown;  // the text of what is drawn, to draw only changes
};
