#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

#include "korvane/camera_operations.h"
#include "korvane/shot_parameters.h"
#include "zovhost/pivot_policy.h"
#include "zovhost/projection.h"

namespace zovhost {

/// A hub over one camera, the one that its host draws with.
///
/// The library takes two cameras for one while they are closer than 3.45e-4 units, so in a small scene a slow
/// drag would do nothing. This hub asks besides for a tenth of a pixel or so of what is seen: below
/// SAME_VIEW times the distance from the eye to the centre, or the orthographic size. Where the view is wider
/// than 3.45 units the library's own measure is the finer one, and nothing differs. The last step of a shot,
/// however small, is no such drag: a move ends at its goal.
class ViewHub : public Korvane::CameraOperations {
 public:
  /// How far a camera may move and still show the same, in sizes of what is seen.
  static constexpr double SAME_VIEW = 1e-4;

  /// `requestFrame` is called whenever something moves; not empty.
  explicit ViewHub(std::function<void()> requestFrame);

  /// Where the camera has not the proportions of the viewport, as one that was kept before the viewport
  /// changed, it gets them.
  void ApplyCameraParameters(const Korvane::CameraParameters& values) override;
  void QueryCameraParameters(Korvane::CameraParameters& values) const override;
  void RequestApplicationUpdate() override;
  bool CheckCamerasEqual(const Korvane::CameraParameters* a,
                         const Korvane::CameraParameters* b) const override;

  /// For who is made sick by a picture that moves by itself: the camera arrives in the first frame of a move
  /// that leads somewhere, and a projection becomes another in one. What the hand moves, and the shots of a
  /// story, which are what is to be seen, go on. Off by default. See WindowViewManager for what fades.
  void SetReducedMotion(bool reduced) { reducedMotion = reduced; }
  bool IsMotionReduced() const { return reducedMotion; }

  /// A move that leads somewhere is under way, but one of the projection alone.
  bool IsTravelling() const { return travel != 0 && GetShotNumber() == travel; }

  using CameraOperations::BeginShot;
  bool BeginShot(const Korvane::LookAtShotParameters& parameters) override;
  bool BeginShot(const Korvane::ZoomRectShotParameters& parameters) override;
  bool BeginShot(const Korvane::ProjectionTransitionShotParameters& parameters) override;
  bool BeginShot(const Korvane::CenterShotParameters& parameters) override;
  bool BeginShot(const Korvane::TransitionShotParameters& parameters) override;
  bool BeginShot(const Korvane::ViewAlignShotParameters& parameters) override;

  // ---- the pivot ----

  /// The point of the model under the pointer; nothing beside it.
  using PickPivot = std::function<std::optional<Korvane::Vector3>()>;

  /// Chosen when an orbit or a zoom about the pivot begins, by which the camera shows the same as before.
  /// Last at first.
  void SetPivotPolicy(PivotPolicy policy) { pivotPolicy = policy; }
  PivotPolicy GetPivotPolicy() const { return pivotPolicy; }
  /// Asked by the policy Pointer; empty: nobody can tell.
  void SetPickPivot(PickPivot pick) { pickPivot = std::move(pick); }
  /// That the policy asks for now; nothing for the one that the camera has.
  std::optional<Korvane::Vector3> FindPivot();
  /// Chooses the pivot; only where the policy asks for none it is brought into the view.
  bool ConstrainPivotToViewport() override;
  bool BeginOperation(Korvane::OperationType type, int x, int y) override;

  const Korvane::CameraParameters& GetView() const { return view; }
  /// The host's own change of the camera; asks for a frame.
  void SetView(const Korvane::CameraParameters& values);

  /// How the view is drawn.
  Projection GetProjection() const;
  /// From the near plane through the middle of a viewport pixel, origin at the bottom left; the direction has
  /// unit length. False for a camera that sees nothing.
  bool GetPixelRay(int x, int y, Korvane::Vector3& origin, Korvane::Vector3& direction) const;

  /// Pixels. The narrower side of the view keeps what it shows, the other follows the proportions, for the
  /// view and for the home camera. Sizes below 1 are taken as 1. A shot goes on, its cameras in the new
  /// shape.
  void SetViewportSize(int width, int height);
  int GetViewportWidth() const { return GetApplicationParameters().viewport_width; }
  int GetViewportHeight() const { return GetApplicationParameters().viewport_height; }

  /// Whether the user asks for it: ZOV_REDUCED_MOTION is set, and to something else than 0.
  static bool WantsReducedMotion();

 private:
  template <class Parameters>
  bool BeginMove(const Parameters& parameters);
  bool ChoosePivot();
  bool IsArriving(const Korvane::CameraParameters* camera) const;

  std::function<void()> requestFrame;
  std::uint64_t travel = 0;  // the number of the last shot that leads somewhere
  bool reducedMotion = false;
  PivotPolicy pivotPolicy = PivotPolicy::Last;
  PickPivot pickPivot;
  Korvane::CameraParameters view;
  bool hasShape = false;  // that of a viewport that has been told
};

/// Gives a camera the proportions of a viewport, width by height: the narrower side keeps its angle and its
/// orthographic size.
void ShapeToViewport(Korvane::CameraParameters& camera, double width, double height);

}  // namespace zovhost
