#include "zovhost/game_controller_source.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "korvane/interval_timer.h"

namespace zovhost {

namespace {

constexpr double FULL_DEFLECTION = 400.0;
// Seconds after which one at rest is looked after again, and after which one is looked for.
constexpr double PERIOD = 0.016;
constexpr double LATE_PERIOD = 1.0;

constexpr std::array<SDL_GameControllerAxis, SIX_AXIS_COUNT> AXES = {
    SDL_CONTROLLER_AXIS_LEFTX,  SDL_CONTROLLER_AXIS_LEFTY,       SDL_CONTROLLER_AXIS_RIGHTX,
    SDL_CONTROLLER_AXIS_RIGHTY, SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT};

struct ControllerDeleter {
  void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
};
using Controller = std::unique_ptr<SDL_GameController, ControllerDeleter>;

// One step further to the negative side than to the other.
double ReadAxis(SDL_GameController* controller, SDL_GameControllerAxis axis) {
  const int value = std::max<int>(SDL_GameControllerGetAxis(controller, axis), -SDL_JOYSTICK_AXIS_MAX);
  return value * FULL_DEFLECTION / SDL_JOYSTICK_AXIS_MAX;
}

Controller OpenFirst() {
  for (int i = 0; i < SDL_NumJoysticks(); ++i) {
    if (SDL_IsGameController(i) != SDL_TRUE) continue;
    if (Controller opened{SDL_GameControllerOpen(i)}) return opened;
  }
  return nullptr;
}

bool IsOfController(Uint32 type) {
  return type >= SDL_CONTROLLERAXISMOTION && type <= SDL_CONTROLLERDEVICEREMAPPED;
}

}  // namespace

class GameControllerSource::Impl : private Korvane::IntervalTimer {
 public:
  Impl() {
    // Else a window that waits would look after a controller a thousand times a second.
    SDL_SetHintWithPriority(SDL_HINT_AUTO_UPDATE_JOYSTICKS, "0", SDL_HINT_DEFAULT);
    // The focus is looked after by whoever asks for the state.
    SDL_SetHintWithPriority(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1", SDL_HINT_DEFAULT);
    ready = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
    if (!ready) return;
    SDL_AddEventWatch(&Impl::OnEvent, this);
    Start(LATE_PERIOD, true);
  }
  ~Impl() override {
    if (!ready) return;
    SDL_DelEventWatch(&Impl::OnEvent, this);
    controller.reset();
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  bool HasController() const { return controller != nullptr; }

  // False without one.
  bool Update() {
    woken = false;
    if (!ready) return false;
    SDL_GameControllerUpdate();
    if (controller != nullptr && SDL_GameControllerGetAttached(controller.get()) == SDL_TRUE) return true;
    const bool had = HasController();
    controller.reset();
    controller = OpenFirst();
    if (HasController() != had) Start(HasController() ? PERIOD : LATE_PERIOD, true);
    return HasController();
  }

  SixAxes GetAxes() const {
    SixAxes axes;
    std::transform(AXES.begin(), AXES.end(), axes.begin(),
                   [this](SDL_GameControllerAxis axis) { return ReadAxis(controller.get(), axis); });
    return axes;
  }

  Buttons GetHeld() const {
    Buttons held;
    for (int i = 0; i < SDL_CONTROLLER_BUTTON_MAX; ++i) {
      const auto button = static_cast<SDL_GameControllerButton>(i);
      held[static_cast<std::size_t>(i)] = SDL_GameControllerGetButton(controller.get(), button) != 0;
    }
    return held;
  }

  Buttons TakePressed() { return std::exchange(pressed, {}); }

  std::function<void()> wake;

 private:
  // What has happened comes to OnEvent.
  void Timeout() override { SDL_GameControllerUpdate(); }

  static int OnEvent(void* self, SDL_Event* event) {
    if (IsOfController(event->type)) static_cast<Impl*>(self)->Handle(*event);
    return 0;
  }

  void Handle(const SDL_Event& event) {
    if (event.type == SDL_CONTROLLERBUTTONDOWN && IsMine(event.cbutton.which) &&
        event.cbutton.button < pressed.size()) {
      pressed[event.cbutton.button] = true;
    }
    if (!std::exchange(woken, true) && wake) wake();
  }

  bool IsMine(SDL_JoystickID which) const {
    return controller != nullptr &&
           SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(controller.get())) == which;
  }

  bool ready = false;
  bool woken = false;
  Controller controller;
  Buttons pressed;
};

GameControllerSource::GameControllerSource() : impl(std::make_unique<Impl>()) {}
GameControllerSource::~GameControllerSource() = default;

void GameControllerSource::Poll() {
  if (!impl->Update()) return Rest();
  SetAxes(impl->GetAxes());
  SetButtons(impl->GetHeld(), impl->TakePressed());
}

bool GameControllerSource::HasDevice() const { return impl->HasController(); }
void GameControllerSource::SetWake(std::function<void()> wake) { impl->wake = std::move(wake); }

}  // namespace zovhost
