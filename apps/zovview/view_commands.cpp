#include "view_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

#include "korvane/shot_parameters.h"
#include "zovhost/projection.h"

namespace zovview {

using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using Korvane::ViewAlignShotParameters;
using ProjectionType = CameraParameters::ProjectionType;

namespace {

constexpr double TRAVEL_SECONDS = 0.5;
constexpr double BLEND_SECONDS = 0.4;
constexpr double ZOOM_SECONDS = 0.75;

using enum ViewCommand::Place;

bool IsOrthographic(const ViewTarget& target) { return target.hub.GetView().IsOrthographic(); }
bool IsSnapping(const ViewTarget& target) { return target.hub.GetApplicationParameters().do_snap_orbit; }
bool KeepsUp(const ViewTarget& target) {
  return target.hub.GetApplicationParameters().preserve_orbit_up_direction;
}

constexpr std::array<ViewCommand, 14> COMMANDS = {{
    {Views, "Home", "Home", SDLK_HOME, GoHome},
    {Views, "Isometric", "I", SDLK_i, ShowIsometric},
    {Views, "Fit all", "A", SDLK_a, FitAll},
    {Views, "Fit selection", "F", SDLK_f, FitSelection},
    {Views, "Front", "1", SDLK_1, ShowFront},
    {Views, "Back", "2", SDLK_2, ShowBack},
    {Views, "Left", "3", SDLK_3, ShowLeft},
    {Views, "Right", "4", SDLK_4, ShowRight},
    {Views, "Top", "5", SDLK_5, ShowTop},
    {Views, "Bottom", "6", SDLK_6, ShowBottom},
    {Settings, "Orthographic", "P", SDLK_p, ToggleProjection, IsOrthographic},
    {Settings, "Snap to views", "S", SDLK_s, ToggleSnapping, IsSnapping},
    {Settings, "Keep upright", "U", SDLK_u, ToggleKeepUp, KeepsUp},
    {Nowhere, "Clear the selection", "Esc", SDLK_ESCAPE, ClearSelection},
}};

// From where the directions add up to.
void Show(const ViewTarget& target,
          std::initializer_list<ViewAlignShotParameters::CameraDirection> directions) {
  ViewAlignShotParameters align;
  for (const auto direction : directions) align.directionFlags[direction] = true;
  align.duration = TRAVEL_SECONDS;
  align.fit = true;
  align.keepSceneUp = true;
  target.hub.BeginShot(align);
}

void Toggle(ViewerHub& hub, bool& setting) {
  setting = !setting;
  hub.RequestApplicationUpdate();
}

}  // namespace

std::span<const ViewCommand> GetViewCommands() { return COMMANDS; }

const ViewCommand* FindViewCommand(SDL_Keycode key) {
  const auto* const found = std::find_if(COMMANDS.begin(), COMMANDS.end(),
                                         [key](const ViewCommand& command) { return command.key == key; });
  return found != COMMANDS.end() ? found : nullptr;
}

// ---- views ----

void GoHome(const ViewTarget& target) {
  Korvane::TransitionShotParameters transition;
  transition.targetCamera = target.hub.GetHomeCamera();
  transition.easeEnd = 1.0;
  transition.duration = TRAVEL_SECONDS;
  target.hub.BeginShot(transition);
}

void FitAll(const ViewTarget& target) { target.hub.FitAllToView(); }
void FitSelection(const ViewTarget& target) { target.hub.FitSelectionToView(); }

void ShowFront(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_FRONT}); }
void ShowBack(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_BACK}); }
void ShowLeft(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_SIDE}); }
void ShowRight(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_OPPOSITE_SIDE}); }
void ShowTop(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_TOP}); }
void ShowBottom(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_BOTTOM}); }
void ShowIsometric(const ViewTarget& target) {
  Show(target, {ViewAlignShotParameters::CAMERA_FRONT, ViewAlignShotParameters::CAMERA_OPPOSITE_SIDE,
                ViewAlignShotParameters::CAMERA_TOP});
}

// ---- settings ----

void ClearSelection(const ViewTarget& target) { target.selection.Clear(); }

void ToggleProjection(const ViewTarget& target) {
  CameraParameters camera = target.hub.GetView();
  const bool orthographic = !camera.IsOrthographic();
  const bool halfway = camera.projection_transition > 0.0 && camera.projection_transition < 1.0;
  if (halfway) {  // a shot would begin at an end; the hub's own blend goes on from here
    target.hub.EndShot();
    camera.projection_type = orthographic ? ProjectionType::Orthographic : ProjectionType::Perspective;
    return target.hub.SetView(camera);
  }
  using Parameters = Korvane::ProjectionTransitionShotParameters;
  Parameters blend;
  blend.easeEnd = 1.0;
  blend.duration = BLEND_SECONDS;
  blend.targetProjection =
      orthographic ? Parameters::PROJECTION_ORTHOGRAPHIC : Parameters::PROJECTION_PERSPECTIVE;
  target.hub.BeginShot(blend);
}

void ToggleSnapping(const ViewTarget& target) {
  Toggle(target.hub, target.hub.GetApplicationParameters().do_snap_orbit);
}

void ToggleKeepUp(const ViewTarget& target) {
  Toggle(target.hub, target.hub.GetApplicationParameters().preserve_orbit_up_direction);
}

// ---- moves to a place of the view ----

bool CentreOnPixel(const ViewTarget& target, int x, int y) {
  const zovhost::Scene* const scene = target.selection.GetScene();
  zovhost::Scene::Hit hit;
  if (scene == nullptr || !FindHit(target.hub, *scene, x, y, hit)) return false;
  Korvane::CenterShotParameters centre;
  centre.point = hit.point;
  centre.easeEnd = 1.0;
  centre.duration = TRAVEL_SECONDS;
  return target.hub.BeginShot(centre);
}

bool ZoomIntoRectangle(const ViewTarget& target, const Korvane::Box2& rectangle) {
  ViewerHub& hub = target.hub;
  const Vector2 size = rectangle.halfExtent * 2.0;
  if (!(size.x > 0.0) || !(size.y > 0.0)) return false;
  const double magnification = std::min(hub.GetViewportWidth() / size.x, hub.GetViewportHeight() / size.y);

  const zovhost::Projection projection = hub.GetProjection();
  const zovhost::CameraFrame& frame = projection.GetFrame();
  const Vector2& middle = rectangle.center;
  const zovhost::Scene* const scene = target.selection.GetScene();
  zovhost::Scene::Hit hit;
  const bool met =
      scene != nullptr && FindHit(hub, *scene, static_cast<int>(middle.x), static_cast<int>(middle.y), hit);
  const double depth = met ? (hit.point - frame.eye).Dot(frame.forward) : frame.distance;

  // The pivot is where the shot ends its line of sight.
  CameraParameters camera = hub.GetView();
  if (!projection.PixelToWorld(middle, depth, hub.GetViewportWidth(), hub.GetViewportHeight(), camera.pivot))
    return false;
  hub.EndShot();
  hub.SetView(camera);

  const Vector3 toPivot = camera.pivot - frame.eye;
  Korvane::ZoomRectShotParameters zoom;
  zoom.duration = ZOOM_SECONDS;
  zoom.sidewaysOffset = toPivot.Dot(frame.right);
  zoom.upwardOffset = toPivot.Dot(frame.up);
  zoom.forwardOffset = depth * (1.0 - 1.0 / magnification);
  return hub.BeginShot(zoom);
}

}  // namespace zovview
