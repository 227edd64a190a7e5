#pragma once

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "korvane/pivot_ball.h"
#include "korvane/tool.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_history.h"
#include "support/recording_renderer.h"

/// A hub that writes into its log, while `recording`, what the tools ask of it, and keeps the last shot
/// records.
class ToolHub : public MemoryHub {
 public:
  using MemoryHub::BeginShot;
  using MemoryHub::MemoryHub;
  using MemoryHub::UpdateOperationParams;

  bool BeginOperation(Korvane::OperationType type, int x, int y) override {
    RecordAt("begin", type, x, y);
    return MemoryHub::BeginOperation(type, x, y);
  }
  bool EndOperation(Korvane::OperationType type) override {
    if (recording) Record("end " + std::to_string(type));
    return MemoryHub::EndOperation(type);
  }
  bool UpdateOperationParams(int x, int y, Korvane::OperationType type) override {
    RecordAt("update", type, x, y);
    return MemoryHub::UpdateOperationParams(x, y, type);
  }
  bool UpdateOperationParams(Korvane::KeyID key, bool pressed, Korvane::OperationType type) override {
    // All kinds hand themselves on to each kind; the one call is what the tool has made.
    if (recording && type == Korvane::OPERATION_ALL) {
      Record("key " + std::to_string(key) + (pressed ? " down" : " up"));
    }
    return MemoryHub::UpdateOperationParams(key, pressed, type);
  }
  bool BeginShot(const Korvane::ZoomShotParameters& p) override { return Begin("zoom shot", zoomShot = p); }
  bool BeginShot(const Korvane::ZoomRectShotParameters& p) override {
    return Begin("rect shot", rectShot = p);
  }
  bool BeginShot(const Korvane::LookAtShotParameters& p) override {
    return Begin("look-at shot", lookAtShot = p);
  }
  bool BeginShot(const Korvane::CenterShotParameters& p) override {
    return Begin("center shot", centerShot = p);
  }
  bool ConstrainPivotToViewport() override {
    Record("constrain pivot");
    return MemoryHub::ConstrainPivotToViewport();
  }

  Korvane::ZoomShotParameters zoomShot;
  Korvane::ZoomRectShotParameters rectShot;
  Korvane::LookAtShotParameters lookAtShot;
  Korvane::CenterShotParameters centerShot;
  int shotsBegun = 0;
  bool refusesShots = false;

 private:
  void RecordAt(const char* what, Korvane::OperationType type, int x, int y) {
    if (!recording) return;
    std::ostringstream line;
    line << what << ' ' << type << " at " << x << ", " << y;
    Record(line.str());
  }
  template <class Parameters>
  bool Begin(const char* name, const Parameters& parameters) {
    if (recording) Record(name);
    ++shotsBegun;
    return !refusesShots && MemoryHub::BeginShot(parameters);
  }
};

/// Hears of the ends of operations.
struct EndListener : Korvane::OperationObserver {
  void OnBeginOperation(Korvane::OperationType /*type*/,
                        const Korvane::CameraParameters& /*camera*/) override {}
  void OnPerformOperation(Korvane::OperationType /*type*/, double /*dt*/,
                          const Korvane::CameraParameters& /*camera*/) override {}
  void OnEndOperation(Korvane::OperationType type) override { onEnd(type); }
  std::function<void(Korvane::OperationType)> onEnd;
};

/// A renderer with a scene to hit, parts to point at and a projection, each of which the test provides. While
/// `quiet` it notes nothing of a frame and allocates nothing.
class ToolRenderer : public RecordingRenderer {
 public:
  using Vector2 = Korvane::Vector2;
  using Vector3 = Korvane::Vector3;
  struct Component {
    Vector3 point;
    Vector3 normal;
  };

  std::function<std::optional<Vector3>(const Vector3& origin, const Vector3& direction)> scene;
  std::optional<Vector3> rectangleHit;
  std::optional<Component> component;
  std::function<Vector2(const Vector3&)> project;
  bool offersMouseover = true;
  bool quiet = false;

  int mouseoverBegun = 0;
  int mouseoverEnded = 0;
  int mouseoverAsked = 0;
  bool highlighted = false;
  Vector2 lastPixel;
  int rays = 0;
  std::vector<int> lastRectangle;
  int iconsDrawn = 0;
  Korvane::Box2 lastIcon;
  double lastOpacity = -1.0;

  bool QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction, Vector3& hit) override {
    ++rays;
    if (!scene) return false;
    const std::optional<Vector3> found = scene(origin, direction);
    if (found) hit = *found;
    return found.has_value();
  }
  bool QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top, Vector3& hit) override {
    if (!quiet) lastRectangle = {left, bottom, right, top};
    if (rectangleHit) hit = *rectangleHit;
    return rectangleHit.has_value();
  }
  bool BeginMouseoverComponent(bool highlight) override {
    if (!offersMouseover) return false;
    ++mouseoverBegun;
    highlighted = highlight;
    return true;
  }
  bool GetMouseoverComponent(Vector2 pixel, Vector3& point, Vector3& normal) override {
    ++mouseoverAsked;
    lastPixel = pixel;
    if (!component) return false;
    point = component->point;
    normal = component->normal;
    return true;
  }
  bool EndMouseoverComponent() override {
    ++mouseoverEnded;
    return true;
  }
  bool ProjectToScreen(Vector3 point, Vector2& pixel) override {
    if (!project) return false;
    pixel = project(point);
    return true;
  }

  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override {
    return quiet || RecordingRenderer::BeginRender(viewport, camera, mode);
  }
  bool EndRender() override { return quiet || RecordingRenderer::EndRender(); }
  bool RenderGeometry(unsigned count, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override {
    return quiet || RecordingRenderer::RenderGeometry(count, vertices, texCoords, material);
  }
  bool Render(Korvane::ResourceIcon3D* icon) override { return quiet || RecordingRenderer::Render(icon); }
  bool Render(Korvane::DynamicIcon2D* icon) override { return quiet || RecordingRenderer::Render(icon); }
  bool Render(Korvane::ResourceIcon2D* icon) override {
    ++iconsDrawn;
    lastIcon = icon->GetBounds();
    lastOpacity = icon->GetOpacity();
    return quiet || RecordingRenderer::Render(icon);
  }
  bool SetCursorPosition(int x, int y) override {
    return quiet || RecordingRenderer::SetCursorPosition(x, y);
  }
  bool SetCursorIcon(Korvane::CursorID id) override { return quiet || RecordingRenderer::SetCursorIcon(id); }
};

/// All that a tool is wired to: a view of 1024 by 768 pixels that looks from (0, 0, 10) at the origin.
struct ToolBench {
  static constexpr int WIDTH = 1024;
  static constexpr int HEIGHT = 768;

  ToolBench() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {
    history.onBegin = [this] { hub.Record("begin record"); };
    history.onEnd = [this] { hub.Record("end record"); };
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    hub.view.pivot = {1, 2, -3};
    hub.recording = true;
  }

  void Wire(Korvane::Tool& tool) {
    tool.SetKorvane(&hub);
    tool.SetRenderer(&renderer);
    tool.SetRewindHistory(&history);
    tool.SetPivotBall(&ball);
  }

  /// One frame of the host, after some milliseconds.
  void Frame(Korvane::Tool& tool, std::uint32_t milliseconds = 16) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    tool.OnDraw();
  }
  void RunFor(Korvane::Tool& tool, int milliseconds) {
    for (; milliseconds > 0; milliseconds -= 16) Frame(tool);
  }

  /// What the tools asked of the hub, in order, without the host's own traffic.
  std::vector<std::string> TakeAsked() {
    std::vector<std::string> asked;
    for (const std::string& line : hub.TakeLog()) {
      const bool own = line == "query" || line == "request" || line == "recalculate selection" ||
                       line == "begin shot hook" || line == "end shot hook";
      if (!own) asked.push_back(line);
    }
    return asked;
  }

  Korvane::ApplicationParameters& Parameters() { return hub.GetApplicationParameters(); }

  ManualPlatform platform;
  ToolHub hub;
  ToolRenderer renderer;
  Korvane::PivotBall ball;
  RecordingHistory history;
};
