#include "scenarios/house_view.h"

#include <cmath>
#include <cstdlib>

#include "disc/helm_disc_parts.h"
#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/walk_tool.h"
#include "korvane/zoom_tool.h"
#include "zovhost/resource_pack.h"

namespace scenarios {

using Korvane::Math;
using Korvane::Vector2;
using Korvane::Vector3;

namespace {

constexpr double HALF_ANGLE = 22.5;  // degrees, of the lower side

// From the front, the right and above, at three radii; the house stands on z.
Korvane::CameraParameters MakeCamera(bool orthographic) {
  const zovhost::Scene& house = GetHouse();
  Korvane::CameraParameters camera;
  camera.centre = camera.pivot = house.GetCentre();
  const double distance = 3.0 * house.GetRadius();
  camera.eye = camera.centre + Vector3(0.5, -0.75, 0.45).Normalized() * distance;
  camera.up = Vector3(0, 0, 1);
  const double tangent = std::tan(HALF_ANGLE * Math::DEG_TO_RAD);
  const double aspect = static_cast<double>(HouseViewport::WIDTH) / HouseViewport::HEIGHT;
  camera.SetVerticalFOV(HALF_ANGLE);
  camera.SetHorizontalFOV(std::atan(tangent * aspect) * Math::RAD_TO_DEG);
  camera.ortho_height = 2.0 * tangent * distance;
  camera.ortho_width = camera.ortho_height * aspect;
  // The up of a view is at right angles to it, as every host keeps it.
  const Vector3 forward = (camera.centre - camera.eye).Normalized();
  const Vector3 right = forward.Cross(camera.up).Normalized();
  camera.up = right.Cross(forward);
  if (orthographic) camera.projection_type = Korvane::CameraParameters::ProjectionType::Orthographic;
  camera.projection_transition = orthographic ? 1.0 : 0.0;
  return camera;
}

void EnterHouse(MemoryHub& hub) {
  const zovhost::Scene& house = GetHouse();
  Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
  parameters.scene_up_direction = parameters.world_up_direction = Vector3(0, 0, 1);
  parameters.scene_front_direction = parameters.world_front_direction = Vector3(0, -1, 0);
  parameters.global_bound_radius = parameters.scene_bound_radius = house.GetRadius();
  parameters.global_bound_centre = parameters.scene_bound_centre = house.GetCentre();
  parameters.global_bound_box = parameters.scene_bound_box = house.GetBoundingBox();
  parameters.scene_scale = house.GetRadius() * 0.1;
  parameters.home_camera = hub.view;
}

}  // namespace

const zovhost::Scene& GetHouse() {
  static const std::unique_ptr<zovhost::Scene> house = zovhost::MakeDemoBuilding();
  return *house;
}

bool HouseRenderer::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction, Vector3& hit) {
  zovhost::Scene::Hit found;
  if (!GetHouse().Intersect(origin, direction, found)) return false;
  hit = found.point;
  return true;
}

Korvane::PixelIcon2D* HouseRenderer::CreateImageData(Korvane::TextureID id) {
  zovhost::Image image;
  if (!hasRegionMaps) return RecordingRenderer::CreateImageData(id);
  if (!zovhost::ResourcePack::GetDefault()->RenderHitMap(id, image)) return nullptr;
  return new Korvane::PixelIcon2D(image.width, image.height, image.rgba.data(),
                                  Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
}

OpenDisc::OpenDisc() : record(new RecordingHistory) { GetParts().history.reset(record); }
OpenDisc::~OpenDisc() = default;

HouseViewport::HouseViewport(bool orthographic) : hub(MakeCamera(orthographic)) { EnterHouse(hub); }

Vector2 HouseViewport::PixelOf(const Vector3& point) const {
  Vector2 pixel(1e9, 1e9);
  zovhost::Projection(hub.view, 0.001, 1e6).WorldToPixel(point, WIDTH, HEIGHT, pixel);
  return pixel;
}

bool HouseViewport::PointAt(int x, int y, Vector3& point) const {
  Vector3 origin;
  Vector3 direction;
  const zovhost::Projection projection(hub.view, 0.001, 1e6);
  if (!projection.PixelToRay(Vector2(x, y), WIDTH, HEIGHT, origin, direction)) return false;
  zovhost::Scene::Hit found;
  if (!GetHouse().Intersect(origin, direction, found)) return false;
  point = found.point;
  return true;
}

HouseView::HouseView(bool orthographic) : HouseViewport(orthographic) {
  manager = std::make_unique<EagerViewManager>();
  manager->SetKorvane(&hub);
  manager->SetRenderer(&renderer);
  manager->SetHelmDisc(&disc);
  manager->AddTool(ORBIT, new Korvane::OrbitTool);
  manager->AddTool(PAN, new Korvane::PanTool);
  manager->AddTool(ZOOM, new Korvane::ZoomTool);
  auto* const rectangle = new Korvane::RectZoomTool;
  rectangle->SetFlyToRectangle(true);
  manager->AddTool(RECT_ZOOM, rectangle);
  manager->AddTool(LOOK, new Korvane::LookTool);
  manager->AddTool(LOOK_MOVE, new Korvane::LookMoveTool);
  manager->AddTool(LOOK_AT, new Korvane::LookAtTool);
  manager->AddTool(CENTER, new Korvane::CenterTool(nullptr, nullptr, Korvane::STRING_PIVOT));
  manager->AddTool(WALK, new Korvane::WalkTool);
  manager->Create();
  manager->SetViewportSize(WIDTH, HEIGHT);
  Frame();
}

HouseView::~HouseView() {
  if (manager != nullptr) manager->Destroy();
}

void HouseView::Frame(unsigned milliseconds) {
  platform.Advance(milliseconds);
  hub.PerformOperations();
  if (manager != nullptr) manager->OnDraw();
  renderer.ClearCalls();
}

void HouseView::Settle() {
  for (int i = 0; i < 312; ++i) Frame();
}

void HouseView::Choose(ToolID tool) { manager->SetActiveTool(tool); }

void HouseView::Press(int fromX, int fromY, int toX, int toY, int steps, unsigned milliseconds) {
  manager->OnMouseMove(fromX, fromY);
  manager->OnLeftMouseDown(fromX, fromY);
  unsigned passed = 0;
  for (int step = 1; step <= steps; ++step) {
    // Rounded alike however many steps there are, so that the last position is the same.
    const double part = static_cast<double>(step) / steps;
    manager->OnMouseMove(static_cast<int>(std::lround(fromX + (toX - fromX) * part)),
                         static_cast<int>(std::lround(fromY + (toY - fromY) * part)));
    const auto until = static_cast<unsigned>(std::lround(milliseconds * part));
    Frame(until - passed);
    passed = until;
  }
}

void HouseView::Drag(int fromX, int fromY, int toX, int toY, int steps, unsigned milliseconds) {
  Press(fromX, fromY, toX, toY, steps, milliseconds);
  manager->OnLeftMouseUp(toX, toY);
}

void HouseView::Notch(int x, int y, int notches, unsigned milliseconds) {
  manager->OnMouseWheel(x, y, 120 * notches);
  Frame(milliseconds);
}

bool HouseView::PointBeside(const Vector3& other, int x, int y, Vector3& point) const {
  const double depth = (other - hub.view.eye).Dot((hub.view.centre - hub.view.eye).Normalized());
  const zovhost::Projection projection(hub.view, 0.001, 1e6);
  return projection.PixelToWorld(Vector2(x, y), depth, WIDTH, HEIGHT, point);
}

}  // namespace scenarios
