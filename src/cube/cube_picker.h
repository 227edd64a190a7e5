#pragma once

#include <cstdint>
#include <vector>

#include "cube/cube_layout.h"
#include "cube/cube_space.h"
#include "cube/overlay_quads.h"
#include "cube/quad_list.h"
#include "korvane/camera_parameters.h"
#include "korvane/renderer.h"

namespace Korvane {

class CubeLabel;

/// The camera of cube and compass.
CameraParameters MakeCubeCamera(const OrientorParameters& parameters, const CubeSpace& space);
/// That of the overlay, in which lengths are pixels.
CameraParameters MakeOverlayCamera(const OrientorParameters& parameters, const CubeSpace& space);

/// What is at a pixel. Nothing of it is the state of the cube: a pick changes nothing that is drawn.
class CubePicker {
 public:
  struct Setting {
    const OrientorParameters& parameters;
    const CubeLayout& layout;
    const CubeSpace& space;
    bool arrows = false;         // those beside a face show
    bool compassHidden = false;  // the mouse is on an overlay part
  };
  struct Hit {
    int part = -1;            // of cube or compass
    unsigned arrowFaces = 0;  // a bit for each face whose arrow was among what was offered

    bool IsByArrow() const { return IsFaceAmong(arrowFaces, part); }
  };

  CubePicker();

  /// The part of the cube or the compass at a viewport pixel, y upward. What shows nowhere near the pixel is
  /// not offered to the renderer.
  Hit Pick(Renderer& renderer, const Setting& setting, const Vector2& point);
  /// The part of the overlay at a viewport pixel, -1 for none. Puts the label, with its opacity, in its
  /// place.
  static int PickOverlay(Renderer& renderer, const Setting& setting, const OverlayQuads::State& state,
                         const CubeLabel& label, float opacity, const Vector2& point);

  /// The corners of what is offered of a part, four a quad; standard space.
  std::vector<Vector3> GetCorners(const Setting& setting, int part);

 private:
  // All that the lists are made of.
  struct Source {
    std::uint64_t spaceVersion = 0;
    float shape[12] = {};
  };

  static Source MakeSource(const Setting& setting);
  void Renew(const Setting& setting, const CameraParameters& camera);
  bool IsOutside(const Setting& setting, const Box2& box, const CameraParameters& camera,
                 const Vector2& point);

  QuadList parts;
  QuadList letters;
  QuadList ring;
  QuadList::Bounds bounds;
  Source source;
};

}  // namespace Korvane
