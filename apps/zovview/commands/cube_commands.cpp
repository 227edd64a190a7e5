#include "commands/cube_commands.h"

#include <array>
#include <cstddef>
#include <string>

#include "korvane/orientor.h"
#include "korvane/shot_parameters.h"
#include "korvane/view_manager.h"
#include "zovhost/phrases.h"
#include "zovhost/scene.h"
#include "zovhost/start_camera.h"
#include "zovhost/wide_text.h"

namespace zovview {

using Korvane::CameraParameters;
using Korvane::OrientorParameters;
using Korvane::Vector3;
using ProjectionType = CameraParameters::ProjectionType;

namespace {

constexpr double BLEND_SECONDS = 0.4;

// As the label below the cube shows them.
constexpr std::array<const char*, 3> COORDINATE_NAMES = {"Model", "Y up", "Z up"};

std::wstring NameCoordinates(const zovhost::Phrases& phrases, CoordinateSystem system) {
  return zovhost::Utf8ToWide(phrases.SayPlain(COORDINATE_NAMES[static_cast<std::size_t>(system)]));
}

void Toggle(const ViewTarget& target, bool& setting) {
  setting = !setting;
  target.manager.Refresh();
  target.hub.RequestApplicationUpdate();
}

void SetCoordinates(const ViewTarget& target, CoordinateSystem system, const Vector3& up) {
  target.hub.EndShot();
  zovhost::SetUpDirection(target.hub, up);
  target.cube.SetActiveUCS(NameCoordinates(zovhost::GetPhrases(), system).c_str(), true);
  target.hub.RequestApplicationUpdate();
}

// Of the change at the faces, which goes by itself.
void WriteProjection(const ViewTarget& target, ProjectionType type, bool orthographicFaces) {
  CameraParameters camera = target.hub.GetView();
  camera.projection_type = type;
  camera.perspective_with_ortho = orthographicFaces;
  target.hub.SetView(camera);
}

// A shot would begin at an end, so the hub's own blend takes over a change that is under way.
bool BeginBlend(const ViewTarget& target, bool orthographic) {
  const CameraParameters& camera = target.hub.GetView();
  const bool halfway = camera.projection_transition > 0.0 && camera.projection_transition < 1.0;
  if (halfway) {
    WriteProjection(target, orthographic ? ProjectionType::Orthographic : ProjectionType::Perspective, false);
    return true;
  }
  WriteProjection(target, camera.projection_type, false);
  using Parameters = Korvane::ProjectionTransitionShotParameters;
  Parameters blend;
  blend.easeEnd = 1.0;
  blend.duration = BLEND_SECONDS;
  blend.targetProjection =
      orthographic ? Parameters::PROJECTION_ORTHOGRAPHIC : Parameters::PROJECTION_PERSPECTIVE;
  return target.hub.BeginShot(blend);
}

}  // namespace

// ---- home ----

void GoHomeByCube(const ViewTarget& target) { target.cube.GoToHomeView(); }
void MakeHome(const ViewTarget& target) { target.hub.GetHomeCamera() = target.hub.GetView(); }

// ---- the projection ----

void SetOrthographic(const ViewTarget& target, bool orthographic) {
  Travel(target, [&](Korvane::CameraOperations&) { return BeginBlend(target, orthographic); });
}

void UsePerspective(const ViewTarget& target) { SetOrthographic(target, false); }
void UseOrthographic(const ViewTarget& target) { SetOrthographic(target, true); }

void UseOrthographicFaces(const ViewTarget& target) {
  Travel(target, [&](Korvane::CameraOperations&) {
    WriteProjection(target, target.hub.GetView().projection_type, true);
    return true;
  });
}

bool HasOrthographicFaces(const ViewTarget& target) { return target.hub.GetView().perspective_with_ortho; }
bool IsPlainPerspective(const ViewTarget& target) {
  return !HasOrthographicFaces(target) && !target.hub.GetView().IsOrthographic();
}
bool IsPlainOrthographic(const ViewTarget& target) {
  return !HasOrthographicFaces(target) && target.hub.GetView().IsOrthographic();
}

// ---- the cube's settings ----

const OrientorParameters& GetCubeParameters(const ViewTarget& target) { return target.cube.GetParameters(); }

void ToggleLock(const ViewTarget& target) {
  target.cube.LockToCurrentSelection(true);
  target.hub.RequestApplicationUpdate();
}
bool IsLocked(const ViewTarget& target) { return target.hub.GetApplicationParameters().lock_to_selection; }

void ToggleFitOnClick(const ViewTarget& target) {
  Toggle(target, target.cube.GetParameters().zoom_to_fit_scene);
}
bool FitsOnClick(const ViewTarget& target) { return GetCubeParameters(target).zoom_to_fit_scene; }

void ToggleCompass(const ViewTarget& target) { Toggle(target, target.cube.GetParameters().draw_compass); }
bool HasCompass(const ViewTarget& target) { return GetCubeParameters(target).draw_compass; }

void ToggleCoordinates(const ViewTarget& target) {
  Toggle(target, target.cube.GetParameters().draw_ucs_menu);
  const std::wstring name = target.cube.GetActiveUCS();
  target.cube.SetActiveUCS(name.c_str(), true);  // makes the label, or lets it go
}
bool HasCoordinates(const ViewTarget& target) { return GetCubeParameters(target).draw_ucs_menu; }

void SetCubeSize(const ViewTarget& target, OrientorParameters::Size size) {
  target.cube.GetParameters().size = size;
  target.cube.SetSize(size);
  target.manager.Refresh();
  target.hub.RequestApplicationUpdate();
}

void SetCubeCorner(const ViewTarget& target, OrientorParameters::Location corner) {
  target.cube.GetParameters().screen_location = corner;
  target.cube.SetLocation(corner);
  target.manager.Refresh();
  target.hub.RequestApplicationUpdate();
}

void SetCubeOpacity(const ViewTarget& target, float opacity) {
  target.cube.GetParameters().min_opacity = opacity;
  target.hub.RequestApplicationUpdate();
}

// ---- coordinate systems ----

void UseModelCoordinates(const ViewTarget& target) {
  const zovhost::Scene* const scene = target.selection.GetScene();
  if (scene != nullptr) SetCoordinates(target, CoordinateSystem::Model, scene->GetUpDirection());
}
void UseYUpward(const ViewTarget& target) {
  SetCoordinates(target, CoordinateSystem::YUpward, Vector3(0, 1, 0));
}
void UseZUpward(const ViewTarget& target) {
  SetCoordinates(target, CoordinateSystem::ZUpward, Vector3(0, 0, 1));
}

bool IsCoordinateSystem(const ViewTarget& target, CoordinateSystem system) {
  return target.cube.GetActiveUCS() == NameCoordinates(zovhost::GetPhrases(), system);
}

void RenewCubeWords(const ViewTarget& target, const zovhost::Phrases& before) {
  const std::wstring active = target.cube.GetActiveUCS();
  target.cube.Destroy();
  if (!target.cube.Create()) return;
  for (std::size_t i = 0; i < COORDINATE_NAMES.size(); ++i) {
    const auto system = static_cast<CoordinateSystem>(i);
    if (active == NameCoordinates(before, system)) {
      target.cube.SetActiveUCS(NameCoordinates(zovhost::GetPhrases(), system).c_str(), true);
    }
  }
}

}  // namespace zovview
