#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "cube/orientor_parts.h"
#include "korvane/orientor.h"
#include "support/cameras.h"
#include "support/counting_renderer.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

/// A cube whose state lies open.
class OpenOrientor : public Korvane::Orientor {
 public:
  using Vector2 = Korvane::Vector2;
  using Vector3 = Korvane::Vector3;

  using Orientor::Update;

  Korvane::OrientorParts& open = GetParts();

  int& activePart = open.mouse.activePart;
  unsigned& arrowFaces = open.mouse.arrowFaces;
  int& highlightedPart = open.mouse.highlightedPart;
  int& activeOverlayPart = open.mouse.activeOverlayPart;
  int& rawOverlayPart = open.mouse.rawOverlayPart;
  int& pressedOverlayPart = open.mouse.pressedOverlayPart;
  int& mouseX = open.mouse.x;
  int& mouseY = open.mouse.y;
  bool& menuOpen = open.mouse.menuOpen;
  bool& mousePressed = open.mouse.pressed;
  bool& mouseCaptured = open.mouse.captured;
  bool& dragging = open.drag.active;
  int& accumulatedDragX = open.drag.accumulatedX;
  int& accumulatedDragY = open.drag.accumulatedY;
  int& pressX = open.drag.pressX;
  int& pressY = open.drag.pressY;
  int& lastX = open.drag.lastX;
  int& lastY = open.drag.lastY;
  bool& reverseDragX = open.drag.sense.reverseX;
  bool& reverseDragY = open.drag.sense.reverseY;
  int& closestPart = open.closest.part;
  float& closestDot = open.closest.dot;
  float& fade = open.fade.fade;
  float& opacity = open.fade.opacity;
  bool& mouseInRegion = open.fade.mouseInRegion;
  Korvane::CubeLayout::Mirror& mirror = open.layout.mirror;
  int& screenSize = open.layout.screenSize;
  int& lastLocation = open.layout.lastLocation;
  Korvane::Borrowed<Korvane::DynamicIcon2D>& ucsLabel = open.label.plain;
  Korvane::Borrowed<Korvane::DynamicIcon2D>& highlightedUCSLabel = open.label.highlighted;
  bool& labelCompassState = open.label.madeWithCompass;
  bool& arrowsVisible = open.arrowsVisible;

  /// View direction and up of the host's camera in standard space.
  void GetStandardView(Vector3& view, Vector3& up) {
    open.Look();
    view = open.space.GetView();
    up = open.space.GetUp();
  }
  /// The pass of the cube and its camera, for the host's camera of now.
  void GetPass(Korvane::Box2& box, Korvane::CameraParameters& camera) {
    open.Look();
    box = open.layout.GetPassBox(GetParameters());
    camera = Korvane::MakeCubeCamera(GetParameters(), open.space);
  }
  Korvane::CubePicker::Hit PickGeometry(const Vector2& point) {
    open.Look();
    const int part = open.PickGeometry(point);
    return {part, open.mouse.arrowFaces};
  }
  int PickOverlay(const Vector2& point) {
    open.Look();
    return open.PickOverlay(point, open.arrowsVisible);
  }
};

/// A camera ten units from the origin that looks along `view` at it; its up is the y axis, or the x axis
/// in a view along y.
inline Korvane::CameraParameters LookAlong(const Korvane::Vector3& view) {
  const Korvane::Vector3 direction = view.Normalized();
  const bool vertical = direction.Cross(Korvane::Vector3(0.0, 1.0, 0.0)).Length() < 1e-9;
  const Korvane::Vector3 up = vertical ? Korvane::Vector3(1.0, 0.0, 0.0) : Korvane::Vector3(0.0, 1.0, 0.0);
  return LookAt(direction * -10.0, Korvane::Vector3(), up);
}

/// A cube in a viewport of 1024 by 768 pixels, in its top right corner, seen from the front, from the left
/// and from above, on a quiet camera. Front and up of the scene are x and y, so that the standard space is
/// the world.
struct CubeScene {
  static constexpr int WIDTH = 1024;
  static constexpr int HEIGHT = 768;

  CubeScene() : hub(LookAlong(Korvane::Vector3(-3.0, -2.0, -1.0))) {
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    SetViewport(WIDTH, HEIGHT);
  }

  void SetViewport(int width, int height) {
    Scene().viewport_width = width;
    Scene().viewport_height = height;
    cube.SetViewportSize(width, height);
  }
  void Look(const Korvane::Vector3& view) { hub.view = LookAlong(view); }
  /// `y` downward. Twice, since a hit test builds on what the one before it found.
  void Point(int x, int y) {
    cube.SetViewportMousePosition(x, y);
    cube.SetViewportMousePosition(x, y);
  }

  Korvane::ApplicationParameters& Scene() { return hub.GetApplicationParameters(); }
  Korvane::OrientorParameters& Parameters() { return cube.GetParameters(); }

  MemoryHub hub;
  RecordingRenderer renderer;
  OpenOrientor cube;
};

/// A created cube whose renderer only counts, seen straight from the front; its viewport has no size yet.
struct CountingScene {
  CountingScene() : hub(LookAlong(Korvane::Vector3(-1.0, 0.0, 0.0))) {
    cube.SetKorvane(&hub);
    cube.SetRenderer(&renderer);
    EXPECT_TRUE(cube.Create());
  }

  MemoryHub hub;
  CountingRenderer renderer;
  OpenOrientor cube;
};
