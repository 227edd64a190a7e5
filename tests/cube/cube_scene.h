#pragma once

#include <vector>

#include "korvane/orientor.h"
#include "support/cameras.h"
#include "support/counting_renderer.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

/// A cube whose state lies open, as to a host that derives from it.
class OpenOrientor : public Korvane::Orientor {
 public:
  using Orientor::accumulatedDragX;
  using Orientor::accumulatedDragY;
  using Orientor::activeOverlayPart;
  using Orientor::activePart;
  using Orientor::activeUCSName;
  using Orientor::arrowsVisible;
  using Orientor::closestDot;
  using Orientor::closestPart;
  using Orientor::defaultUCSName;
  using Orientor::dragging;
  using Orientor::faceArrows;
  using Orientor::fade;
  using Orientor::highlightedPart;
  using Orientor::highlightedUCSLabel;
  using Orientor::labelCompassState;
  using Orientor::lastLocation;
  using Orientor::menuOpen;
  using Orientor::mirror;
  using Orientor::mouseCaptured;
  using Orientor::mouseInRegion;
  using Orientor::mousePressed;
  using Orientor::mouseX;
  using Orientor::mouseY;
  using Orientor::opacity;
  using Orientor::overlayNames;
  using Orientor::partDirections;
  using Orientor::partNames;
  using Orientor::pressedOverlayPart;
  using Orientor::rawOverlayPart;
  using Orientor::savedAlignOrbitUp;
  using Orientor::savedOrbitMultiplier;
  using Orientor::savedPreserveOrbitUp;
  using Orientor::screenSize;
  using Orientor::ucsLabel;

  using Orientor::ChangeBasisStandardToWorld;
  using Orientor::ChangeBasisWorldToStandard;
  using Orientor::ConvertVectorsToWorldSpace;
  using Orientor::ConvertVectorToWorldSpace;
  using Orientor::DrawCompassPart;
  using Orientor::DrawOverlay;
  using Orientor::GetOverlayCamera;
  using Orientor::GetPerspectiveCamera;
  using Orientor::GetSelectionGeometry;
  using Orientor::GetSelectionOverlay;
  using Orientor::GetStandardView;
  using Orientor::Update;
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
    cube.Create();
  }

  MemoryHub hub;
  CountingRenderer renderer;
  OpenOrientor cube;
};
