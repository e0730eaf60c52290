#include "DevicePanel.h"

#include <SDL2/SDL_ttf.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "solva/Display.h"

namespace {

const char kFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char kBoldFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
const int kFontSize = 13;

const uint32_t kBackground = 0xFF2B2F36u;  // the device's body
const uint32_t kToggle = 0xFF3B424Du;
const uint32_t kToggleOn = 0xFF6B4A1Eu;  // a toggle away from its usual state
const uint32_t kText = 0xFFE8EAEDu;
const uint32_t kDim = 0xFF9AA0A6u;
const uint32_t kKey = 0xFFF2B84Bu;

const char* const kOrientations[] = {"0, horizontal", "1, vertical", "2, horizontal upside down",
                                     "3, vertical upside down"};

std::string Thousands(uint64_t value) {
  std::string digits = std::to_string(value);
  for (int at = int(digits.size()) - 3; at > 0; at -= 3) digits.insert(size_t(at), ",");
  return digits;
}

}  // namespace

DevicePanel::~DevicePanel() {
  if (mFont) TTF_CloseFont(mFont);
  if (mBold) TTF_CloseFont(mBold);
  if (mFont || mBold) TTF_Quit();
}

bool DevicePanel::Open(int height, std::string* error) {
  if (TTF_Init() != 0) {
    *error = std::string("no text for the panel: ") + TTF_GetError();
    return false;
  }
  mFont = TTF_OpenFont(kFont, kFontSize);
  mBold = TTF_OpenFont(kBoldFont, kFontSize);
  if (!mFont || !mBold) {
    *error = std::string("no font for the panel: ") + TTF_GetError();
    return false;
  }
  mHeight = height;
  mPixels.assign(size_t(kWidth) * size_t(height), kBackground);
  return true;
}

void DevicePanel::Fill(int x, int y, int w, int h, uint32_t colour) {
  for (int row = std::max(0, y); row < std::min(mHeight, y + h); ++row) {
    for (int col = std::max(0, x); col < std::min(kWidth, x + w); ++col) mPixels[size_t(row) * kWidth + col] = colour;
  }
}

void DevicePanel::Text(const std::string& text, int x, int y, uint32_t colour, bool bold) {
  if (text.empty()) return;
  const SDL_Color fg = {Uint8(colour >> 16), Uint8(colour >> 8), Uint8(colour), 255};
  SDL_Surface* glyphs = TTF_RenderUTF8_Blended(bold ? mBold : mFont, text.c_str(), fg);
  if (!glyphs) return;
  SDL_Surface* argb = SDL_ConvertSurfaceFormat(glyphs, SDL_PIXELFORMAT_ARGB8888, 0);
  SDL_FreeSurface(glyphs);
  if (!argb) return;
  // Laid over the background by the glyphs' coverage.
  for (int row = 0; row < argb->h && y + row < mHeight; ++row) {
    const uint32_t* src = reinterpret_cast<const uint32_t*>(static_cast<const uint8_t*>(argb->pixels) + row * argb->pitch);
    for (int col = 0; col < argb->w && x + col < kWidth; ++col) {
      if (y + row < 0 || x + col < 0) continue;
      uint32_t& dst = mPixels[size_t(y + row) * kWidth + size_t(x + col)];
      const uint32_t a = src[col] >> 24;
      uint32_t out = 0xFF000000u;
      for (int shift = 0; shift < 24; shift += 8) {
        const uint32_t s = (src[col] >> shift) & 0xFF;
        const uint32_t d = (dst >> shift) & 0xFF;
        out |= ((s * a + d * (255 - a) + 127) / 255) << shift;
      }
      dst = out;
    }
  }
  SDL_FreeSurface(argb);
}

DevicePanel::Action DevicePanel::At(int x, int y) {
  if (x < kMargin || x >= kWidth - kMargin || y < kFirstToggle) return None;
  const int index = (y - kFirstToggle) / kToggleStep;
  if ((y - kFirstToggle) % kToggleStep >= kToggleHeight || index >= int(Screenshot)) return None;
  return Action(index + 1);
}

bool DevicePanel::Show(const State& state) {
  if (!mFont) return false;
  // The device time to a tenth of a second and the frame time to a tenth of a
  // millisecond: finer changes are not worth a new picture.
  char clock[64], frame[64];
  snprintf(clock, sizeof clock, "%.1f s (%s)", double(state.deviceMicros / 100000) / 10.0, state.clock.c_str());
  snprintf(frame, sizeof frame, "%.1f ms, frame %" PRIu64, double(state.frameMicros / 100) / 10.0, state.frames);
  const struct {
    const char* label;
    std::string value;
    const char* key;
    bool on;
  } toggles[] = {
      {"Microphone", state.micPresent ? "plugged in" : "unplugged", "M", !state.micPresent},
      {"Orientation", kOrientations[state.orientation & 3], "R", state.orientation != 0},
      {"Battery", state.powerLow ? "low" : "ok", "L", state.powerLow},
      {"Title", state.suspended ? "suspended" : "running", "S", state.suspended},
      {"Screenshot", "", "F12", false},
  };
  std::string shown;
  for (const auto& toggle : toggles) shown += toggle.value + "|";
  shown += std::to_string(state.freeBytes) + "|" + clock + "|" + frame + "|" + state.status + "|" + state.recording;
  if (shown == mShown) return false;
  mShown = shown;

  std::fill(mPixels.begin(), mPixels.end(), kBackground);
  Text("Device", kMargin, 14, kText, true);
  for (int i = 0; i < 5; ++i) {
    const int top = kFirstToggle + i * kToggleStep;
    Fill(kMargin, top, kWidth - 2 * kMargin, kToggleHeight, toggles[i].on ? kToggleOn : kToggle);
    Text(toggles[i].label, kMargin + 10, top + 8, kText, true);
    Text(toggles[i].value, kMargin + 110, top + 8, kText);
    Text(toggles[i].key, kWidth - kMargin - 36, top + 8, kKey, true);
  }
  int y = kFirstToggle + 5 * kToggleStep + 8;
  const struct {
    const char* label;
    std::string value;
  } lines[] = {
      {"Free bytes", Thousands(state.freeBytes)},
      {"Device time", clock},
      {"Frame time", frame},
  };
  for (const auto& line : lines) {
    Text(line.label, kMargin, y, kDim);
    Text(line.value, kMargin + 98, y, kText);
    y += 22;
  }
  y += 8;
  Text(state.recording, kMargin, y, kDim);
  Text(state.status, kMargin, y + 22, kText);
  const char* const keys[] = {"Keys: arrows; Enter/Space A; Esc back;", "Q/W shoulders; Tab menu; H hint; P pause"};
  Text(keys[0], kMargin, mHeight - 50, kDim);
  Text(keys[1], kMargin, mHeight - 30, kDim);
  solva::SetWindowPanel(mPixels.data(), kWidth, mHeight);
  return true;
}
