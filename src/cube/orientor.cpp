#include "korvane/orientor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "camera/camera_frame.h"
#include "cube/cube_model.h"
#include "cube/orientor_transition_shot_observer.h"
#include "foundation/truncate.h"
#include "korvane/camera_operations.h"

namespace Korvane {

namespace {

constexpr int TEXTURE_COUNT = 16;  // all that are the cube's, from 0

constexpr bool IsInRange(int value, int begin, int end) { return value >= begin && value < end; }

}  // namespace

OrientorObserver::OrientorObserver(Orientor* cube) : orientor(cube) {}
OrientorObserver::~OrientorObserver() = default;

// ---- life ----

Orientor::Orientor() : transitionObserver(std::make_unique<OrientorTransitionShotObserver>(this)) {
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
  InitCompassTables();
}

Orientor::~Orientor() = default;

void Orientor::SetKorvane(CameraOperations* hub) {
  if (hub != cameraOperations) EndGesture();
  cameraOperations = hub;
}
void Orientor::SetRenderer(Renderer* value) { renderer = value; }
void Orientor::SetRewindHistory(RewindHistory* history) { rewindHistory = history; }

bool Orientor::Create() {
  if (renderer == nullptr) return false;
  for (int id = 0; id < TEXTURE_COUNT; ++id) renderer->IncrementTextureUsage(static_cast<TextureID>(id));
  renderer->ApplyTextureUsage();
  homeTooltip = renderer->LoadStringResource(STRING_CUBE_HOME);
  lockTooltip = renderer->LoadStringResource(STRING_CUBE_LOCK);
  geometryTooltip = renderer->LoadStringResource(STRING_CUBE_PART);
  compassTooltip = renderer->LoadStringResource(STRING_CUBE_COMPASS);
  contextTooltip = renderer->LoadStringResource(STRING_CUBE_MENU);
  defaultUCSName = renderer->LoadStringResource(STRING_UCS_DEFAULT);
  SetActiveUCS(defaultUCSName.c_str(), true);
  return true;
}

bool Orientor::Destroy() {
  closing = true;
  EndGesture();
  EndMove();
  closing = false;
  if (renderer == nullptr) return false;
  for (int id = 0; id < TEXTURE_COUNT; ++id) renderer->DecrementTextureUsage(static_cast<TextureID>(id));
  DestroyUCSMenuLabels();
  renderer->ApplyTextureUsage();
  return true;
}

bool Orientor::AddObserver(OrientorObserver* observer) { return observers.Add(observer); }
void Orientor::RemoveObserver(OrientorObserver* observer) { observers.Remove(observer); }

// ---- the model ----

void Orientor::InitCompassTables() {
  static constexpr const char* OVERLAY_NAMES[OVERLAY_PART_COUNT] = {
      "Rotate Counter-Clockwise", "Rotate Clockwise", "Home", "", "", "",
  };
  for (int part = 0; part < CUBE_PART_COUNT; ++part) {
    partDirections[part] = CUBE_PARTS[part].direction;
    partNames[part] = CUBE_PARTS[part].name;
  }
  for (int letter = 0; letter < COMPASS_LETTER_COUNT; ++letter) {
    partDirections[COMPASS_LETTERS_BEGIN + letter] = COMPASS_LETTERS[letter];
  }
  for (int i = 0; i < COMPASS_RING_COUNT; ++i) {
    partDirections[COMPASS_RING_BEGIN + i] = GetCompassRingDirection(i);
  }
  for (int part = 0; part < OVERLAY_PART_COUNT; ++part) overlayNames[part] = OVERLAY_NAMES[part];
}

Vector3 Orientor::ChangeBasisWorldToStandard(const Vector3& v) const {
  if (cameraOperations == nullptr) return Vector3::Zero;
  const ApplicationParameters& scene = std::as_const(*cameraOperations).GetApplicationParameters();
  return ChangeBasis(scene.scene_front_direction, scene.scene_up_direction, v);
}

Vector3 Orientor::ChangeBasisStandardToWorld(const Vector3& v) const {
  if (cameraOperations == nullptr) return Vector3::Zero;
  const ApplicationParameters& scene = std::as_const(*cameraOperations).GetApplicationParameters();
  return ChangeInverseBasis(scene.scene_front_direction, scene.scene_up_direction, v);
}

Vector3 Orientor::ConvertVectorToWorldSpace(const Vector3& v) const {
  if (cameraOperations == nullptr) return Vector3::Zero;
  const ApplicationParameters& scene = std::as_const(*cameraOperations).GetApplicationParameters();
  const Vector3 inWorld = ChangeInverseBasis(scene.world_front_direction, scene.world_up_direction, v);
  return ChangeBasisWorldToStandard(inWorld);
}

void Orientor::ConvertVectorsToWorldSpace(Vector3& a, Vector3& b, Vector3& c) const {
  a = ConvertVectorToWorldSpace(a);
  b = ConvertVectorToWorldSpace(b);
  c = ConvertVectorToWorldSpace(c);
}

double Orientor::GetHalfSize() const {
  return CubeDimensions{parameters.face_size, parameters.edge_size, parameters.gap_size}.GetHalfSize();
}

void Orientor::GetStandardView(Vector3& view, Vector3& up) const {
  CameraParameters camera;
  cameraOperations->QueryCameraParameters(camera);
  view = ChangeBasisWorldToStandard(ViewDirection(camera));
  up = ChangeBasisWorldToStandard(camera.up.Normalized());
}

bool Orientor::IsSceneWorld() const {
  return std::as_const(*cameraOperations).GetApplicationParameters().scene_is_world;
}

bool Orientor::IsLockedToSelection() const {
  return std::as_const(*cameraOperations).GetApplicationParameters().lock_to_selection;
}

// ---- place and size ----

void Orientor::SetViewportSize(int width, int height) {
  viewportWidth = width;
  viewportHeight = height;
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
  if (cameraOperations != nullptr && parameters.visible) cameraOperations->RequestApplicationUpdate();
}

void Orientor::SetViewportMousePosition(int x, int y) {
  mouseX = x;
  mouseY = y;
  Update(true);
}

void Orientor::SetLocation(OrientorParameters::Location /*location*/) {
  const auto width = static_cast<float>(viewportWidth);
  const auto height = static_cast<float>(viewportHeight);
  const Mirror mirrors[] = {
      {width, height, -1.0F, -1.0F},
      {width, 0.0F, -1.0F, 1.0F},
      {0.0F, height, 1.0F, -1.0F},
      {0.0F, 0.0F, 1.0F, 1.0F},
  };
  const int location = parameters.screen_location;
  mirror = IsInRange(location, 0, 4) ? mirrors[location] : Mirror();
  if (location == lastLocation) return;
  lastLocation = location;
  observers.Notify([&](OrientorObserver& each) { each.OnPositionChange(parameters.screen_location); });
}

void Orientor::SetSize(OrientorParameters::Size /*size*/) {
  const int sizeBefore = screenSize;
  UpdateScreenSize();
  const bool wanted = parameters.draw_ucs_menu;
  const bool present = ucsLabel != nullptr;
  const bool outdated = screenSize != sizeBefore || parameters.draw_compass != labelCompassState;
  if (wanted != present || (wanted && outdated)) UpdateUCSMenuLabel(false);
  labelCompassState = parameters.draw_compass;
}

void Orientor::UpdateScreenSize() {
  switch (parameters.size) {
    case OrientorParameters::SIZE_AUTOMATIC: {
      const auto side = static_cast<float>(viewportWidth < viewportHeight ? viewportWidth : viewportHeight);
      const int automatic = Truncate(side * parameters.auto_screen_size);
      screenSize = std::min(std::max(automatic, parameters.tiny_screen_size), parameters.normal_screen_size);
      break;
    }
    case OrientorParameters::SIZE_TINY:
      screenSize = parameters.tiny_screen_size;
      break;
    case OrientorParameters::SIZE_SMALL:
      screenSize = parameters.small_screen_size;
      break;
    case OrientorParameters::SIZE_NORMAL:
      screenSize = parameters.normal_screen_size;
      break;
    case OrientorParameters::SIZE_LARGE:
      screenSize = parameters.large_screen_size;
      break;
    default:
      break;
  }
}

void Orientor::GetRegionSize(int& width, int& height) const {
  static constexpr double COMPASS_WIDTH = 1.4;
  static constexpr double COMPASS_HEIGHT = 1.425;
  static constexpr int SMALL_LABEL_BELOW = 48;  // pixels of screen size
  static constexpr int SMALL_LABEL_HEIGHT = 24;
  static constexpr int LABEL_HEIGHT = 32;
  static constexpr int SECOND_LINE_HEIGHT = 14;

  const bool label = parameters.draw_ucs_menu;
  const auto size = static_cast<float>(screenSize);
  width = height = screenSize;
  if (parameters.draw_compass) {
    width = Truncate(screenSize * COMPASS_WIDTH);
    height = label ? Truncate(size * parameters.overlay_ucs_offset_compass_y)
                   : Truncate(screenSize * COMPASS_HEIGHT);
  } else if (label) {
    height = Truncate(size * parameters.overlay_ucs_offset_y);
  }
  if (!label) return;
  double labelled = height;  // no sum of sizes leaves the range of a double
  labelled += screenSize < SMALL_LABEL_BELOW ? SMALL_LABEL_HEIGHT : LABEL_HEIGHT;
  if (ShowsSecondUCSName()) labelled += SECOND_LINE_HEIGHT;
  height = Truncate(labelled);
}

// ---- queries ----

int Orientor::GetActiveOverlayPart() const { return parameters.draw_overlay ? activeOverlayPart : -1; }

Vector3 Orientor::GetGeometryPartDirection(int part) const {
  return IsInRange(part, 0, GEOMETRY_PART_COUNT) ? partDirections[part] : Vector3::Zero;
}

int Orientor::GetGeometryPartIndex(const Vector3& direction) const {
  int found = -1;
  for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) {
    if (partDirections[part] == direction) found = part;
  }
  return found;
}

Vector3 Orientor::GetClosestViewDirection() const { return GetGeometryPartDirection(closestPart); }

Vector3 Orientor::GetActivePartDirection() const {
  return IsMouseOnGeometryPart() ? partDirections[activePart] : Vector3::Zero;
}

const std::string& Orientor::GetActivePartName() const {
  static const std::string NO_NAME;
  if (IsInRange(activeOverlayPart, 0, OVERLAY_PART_COUNT)) return overlayNames[activeOverlayPart];
  if (IsInRange(highlightedPart, 0, GEOMETRY_PART_COUNT)) return partNames[highlightedPart];
  return NO_NAME;
}

const std::wstring& Orientor::GetTooltip() const {
  if (!parameters.visible || parameters.disabled) return emptyTooltip;
  if (activeOverlayPart == OVERLAY_HOME) return homeTooltip;
  if (activeOverlayPart == OVERLAY_LOCK) return lockTooltip;
  if (IsMouseOnGeometryPart()) return geometryTooltip;
  if (IsMouseOnCompassPart()) return compassTooltip;
  if (IsMouseOnContextMenuPart()) return contextTooltip;
  return emptyTooltip;
}

bool Orientor::IsMouseOnGeometryPart() const { return IsInRange(activePart, 0, COMPASS_RING_BEGIN); }
bool Orientor::IsMouseOnCompassPart() const {
  return IsInRange(activePart, COMPASS_LETTERS_BEGIN, PART_COUNT);
}
bool Orientor::IsMouseOnOverlayPart() const {
  return parameters.draw_overlay && IsInRange(activeOverlayPart, 0, OVERLAY_PART_COUNT);
}
bool Orientor::IsMouseOnViewableOverlayPart() const {
  return parameters.draw_overlay && IsInRange(rawOverlayPart, 0, OVERLAY_PART_COUNT);
}
bool Orientor::IsMouseOnContextMenuPart() const {
  return parameters.draw_overlay && activeOverlayPart == OVERLAY_CONTEXT_MENU;
}
bool Orientor::IsMouseOnUCSMenu() const {
  return parameters.draw_overlay && activeOverlayPart == OVERLAY_UCS_MENU;
}
bool Orientor::IsMouseOnPart() const { return IsMouseOnGeometryPart() || IsMouseOnOverlayPart(); }

bool Orientor::IsViewOnClosestPart(int partCount) const {
  const auto tolerance = static_cast<float>(Math::EPSILON_VALUE);
  return IsInRange(closestPart, 0, partCount) && std::abs(1.0F - closestDot) <= tolerance;
}

bool Orientor::ViewOnPartAxis() const {
  return IsViewOnClosestPart(parameters.select_faces_only ? FACE_COUNT : GEOMETRY_PART_COUNT);
}

bool Orientor::ViewOnPrincipalAxis() const { return IsViewOnClosestPart(FACE_COUNT); }

// ---- update ----

void Orientor::Update(bool redraw) {
  if (!parameters.visible) EndGesture();
  if (cameraOperations == nullptr) return;
  Vector3 view;
  Vector3 up;
  GetStandardView(view, up);
  const bool selectionChanged = UpdateSelection(view, up);
  const bool stateChanged = UpdateState(view, up);
  if (redraw && (selectionChanged || stateChanged) && parameters.visible) {
    cameraOperations->RequestApplicationUpdate();
  }
}

bool Orientor::UpdateState(const Vector3& view, const Vector3& /*up*/) {
  if (cameraOperations == nullptr || !parameters.visible) return false;
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
  const int closestBefore = closestPart;
  const bool inRegionBefore = mouseInRegion;
  UpdateClosestPart(view);
  const float newOpacity = UpdateFade();
  const bool changed = closestPart != closestBefore || mouseInRegion != inRegionBefore ||
                       std::abs(newOpacity - opacity) > parameters.opacity_step;
  if (changed) opacity = newOpacity;
  return changed;
}

// The part onto which the view looks: the first of equals.
void Orientor::UpdateClosestPart(const Vector3& view) {
  closestDot = std::numeric_limits<float>::lowest();
  for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) {
    const auto dot = static_cast<float>(view.Dot((-partDirections[part]).Normalize()));
    if (!(dot > closestDot)) continue;
    closestDot = dot;
    closestPart = part;
  }
}

// Far from the cube, or not to be seen reacting.
bool Orientor::IsFar(double x, double y) const {
  if (parameters.disabled) return true;
  if (dragging) return false;
  const bool inViewport = x >= 0.0 && x <= viewportWidth && y >= 0.0 && y <= viewportHeight;
  return !inViewport || std::as_const(*cameraOperations).GetApplicationParameters().mouse_drag;
}

// Returns the opacity that goes with it. Lengths in screen sizes, from the cube's corner.
float Orientor::UpdateFade() {
  static constexpr double FULL_WITHIN = 1.05;
  static constexpr double GONE_BEYOND = 1.8;

  const double x = static_cast<double>(mouseX) * mirror.scaleX + mirror.offsetX;
  const double y = static_cast<double>(mouseY) * mirror.scaleY + mirror.offsetY;
  mouseInRegion = false;
  fade = 0.0F;
  if (IsFar(x, y)) return parameters.min_opacity;

  const double size = screenSize;
  const double edge = static_cast<double>(viewportHeight) + parameters.screen_offset_y;
  mouseInRegion = IsInRegion(x, y);
  const double tx = Math::EaseClamp(x, FULL_WITHIN * size, GONE_BEYOND * size);
  const double ty = Math::EaseClamp(y, edge - GONE_BEYOND * size, edge - FULL_WITHIN * size);
  fade = dragging ? 1.0F : static_cast<float>(Math::Min(1.0 - tx, ty));
  return (1.0F - parameters.min_opacity) * fade + parameters.min_opacity;
}

bool Orientor::IsInRegion(double x, double y) const {
  const double regionHeight = parameters.draw_compass ? 1.61 : 1.2;
  const double regionWidth = (parameters.draw_compass ? 1.31 : 1.0) + (IsLockedToSelection() ? 0.14 : 0.0);
  const double edge = static_cast<double>(viewportHeight) + parameters.screen_offset_y;
  return x < regionWidth * screenSize && x > 0.0 && y > edge - regionHeight * screenSize &&
         y < viewportHeight;
}

}  // namespace Korvane
