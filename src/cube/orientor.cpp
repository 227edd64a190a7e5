#include "korvane/orientor.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "cube/orientor_parts.h"
#include "foundation/out_of_memory.h"
#include "korvane/camera_operations.h"
#include "render/texture_counts.h"

namespace Korvane {

namespace {

constexpr int TEXTURE_COUNT = TEXTURES_CUBE.last - TEXTURES_CUBE.first + 1;

constexpr std::array<TextureID, TEXTURE_COUNT> ListTextures() {
  std::array<TextureID, TEXTURE_COUNT> all{};
  for (int i = 0; i < TEXTURE_COUNT; ++i) {
    all[static_cast<std::size_t>(i)] = static_cast<TextureID>(TEXTURES_CUBE.first + i);
  }
  return all;
}
constexpr auto TEXTURES = ListTextures();

constexpr bool IsInRange(int value, int begin, int end) { return value >= begin && value < end; }

}  // namespace

OrientorObserver::OrientorObserver(Orientor* cube) : orientor(cube) {}
OrientorObserver::~OrientorObserver() = default;

// ---- life ----

Orientor::Orientor() : parts(std::make_unique<OrientorParts>(this, parameters)) {
  GetPartDirection(0);  // makes the table of the parts, before an event does
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
}

Orientor::~Orientor() = default;

void Orientor::SetKorvane(CameraOperations* hub) {
  if (hub != nullptr && hub == parts->partners.hub.Get()) return;
  const OrientorParts::Closing closing(*parts);
  EndGesture();
  LeaveMove();
  parts->partners.hub.Set(hub);
}

void Orientor::SetRenderer(Renderer* value) {
  if (value != parts->renderer.Get()) parts->label.ForsakeMaking();
  parts->renderer.Set(value);
}
void Orientor::SetRewindHistory(RewindHistory* history) { parts->partners.history.Set(history); }

bool Orientor::Create() {
  return OrFail([&] {
    Renderer* const renderer = parts->renderer.Get();
    if (renderer == nullptr) return false;
    if (!parts->textures.Note(CountTexturesUp(*renderer, TEXTURES))) return false;
    renderer->ApplyTextureUsage();
    parts->tooltips.Load(*renderer);
    const std::wstring name = renderer->LoadStringResource(STRING_UCS_DEFAULT);
    parts->label.SetDefaultName(name);
    SetActiveUCS(name.c_str(), true);
    return true;
  });
}

bool Orientor::Destroy() {
  {
    const OrientorParts::Closing closing(*parts);
    EndGesture();
    LeaveMove();
  }
  Renderer* const renderer = parts->renderer.Get();
  if (renderer == nullptr) return false;
  if (parts->textures.End()) CountTexturesDown(*renderer, TEXTURES);
  parts->label.Destroy(*renderer);
  renderer->ApplyTextureUsage();
  return true;
}

bool Orientor::AddObserver(OrientorObserver* observer) { return parts->partners.observers.Add(observer); }
void Orientor::RemoveObserver(OrientorObserver* observer) { parts->partners.observers.Remove(observer); }

// ---- place and size ----

void Orientor::SetViewportSize(int width, int height) {
  parts->layout.SetViewport(width, height);
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
  CameraOperations* const hub = parts->partners.hub.Get();
  if (hub != nullptr && parameters.visible) hub->RequestApplicationUpdate();
}

void Orientor::SetViewportMousePosition(int x, int y) {
  parts->mouse.x = x;
  parts->mouse.y = y;
  Update(true);
}

void Orientor::SetLocation(OrientorParameters::Location /*location*/) {
  if (!parts->layout.GoToCorner(parameters)) return;
  parts->partners.observers.Notify(
      [&](OrientorObserver& each) { each.OnPositionChange(parameters.screen_location); });
}

void Orientor::SetSize(OrientorParameters::Size /*size*/) {
  const int sizeBefore = parts->layout.screenSize;
  parts->layout.TakeSize(parameters);
  if (parts->label.IsOutdated(parameters, parts->layout, sizeBefore)) UpdateUCSMenuLabel(false);
  parts->label.NoteCompass(parameters);
}

int Orientor::GetScreenSize() const { return parts->layout.screenSize; }

void Orientor::GetRegionSize(int& width, int& height) const {
  parts->layout.GetRegionSize(parameters, parts->label.ShowsSecondName(parameters), width, height);
}

// ---- the label of the coordinate system ----

void Orientor::UpdateUCSMenuLabel(bool redraw) {
  Renderer* const renderer = parts->renderer.Get();
  if (renderer == nullptr) return;
  OrFail([&] { parts->label.Make(*renderer, parameters, parts->layout); });
  CameraOperations* const hub = parts->partners.hub.Get();
  if (redraw && hub != nullptr) hub->RequestApplicationUpdate();
}

void Orientor::SetActiveUCS(const wchar_t* name, bool redraw) {
  OrFail([&] {
    const bool isRenamed = parts->label.SetName(name);
    if (isRenamed || parts->label.IsMismatched(parameters)) UpdateUCSMenuLabel(redraw);
  });
}

const wchar_t* Orientor::GetActiveUCS() const { return parts->label.GetName().c_str(); }

// ---- queries ----

int Orientor::GetActiveGeometryPart() const { return parts->mouse.activePart; }
int Orientor::GetClosestGeometryPart() const { return parts->closest.part; }
int Orientor::GetActiveOverlayPart() const {
  return parameters.draw_overlay ? parts->mouse.activeOverlayPart : -1;
}
bool Orientor::IsDragActive() const { return parts->drag.IsActive(); }
bool Orientor::IsMouseInRegion() const { return parts->fade.mouseInRegion; }

Vector3 Orientor::GetGeometryPartDirection(int part) const {
  return IsInRange(part, 0, GEOMETRY_PART_COUNT) ? GetPartDirection(part) : Vector3::Zero;
}

int Orientor::GetGeometryPartIndex(const Vector3& direction) const {
  int found = -1;
  for (int part = 0; part < GEOMETRY_PART_COUNT; ++part) {
    if (GetPartDirection(part) == direction) found = part;
  }
  return found;
}

Vector3 Orientor::GetClosestViewDirection() const { return GetGeometryPartDirection(parts->closest.part); }

Vector3 Orientor::GetActivePartDirection() const {
  return IsMouseOnGeometryPart() ? GetPartDirection(parts->mouse.activePart) : Vector3::Zero;
}

const std::string& Orientor::GetActivePartName() const {
  static const std::string NO_NAME;
  static const std::string OVERLAY_NAMES[OVERLAY_PART_COUNT] = {
      "Rotate Counter-Clockwise", "Rotate Clockwise", "Home", "", "", "",
  };
  const CubeMouse& mouse = parts->mouse;
  if (IsInRange(mouse.activeOverlayPart, 0, OVERLAY_PART_COUNT))
    return OVERLAY_NAMES[mouse.activeOverlayPart];
  if (IsInRange(mouse.highlightedPart, 0, GEOMETRY_PART_COUNT)) return GetPartName(mouse.highlightedPart);
  return NO_NAME;
}

const std::wstring& Orientor::GetTooltip() const {
  const CubeTooltips& tooltips = parts->tooltips;
  if (!parameters.visible || parameters.disabled) return tooltips.empty;
  if (parts->mouse.activeOverlayPart == OVERLAY_HOME) return tooltips.home;
  if (parts->mouse.activeOverlayPart == OVERLAY_LOCK) return tooltips.lock;
  if (IsMouseOnGeometryPart()) return tooltips.geometry;
  if (IsMouseOnCompassPart()) return tooltips.compass;
  if (IsMouseOnContextMenuPart()) return tooltips.context;
  return tooltips.empty;
}

bool Orientor::IsMouseOnGeometryPart() const { return parts->mouse.IsOnGeometry(); }
bool Orientor::IsMouseOnCompassPart() const { return parts->mouse.IsOnCompass(); }
bool Orientor::IsMouseOnOverlayPart() const { return parts->IsMouseOnOverlay(); }
bool Orientor::IsMouseOnViewableOverlayPart() const {
  return parameters.draw_overlay && IsInRange(parts->mouse.rawOverlayPart, 0, OVERLAY_PART_COUNT);
}
bool Orientor::IsMouseOnContextMenuPart() const { return GetActiveOverlayPart() == OVERLAY_CONTEXT_MENU; }
bool Orientor::IsMouseOnUCSMenu() const { return GetActiveOverlayPart() == OVERLAY_UCS_MENU; }
bool Orientor::IsMouseOnPart() const { return IsMouseOnGeometryPart() || IsMouseOnOverlayPart(); }

bool Orientor::ViewOnPartAxis() const {
  return parts->closest.IsLookedAlong(parameters.select_faces_only ? FACE_COUNT : GEOMETRY_PART_COUNT);
}

bool Orientor::ViewOnPrincipalAxis() const { return parts->closest.IsLookedAlong(FACE_COUNT); }

// ---- a frame ----

void Orientor::Draw() {
  if (!parameters.visible) EndGesture();
  if (parts->partners.hub.Get() == nullptr || !parameters.visible) return;
  Update(false);
  if (!parts->Look()) return;
  parts->arrowsVisible = false;
  Renderer* renderer = parts->renderer.Get();
  if (renderer != nullptr && parameters.visible) parts->DrawGeometry(*renderer);
  renderer = parts->renderer.Get();
  if (renderer != nullptr) parts->DrawOverlay(*renderer);
}

// ---- update ----

void Orientor::Update(bool redraw) {
  if (!parameters.visible) EndGesture();
  if (!parts->Look()) return;
  const bool selectionChanged = UpdateSelection();
  const bool stateChanged = UpdateState();
  CameraOperations* const hub = parts->partners.hub.Get();
  if (redraw && (selectionChanged || stateChanged) && parameters.visible && hub != nullptr) {
    hub->RequestApplicationUpdate();
  }
}

bool Orientor::UpdateState() {
  if (parts->partners.hub.Get() == nullptr || !parameters.visible) return false;
  SetLocation(parameters.screen_location);
  SetSize(parameters.size);
  const int closestBefore = parts->closest.part;
  const bool inRegionBefore = parts->fade.mouseInRegion;
  parts->closest.Find(parts->space);
  const float newOpacity = UpdateFade();
  float& opacity = parts->fade.opacity;
  const bool changed = parts->closest.part != closestBefore || parts->fade.mouseInRegion != inRegionBefore ||
                       std::abs(newOpacity - opacity) > parameters.opacity_step;
  if (changed) opacity = newOpacity;
  return changed;
}

// Returns the opacity that goes with the place of the mouse.
float Orientor::UpdateFade() {
  const Vector2 inCorner = parts->layout.ToCorner(parts->mouse.x, parts->mouse.y);
  if (IsFar(inCorner)) return parts->fade.Rest(parameters);
  return parts->fade.Follow(parameters, parts->layout, parts->IsLockedToSelection(), parts->drag.IsActive(),
                            inCorner);
}

// Far from the cube, or not to be seen reacting.
bool Orientor::IsFar(const Vector2& inCorner) const {
  if (parameters.disabled) return true;
  if (parts->drag.IsActive()) return false;
  const CameraOperations* const hub = parts->partners.hub.Get();
  const bool inViewport = inCorner.x >= 0.0 && inCorner.x <= parts->layout.viewportWidth &&
                          inCorner.y >= 0.0 && inCorner.y <= parts->layout.viewportHeight;
  return !inViewport || hub == nullptr || hub->GetApplicationParameters().mouse_drag;
}

}  // namespace Korvane
