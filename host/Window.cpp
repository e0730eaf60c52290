#include "Window.h"

#include <SDL2/SDL.h>

#include <cstdio>

#include "solva/Display.h"

namespace {

// Keys for the device's buttons, as script button indices.
int ButtonOfKey(SDL_Keycode key) {
  switch (key) {
    case SDLK_UP: return 0;
    case SDLK_DOWN: return 1;
    case SDLK_RIGHT: return 2;
    case SDLK_LEFT: return 3;
    case SDLK_RETURN:
    case SDLK_SPACE: return 4;  // A
    case SDLK_ESCAPE:
    case SDLK_BACKSPACE: return 5;  // B, "back"
    case SDLK_q: return 6;          // left shoulder
    case SDLK_w: return 7;          // right shoulder
    case SDLK_TAB: return 12;       // menu
    case SDLK_h: return 13;         // hint
    case SDLK_p: return 16;         // pause
    default: return -1;
  }
}

// Keys for the panel's toggles.
DevicePanel::Action ActionOfKey(SDL_Keycode key) {
  switch (key) {
    case SDLK_m: return DevicePanel::Microphone;
    case SDLK_r: return DevicePanel::Rotate;
    case SDLK_l: return DevicePanel::Battery;
    case SDLK_s: return DevicePanel::Suspend;
    case SDLK_F12: return DevicePanel::Screenshot;
    default: return DevicePanel::None;
  }
}

ScriptCommand Command(ScriptCommand::Kind kind, int64_t number = 0) {
  ScriptCommand command;
  command.kind = kind;
  command.number = number;
  return command;
}

ScriptCommand Touch(ScriptCommand::Kind kind, int x, int y) {
  ScriptCommand command = Command(kind);
  command.x = x;
  command.y = y;
  return command;
}

}  // namespace

const char* WindowInput::KeyHelp() {
  return "arrows: direction buttons; Enter/Space: A; Escape/Backspace: back; Q/W: shoulders; Tab: menu;\n"
         "H: hint; P: pause button; R: turn the device; M: unplug/plug the microphone; L: low battery/ok;\n"
         "S: suspend/resume; F12: screenshot; closing the window ends the title";
}

bool WindowInput::OpenPanel(std::string* error) {
  int width = 0, height = 0;
  solva::WindowPanelSize(&width, &height);
  if (width != DevicePanel::kWidth) {
    *error = "the window has no room for the panel";
    return false;
  }
  return mPanel.Open(height, error);
}

void WindowInput::Toggle(DevicePanel::Action action, World* world, std::vector<ScriptCommand>* commands,
                         Actions* actions) {
  switch (action) {
    case DevicePanel::Suspend:
      actions->toggleSuspend = true;
      return;
    case DevicePanel::Screenshot:
      actions->screenshot = true;
      return;
    default:
      break;
  }
  if (world->suspended) return;
  switch (action) {
    case DevicePanel::Rotate:
      world->orientation = (world->orientation + 1) % 4;
      printf("solva-sim: the device turns to orientation %d\n", world->orientation);
      commands->push_back(Command(ScriptCommand::Rotate, world->orientation));
      break;
    case DevicePanel::Microphone:
      world->micPresent = !world->micPresent;
      printf("solva-sim: microphone %s\n", world->micPresent ? "plugged in" : "unplugged");
      commands->push_back(Command(world->micPresent ? ScriptCommand::MicPlug : ScriptCommand::MicUnplug));
      break;
    case DevicePanel::Battery:
      world->powerLow = !world->powerLow;
      printf("solva-sim: battery %s\n", world->powerLow ? "low" : "ok");
      commands->push_back(Command(world->powerLow ? ScriptCommand::PowerLow : ScriptCommand::PowerOk));
      break;
    default:
      break;
  }
}

void WindowInput::Poll(const World& now, std::vector<ScriptCommand>* commands, Actions* actions) {
  World world = now;  // as this poll's commands will leave it
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
        if (event.button.button != SDL_BUTTON_LEFT) break;
        if (solva::WindowToPanel(event.button.x, event.button.y, &x, &y)) {
          Toggle(DevicePanel::At(x, y), &world, commands, actions);
        } else if (!world.suspended && solva::WindowToScreen(event.button.x, event.button.y, &x, &y)) {
          mTouching = true;
          commands->push_back(Touch(ScriptCommand::Down, x, y));
        }
        break;
      case SDL_MOUSEMOTION:
        if (mTouching && !world.suspended && solva::WindowToScreen(event.motion.x, event.motion.y, &x, &y)) {
          commands->push_back(Touch(ScriptCommand::Move, x, y));
        }
        break;
      case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT && mTouching && !world.suspended) {
          mTouching = false;
          solva::WindowToScreen(event.button.x, event.button.y, &x, &y);
          commands->push_back(Touch(ScriptCommand::Up, x, y));
        }
        break;
      case SDL_KEYDOWN:
      case SDL_KEYUP: {
        if (event.key.repeat) break;
        const bool down = event.type == SDL_KEYDOWN;
        const SDL_Keycode key = event.key.keysym.sym;
        const int button = ButtonOfKey(key);
        if (button >= 0) {
          const uint32_t bit = Script::ButtonMask(button);
          if (world.suspended || down == ((mButtons & bit) != 0)) break;
          mButtons = down ? (mButtons | bit) : (mButtons & ~bit);
          commands->push_back(Command(down ? ScriptCommand::Press : ScriptCommand::Release, button));
        } else if (down) {
          Toggle(ActionOfKey(key), &world, commands, actions);
        }
        break;
      }
      default:
        break;
    }
  }
}
