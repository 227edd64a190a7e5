#include "notes.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "korvane/icon2d.h"
#include "korvane/pivot_ball.h"
#include "painted.h"
#include "still_hub.h"
#include "zovhost/gl_renderer.h"

namespace zovsheets {

using Korvane::Box2;
using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::ResourceIcon2D;
using zovhost::Image;

namespace {

constexpr double width = 480.0;  // points
constexpr double height = 250.0;
constexpr double reach = 10.0;      // of the view, above and below the middle
constexpr double distance = 100.0;  // from afar a ball at the edge is round

class Notes {
 public:
  Notes(double pixelsForPoint, std::shared_ptr<const zovhost::ResourcePack> pack)
      : scale(pixelsForPoint),
        viewport({width * scale / 2.0, height * scale / 2.0}, {width * scale / 2.0, height * scale / 2.0}),
        renderer(std::move(pack)) {}

  bool Create() {
    const int wide = static_cast<int>(width * scale);
    const int high = static_cast<int>(height * scale);
    renderer.SetViewport(0, 0, wide, high);
    renderer.SetDisplayScale(scale);
    if (!renderer.Create()) return false;
    hub.SetViewportSize(wide, high);
    hub.camera.eye = {0.0, 0.0, distance};
    hub.camera.up = {0.0, 1.0, 0.0};
    hub.camera.pivot = {15.5, -6.5, 0.0};
    hub.camera.SetVerticalFOV(std::atan(reach / distance) * Korvane::Math::RAD_TO_DEG);
    hub.camera.SetHorizontalFOV(std::atan(reach / distance * width / height) * Korvane::Math::RAD_TO_DEG);
    hub.PerformOperations();
    renderer.SetCamera(hub.camera);
    renderer.SetSceneSphere({{}, 20.0});
    MakeTexts();
    MakeTarget(Korvane::TEXTURE_WALK_REFUSED, 0.76);
    MakeTarget(Korvane::TEXTURE_WALK_START, 0.91);
    renderer.ApplyTextureUsage();
    pivot.SetKorvane(&hub);
    pivot.SetRenderer(&renderer);
    pivot.Create();
    pivot.SetPosition(hub.camera.pivot);
    pivot.UpdateSize(hub.camera);
    pivot.SetVisible(true);
    return true;
  }
  ~Notes() {
    pivot.Destroy();
    renderer.Destroy();
  }
  Notes(const Notes&) = delete;
  Notes& operator=(const Notes&) = delete;

  bool IsWhole() const { return renderer.GetPlaceholderCount() == 0; }

  void Draw() {
    if (renderer.BeginRender(viewport, hub.camera, Renderer::RENDER_OVERLAY)) {
      for (DynamicIcon2D* icon : texts) renderer.Render(icon);
      for (ResourceIcon2D& icon : targets) renderer.Render(&icon);
      renderer.EndRender();
    }
    pivot.Draw();
  }

 private:
  // Fractions of the picture, from the bottom left.
  void Place(DynamicIcon2D* icon, double x, double y) {
    if (icon == nullptr) return;
    icon->SetPosition({x * width * scale, y * height * scale});
    texts.push_back(icon);
  }

  void MakeTexts() {
    const int room = static_cast<int>(120 * scale);
    Place(renderer.CreateMessageHUDByID(36), 0.5, 0.88);
    Place(renderer.CreateTooltipHUDByID(55), 0.16, 0.68);
    Place(renderer.CreateTooltipHUDByID(56), 0.66, 0.67);
    Place(renderer.CreateTooltipByID(70), 0.36, 0.45);
    Place(renderer.CreateMiniWheelLabelByID(62), 0.2, 0.26);
    Place(renderer.CreateTextLabel(L"Shot #1", 10.0F, 0, 0), 0.4, 0.26);
    const std::wstring world = renderer.LoadStringResource(Korvane::STRING_UCS_DEFAULT);
    Place(renderer.CreateUCSMenuLabel(world.c_str(), L"", false, room), 0.12, 0.1);
    Place(renderer.CreateUCSMenuLabel(world.c_str(), L"", true, room), 0.32, 0.1);
    Place(renderer.CreateUCSMenuLabel(L"Roof", world.c_str(), false, room), 0.5, 0.1);
    Place(renderer.CreateUCSMenuLabel(L"Roof", world.c_str(), true, room), 0.66, 0.1);
  }

  void MakeTarget(Korvane::TextureID id, double x) {
    const double size = 2.0 * hub.GetApplicationParameters().fly_dead_zone_radius * scale;
    renderer.IncrementTextureUsage(id);
    ResourceIcon2D& icon = targets.emplace_back(id);
    icon.SetSize(size, size);
    icon.SetPosition({x * width * scale, 0.45 * height * scale});
  }

  const double scale;
  const Box2 viewport;
  StillHub hub;
  zovhost::GLRenderer renderer;
  Korvane::PivotBall pivot;
  std::vector<DynamicIcon2D*> texts;  // the renderer's, and gone with it
  std::vector<ResourceIcon2D> targets;
};

}  // namespace

bool PaintNotes(Ground ground, double scale, Image& image,
                std::shared_ptr<const zovhost::ResourcePack> pack) {
  Notes notes(scale, std::move(pack));
  if (!notes.Create()) return false;
  return PaintOnGround([&notes] { notes.Draw(); }, ground, static_cast<int>(width * scale),
                       static_cast<int>(height * scale), image) &&
         notes.IsWhole();
}

}  // namespace zovsheets
