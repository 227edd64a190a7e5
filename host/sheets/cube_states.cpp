#include "cube_states.h"

#include <cmath>

#include "korvane/orientor.h"
#include "painted.h"
#include "still_hub.h"
#include "zovhost/cube_dress.h"
#include "zovhost/gl_renderer.h"

namespace zovsheets {

using Korvane::Orientor;
using Korvane::OrientorParameters;
using Korvane::Vector3;
using zovhost::Image;

namespace {

// ---- the states ----

constexpr Vector3 oblique = {1.0, 0.55, -0.8};
// With the compass, in the oblique view.
constexpr CubePoint onRing = {0.69, 1.185};
constexpr CubePoint onSouth = {1.02, 1.08};
constexpr CubePoint near = {0.02, 0.98};  // in the cube's region, on nothing

void AddViews(std::vector<CubeState>& states) {
  struct View {
    const char* name;
    Vector3 from;
    Vector3 up;
  };
  const View views[] = {
      {"front", {1, 0, 0}, {0, 1, 0}},
      {"back", {-1, 0, 0}, {0, 1, 0}},
      {"right", {0, 0, -1}, {0, 1, 0}},
      {"left", {0, 0, 1}, {0, 1, 0}},
      {"top", {0, 1, 0}, {-1, 0, 0}},
      {"bottom", {0, -1, 0}, {1, 0, 0}},
      {"edge", {1, 1, 0}, {0, 1, 0}},
      {"corner", {1, 1, -1}, {0, 1, 0}},
      {"corner-left", {1, 1, 1}, {0, 1, 0}},
      {"oblique", oblique, {0, 1, 0}},
      {"below", {-0.7, -0.5, 0.6}, {0, 1, 0}},
      {"tilted", {0.9, 0.3, 0.5}, {0.3, 1, -0.2}},
      {"rolled", {1, 0, 0}, {0, 0.9848, 0.1736}},
  };
  for (const View& view : views) {
    CubeState state;
    state.from = view.from;
    state.up = view.up;
    state.name = std::string(view.name) + "-rest";
    states.push_back(state);
    state.name = std::string(view.name) + "-hover";
    state.mouse = cubeCentre;
    states.push_back(state);
  }
}

void AddSizes(std::vector<CubeState>& states) {
  for (const int size : {35, 70, 120, 240}) {
    for (const int scale : {1, 2}) {
      CubeState state;
      state.size = size;
      state.scale = scale;
      state.mouse = near;
      state.name = "size-" + std::to_string(size) + "-at-" + std::to_string(scale) + "x";
      states.push_back(state);
    }
  }
  for (const double scale : {1.5, 3.0}) {
    CubeState& state = states.emplace_back();
    state.scale = scale;
    state.mouse = near;
    state.name = scale < 2.0 ? "at-1-and-a-half" : "at-3x";
  }
}

void AddGrounds(std::vector<CubeState>& states) {
  for (const Ground ground : grounds) {
    CubeState state;
    state.ground = ground;
    const std::string name = "on-" + std::string(GetName(ground));
    state.name = name + "-rest";
    states.push_back(state);
    state.name = name + "-near";
    state.mouse = near;
    states.push_back(state);
    state.compass = true;
    state.name = name + "-compass";
    states.push_back(state);
    state.mouse = onRing;
    state.name = name + "-ring";
    states.push_back(state);
    state.mouse = onSouth;
    state.name = name + "-letter";
    states.push_back(state);
  }
}

void AddControls(std::vector<CubeState>& states) {
  const auto add = [&states](const char* name, CubePoint mouse) -> CubeState& {
    CubeState& state = states.emplace_back();
    state.name = name;
    state.mouse = mouse;
    return state;
  };
  add("home-hover", {0.77, 0.125});
  add("menu-hover", {0.125, 0.77});
  add("lock", near).lock = true;
  add("lock-hover", {0.77, 0.125}).lock = true;
  add("roll-left-hover", {0.2, 0.08}).from = {1, 0, 0};
  add("roll-right-hover", {0.08, 0.2}).from = {1, 0, 0};
  add("face-arrow-hover", {0.45, 0.13}).from = {1, 0, 0};
  CubeState& compassLock = add("compass-lock", near);
  compassLock.compass = compassLock.lock = true;
  add("system", {0.98, 0.02}).coordinateSystem = true;
  CubeState& named = add("system-named", {0.45, 0.95});
  named.coordinateSystem = true;
  named.systemName = L"Roof";
  CubeState& front = add("compass-front", near);
  front.compass = true;
  front.from = {1, 0, 0};
  CubeState& below = add("compass-from-below", near);
  below.compass = true;
  below.from = {0.8, -0.5, 0.7};
  CubeState& above = add("compass-from-above", near);
  above.compass = true;
  above.from = {0, 1, 0};
  above.up = {-1, 0, 0};
}

void AddCorners(std::vector<CubeState>& states) {
  const struct {
    const char* name;
    OrientorParameters::Location location;
  } corners[] = {{"at-bottom-right", OrientorParameters::LOCATION_BOTTOM_RIGHT},
                 {"at-top-left", OrientorParameters::LOCATION_TOP_LEFT},
                 {"at-bottom-left", OrientorParameters::LOCATION_BOTTOM_LEFT}};
  for (const auto& corner : corners) {
    CubeState& state = states.emplace_back();
    state.name = corner.name;
    state.location = corner.location;
    state.from = {1, 0, 0};
    state.mouse = cubeCentre;
  }
}

// ---- drawing ----

// The viewport is this many sizes of the cube wide and high.
constexpr double room = 1.35;
constexpr double roomWithCompass = 1.65;

class CubeScene {
 public:
  CubeScene(const CubeState& shown, int viewportSide)
      : state(shown), side(viewportSide), renderer(shown.pack) {}

  bool Create() {
    renderer.SetViewport(0, 0, side, side);
    renderer.SetDisplayScale(state.scale);
    if (!renderer.Create()) return false;
    // The cube's own space is the default one of the scene.
    hub.camera.eye = state.from * 10.0;
    hub.camera.up = state.up;
    hub.SetViewportSize(side, side);
    hub.GetApplicationParameters().lock_to_selection = state.lock;
    SetParameters(cube.GetParameters());
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    cube.SetViewportSize(side, side);
    if (!cube.Create()) return false;
    if (state.systemName != nullptr) cube.SetActiveUCS(state.systemName, false);
    MoveMouse();
    return true;
  }
  ~CubeScene() {
    cube.Destroy();
    renderer.Destroy();
  }
  CubeScene(const CubeScene&) = delete;
  CubeScene& operator=(const CubeScene&) = delete;

  void Draw() { cube.Draw(); }
  bool IsWhole() const { return renderer.GetPlaceholderCount() == 0; }

 private:
  void SetParameters(OrientorParameters& parameters) const {
    const auto pixels = [this](int points) { return static_cast<int>(std::lround(points * state.scale)); };
    zovhost::DressCube(parameters, state.scale);
    parameters.size = OrientorParameters::SIZE_NORMAL;
    parameters.normal_screen_size = pixels(state.size);
    parameters.tiny_screen_size = pixels(35);
    parameters.screen_location = state.location;
    parameters.draw_compass = state.compass;
    parameters.draw_ucs_menu = state.coordinateSystem;
    parameters.orient_to_ucs = state.systemName == nullptr;
  }

  void MoveMouse() {
    const bool left = state.location == OrientorParameters::LOCATION_TOP_LEFT ||
                      state.location == OrientorParameters::LOCATION_BOTTOM_LEFT;
    const bool bottom = state.location == OrientorParameters::LOCATION_BOTTOM_RIGHT ||
                        state.location == OrientorParameters::LOCATION_BOTTOM_LEFT;
    const auto inward = [this](double sizes) {
      return static_cast<int>(std::lround(sizes * state.size * state.scale));
    };
    const int x = inward(state.mouse.x);
    const int y = inward(state.mouse.y);
    cube.SetViewportMousePosition(left ? x : side - x, bottom ? side - y : y);
  }

  const CubeState& state;
  const int side;
  StillHub hub;
  zovhost::GLRenderer renderer;
  Orientor cube;
};

}  // namespace

std::vector<CubeState> GetCubeStates() {
  std::vector<CubeState> states;
  AddViews(states);
  AddSizes(states);
  AddGrounds(states);
  AddControls(states);
  AddCorners(states);
  return states;
}

bool PaintCube(const CubeState& state, Image& image) {
  const double sizes = state.compass ? roomWithCompass : room;
  const int side = static_cast<int>(std::lround(sizes * state.size * state.scale));
  CubeScene scene(state, side);
  return scene.Create() && PaintOnGround([&scene] { scene.Draw(); }, state.ground, side, side, image) &&
         scene.IsWhole();
}

}  // namespace zovsheets
