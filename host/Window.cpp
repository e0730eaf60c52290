#include "Window.h"

#include <SDL2/SDL.h>

#include <cstdio>

#include "solva/Capture.h"
#include "solva/Display.h"
#include "solva/Events.h"

namespace {

// Keys for the device's buttons (mask bits).
uint32_t ButtonOfKey(SDL_Keycode key) {
  switch (key) {
    case SDLK_UP: return 0x1;
    case SDLK_DOWN: return 0x2;
    case SDLK_RIGHT: return 0x4;
    case SDLK_LEFT: return 0x8;
    case SDLK_RETURN:
    case SDLK_SPACE: return 0x10;  // A
    case SDLK_ESCAPE:
    case SDLK_BACKSPACE: return 0x20;  // B, "back"
    case SDLK_q: return 0x40;          // left shoulder
    case SDLK_w: return 0x80;          // right shoulder
    case SDLK_TAB: return 0x100;       // menu
    case SDLK_h: return 0x200;         // hint
    case SDLK_p: return 0x10000;       // pause
    default: return 0;
  }
}

}  // namespace

const char* WindowInput::KeyHelp() {
  return "arrows: direction buttons; Enter/Space: A; Escape/Backspace: back; Q/W: shoulders; Tab: menu;\n"
         "H: hint; P: pause button; R: turn the device; M: unplug/plug the microphone; S: suspend/resume;\n"
         "F12: screenshot; closing the window ends the title";
}

void WindowInput::Poll(Actions* actions) {
  SDL_Event event;
  while (SDL_PollEvent(&event)) {
    int x = 0, y = 0;
    switch (event.type) {
      case SDL_QUIT:
        actions->quit = true;
        break;
      case SDL_WINDOWEVENT:
        if (event.window.event == SDL_WINDOWEVENT_EXPOSED) solva::PresentScreen();
        break;
      case SDL_MOUSEBUTTONDOWN:
        if (event.button.button == SDL_BUTTON_LEFT && solva::WindowToScreen(event.button.x, event.button.y, &x, &y)) {
          mTouching = true;
          solva::QueueTouch(true, x, y);
        }
        break;
      case SDL_MOUSEMOTION:
        if (mTouching && solva::WindowToScreen(event.motion.x, event.motion.y, &x, &y)) solva::QueueTouch(true, x, y);
        break;
      case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT && mTouching) {
          mTouching = false;
          solva::WindowToScreen(event.button.x, event.button.y, &x, &y);
          solva::QueueTouch(false, x, y);
        }
        break;
      case SDL_KEYDOWN:
      case SDL_KEYUP: {
        if (event.key.repeat) break;
        const bool down = event.type == SDL_KEYDOWN;
        const SDL_Keycode key = event.key.keysym.sym;
        if (const uint32_t bit = ButtonOfKey(key)) {
          mButtons = down ? (mButtons | bit) : (mButtons & ~bit);
          solva::QueueButtons(mButtons);
        } else if (down && key == SDLK_r) {
          mOrientation = (mOrientation + 1) % 4;
          printf("solva-sim: the device turns to orientation %d\n", mOrientation);
          solva::QueueOrientation(mOrientation);
        } else if (down && key == SDLK_m) {
          mMicPresent = !mMicPresent;
          printf("solva-sim: microphone %s\n", mMicPresent ? "plugged in" : "unplugged");
          solva::QueueMicrophonePlugged(mMicPresent);
        } else if (down && key == SDLK_s) {
          actions->toggleSuspend = true;
        } else if (down && key == SDLK_F12) {
          actions->screenshot = true;
        }
        break;
      }
      default:
        break;
    }
  }
}
