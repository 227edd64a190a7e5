// The fifteen forms that begin a shot, the records that they take, and their places in the hub's table.
#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <typeinfo>

#include "camera/hub_fakes.h"
#include "shots/center_shot.h"
#include "shots/closest_view_align_shot.h"
#include "shots/crane_shot.h"
#include "shots/keyframe_shot.h"
#include "shots/look_at_shot.h"
#include "shots/look_shot.h"
#include "shots/orbit_shot.h"
#include "shots/pan_zoom_shot.h"
#include "shots/projection_transition_shot.h"
#include "shots/sample_records.h"
#include "shots/shot_steps.h"
#include "shots/spin_shot.h"
#include "shots/track_shot.h"
#include "shots/transition_shot.h"
#include "shots/view_align_shot.h"
#include "shots/zoom_rect_shot.h"
#include "shots/zoom_shot.h"
#include "support/allocation_counter.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

using Log = std::vector<std::string>;

// Opens the protected operations.
class OpenHub : public CameraOperations {
 public:
  static int SlotOfOnBeginShot() { return VirtualSlot(&OpenHub::OnBeginShot); }
  static int SlotOfOnEndShot() { return VirtualSlot(&OpenHub::OnEndShot); }
  static int SlotOfBeginShot() {
    return VirtualSlot(static_cast<bool (CameraOperations::*)(Shot*)>(&OpenHub::BeginShot));
  }
};

template <class Record>
int SlotOfForm() {
  return VirtualSlot(static_cast<bool (CameraOperations::*)(const Record&)>(&CameraOperations::BeginShot));
}

class BeginShots : public ::testing::Test {
 protected:
  BeginShots() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})), observer(hub) {}
  ~BeginShots() override {
    hub.onBeginShotHook = nullptr;
    hub.EndShot();
  }

  template <class ConcreteShot, class Record>
  void ExpectBegins(const Record& record) {
    hub.EndShot();
    auto* const before = new FakeShot(hub);
    hub.BeginShot(before);
    hub.SetActiveShotObserver(&observer);
    const int told = observer.told;
    Shot* hooked = nullptr;
    hub.onBeginShotHook = [&](Shot* shot) { hooked = shot; };
    hub.recording = true;
    hub.TakeLog();
    EXPECT_TRUE(hub.BeginShot(record));
    hub.onBeginShotHook = nullptr;
    EXPECT_EQ(hub.TakeLog(), (Log{"shot observer", "end shot hook", "shot: destroyed", "request", "query",
                                  "begin shot hook", "request"}));
    hub.recording = false;
    ASSERT_TRUE(hub.IsShotActive());
    EXPECT_EQ(observer.told, told + 1);
    EXPECT_EQ(hooked, hub.GetActiveShot());
    const Shot& begun = *hub.GetActiveShot();
    EXPECT_EQ(typeid(begun), typeid(ConcreteShot));
    EXPECT_EQ(begun.GetElapsedTime(), 0.0);
    EXPECT_EQ(begun.GetUnitTime(), 0.0);
  }

  // The record with each of its numbers in turn replaced by one that is not finite.
  template <class Record>
  void ExpectRefusesBadNumbers(const Record& good, std::initializer_list<double Record::*> numbers,
                               std::initializer_list<Vector3 Record::*> vectors = {}) {
    const Shot* const running = hub.GetActiveShot();
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
      for (const auto field : numbers) {
        Record record = good;
        record.*field = bad;
        ExpectRefused(record);
      }
      for (const auto field : vectors) {
        for (int axis = 0; axis < 3; ++axis) {
          Record record = good;
          (record.*field)[axis] = bad;
          ExpectRefused(record);
        }
      }
    }
    EXPECT_EQ(hub.GetActiveShot(), running);
  }

  template <class Record>
  void ExpectRefused(const Record& record) {
    hub.recording = true;
    hub.TakeLog();
    EXPECT_FALSE(hub.BeginShot(record)) << typeid(Record).name();
    EXPECT_EQ(hub.TakeLog(), Log{});
    hub.recording = false;
  }

  MemoryHub hub;
  FakeShotObserver observer;
};

}  // namespace

TEST(HubTable, all_virtual_operations_stand_in_their_order_after_the_destructor) {
  using H = CameraOperations;
  using VectorForm = bool (H::*)(Vector3, Vector3, OperationType);
  using KeyForm = bool (H::*)(KeyID, bool, OperationType);
  using CursorForm = bool (H::*)(int, int, OperationType);
  const int slots[] = {
      VirtualSlot(&H::ApplyCameraParameters),
      VirtualSlot(&H::QueryCameraParameters),
      VirtualSlot(&H::RequestApplicationUpdate),
      VirtualSlot(&H::SetSceneBoundingSphere),
      VirtualSlot(&H::SetSceneBoundingBox),
      VirtualSlot(&H::ResetSceneBoundingSphere),
      VirtualSlot(&H::ResetSceneBoundingBox),
      VirtualSlot(&H::SetUCSBoundingSphere),
      VirtualSlot(&H::SetUCSBoundingBox),
      VirtualSlot(&H::ResetUCSBoundingSphere),
      VirtualSlot(&H::ResetUCSBoundingBox),
      VirtualSlot(&H::IsGeometrySelected),
      VirtualSlot(&H::SetGeometrySelection),
      VirtualSlot(&H::ResetGeometrySelection),
      VirtualSlot(&H::GetWorldUpDirection),
      VirtualSlot(&H::GetWorldFrontDirection),
      VirtualSlot(&H::PerformOperations),
      VirtualSlot(&H::BeginOperation),
      VirtualSlot(&H::EndOperation),
      VirtualSlot(static_cast<VectorForm>(&H::UpdateOperationParams)),
      VirtualSlot(static_cast<KeyForm>(&H::UpdateOperationParams)),
      VirtualSlot(static_cast<CursorForm>(&H::UpdateOperationParams)),
      SlotOfForm<LookAtShotParameters>(),
      SlotOfForm<ZoomRectShotParameters>(),
      SlotOfForm<ProjectionTransitionShotParameters>(),
      SlotOfForm<PanZoomShotParameters>(),
      SlotOfForm<CenterShotParameters>(),
      SlotOfForm<KeyframeShotParameters>(),
      SlotOfForm<TransitionShotParameters>(),
      SlotOfForm<ClosestViewAlignShotParameters>(),
      SlotOfForm<ViewAlignShotParameters>(),
      SlotOfForm<LookShotParameters>(),
      SlotOfForm<SpinShotParameters>(),
      SlotOfForm<CraneShotParameters>(),
      SlotOfForm<OrbitShotParameters>(),
      SlotOfForm<ZoomShotParameters>(),
      SlotOfForm<TrackShotParameters>(),
      VirtualSlot(&H::EndShot),
      VirtualSlot(&H::AdvanceActiveShot),
      VirtualSlot(&H::IsOperationActive),
      VirtualSlot(&H::IsShotActive),
      VirtualSlot(&H::GetActiveOperation),
      VirtualSlot(&H::GetActiveShot),
      VirtualSlot(&H::SetActiveShotObserver),
      VirtualSlot(static_cast<ApplicationParameters& (H::*)()>(&H::GetApplicationParameters)),
      VirtualSlot(static_cast<const ApplicationParameters& (H::*)() const>(&H::GetApplicationParameters)),
      VirtualSlot(&H::GetCameraParameters),
      VirtualSlot(&H::GetHomeCamera),
      VirtualSlot(&H::CheckCamerasEqual),
      VirtualSlot(&H::AddOperationObserver),
      VirtualSlot(&H::RemoveOperationObserver),
      VirtualSlot(&H::ConstrainPivotToViewport),
      VirtualSlot(&H::AlignToSceneUpDirection),
      VirtualSlot(&H::AutoSwitchToPerspectiveProjection),
      VirtualSlot(&H::IsSceneOutsideView),
      VirtualSlot(&H::FitAllToView),
      VirtualSlot(&H::TransitionCameraToFitBoundingBox),
      VirtualSlot(&H::TransitionCameraToFitBoundingSphere),
      VirtualSlot(&H::FitSelectionToView),
      VirtualSlot(&H::RecalculateSceneBounds),
      VirtualSlot(&H::RecalculateSelectionBounds),
      VirtualSlot(&H::RecalculateGlobalBounds),
      OpenHub::SlotOfOnBeginShot(),
      OpenHub::SlotOfOnEndShot(),
  };
  int expected = 2;  // the destructor takes the first two places
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(HubTable, the_common_begin_the_selection_box_and_the_fits_of_a_camera_are_not_virtual) {
  EXPECT_EQ(OpenHub::SlotOfBeginShot(), -1);
  EXPECT_EQ(VirtualSlot(&CameraOperations::SetBoundingBoxSelection), -1);
  EXPECT_EQ(VirtualSlot(&CameraOperations::FitBoundingBoxToView), -1);
  EXPECT_EQ(VirtualSlot(&CameraOperations::FitBoundingSphereToView), -1);
}

// ---- the records ----

TEST(ShotRecords, hold_their_fields_in_order) {
  // Each initialiser can only be read by a field of its own type and place.
  const CameraParameters camera = LookAt({1, 2, 3}, {0, 0, 0}, {0, 1, 0});
  const TransitionShotParameters transition{camera, 0.5, 2.0};
  EXPECT_EQ(transition.easeEnd, 0.5);
  EXPECT_EQ(transition.duration, 2.0);
  const ViewAlignShotParameters align{{true, false, true, false, false, true},
                                      2.0,
                                      3.0,
                                      4.0,
                                      true,
                                      false,
                                      {5, 0, 0},
                                      {6, 0, 0},
                                      {7, 0, 0},
                                      true};
  EXPECT_TRUE(align.directionFlags[5]);
  EXPECT_EQ(align.duration, 2.0);
  EXPECT_EQ(align.rollAngle, 3.0);
  EXPECT_EQ(align.panAngle, 4.0);
  EXPECT_TRUE(align.fit);
  EXPECT_FALSE(align.keepSceneUp);
  EXPECT_EQ(align.customDirection.x, 5);
  EXPECT_EQ(align.customUp.x, 6);
  EXPECT_EQ(align.customFront.x, 7);
  EXPECT_TRUE(align.useCustom);
  const ClosestViewAlignShotParameters closest{true, false, 0.1};
  EXPECT_TRUE(closest.alignUp);
  EXPECT_FALSE(closest.soft);
  EXPECT_EQ(closest.threshold, 0.1);
  const CenterShotParameters center{{1, 2, 3}, 0.5, 2.0};
  EXPECT_EQ(center.easeEnd, 0.5);
  EXPECT_EQ(center.duration, 2.0);
  const LookAtShotParameters lookAt{9, 2.0, {1, 0, 0}, {2, 0, 0}, 3.0};
  EXPECT_EQ(lookAt.reserved, 9U);
  EXPECT_EQ(lookAt.duration, 2.0);
  EXPECT_EQ(lookAt.point.x, 1);
  EXPECT_EQ(lookAt.direction.x, 2);
  EXPECT_EQ(lookAt.distance, 3.0);
  const ZoomRectShotParameters zoomRect{9, 2.0, 3.0, 4.0, 5.0};
  EXPECT_EQ(zoomRect.reserved, 9U);
  EXPECT_EQ(zoomRect.duration, 2.0);
  EXPECT_EQ(zoomRect.sidewaysOffset, 3.0);
  EXPECT_EQ(zoomRect.upwardOffset, 4.0);
  EXPECT_EQ(zoomRect.forwardOffset, 5.0);
  const PanZoomShotParameters panZoom{TARGET_CAM_END, 2.0, 3.0, 4.0, 5.0};
  EXPECT_EQ(panZoom.anchor, TARGET_CAM_END);
  EXPECT_EQ(panZoom.sidewaysDistance, 3.0);
  EXPECT_EQ(panZoom.upwardDistance, 4.0);
  EXPECT_EQ(panZoom.zoomDistance, 5.0);
  const ZoomShotParameters zoom{1, TARGET_CAM_END, 2.0, 3.0};
  EXPECT_EQ(zoom.direction, 1);
  EXPECT_EQ(zoom.duration, 2.0);
  EXPECT_EQ(zoom.amount, 3.0);
  const ProjectionTransitionShotParameters projection{0.5, 2.0, 1};
  EXPECT_EQ(projection.easeEnd, 0.5);
  EXPECT_EQ(projection.duration, 2.0);
  EXPECT_EQ(projection.targetProjection, 1);
  const KeyframeShotParameters keyframe{{camera, camera}, {0.25}, 2.0};
  EXPECT_EQ(keyframe.keyframes.size(), 2U);
  EXPECT_EQ(keyframe.times.size(), 1U);
  const TrackShotParameters track{3, TARGET_CAM_END, 2.0, 4.0, true};
  EXPECT_EQ(track.direction, 3);
  EXPECT_EQ(track.distance, 4.0);
  EXPECT_TRUE(track.keepTarget);
  const SpinShotParameters spin{1, TARGET_CAM_END, 2.0, 4.0};
  EXPECT_EQ(spin.axis, 1);
  EXPECT_EQ(spin.angle, 4.0);
  const OrbitShotParameters orbit{TARGET_CAM_END, 2.0, 3.0, 4.0};
  EXPECT_EQ(orbit.horizontalAngle, 3.0);
  EXPECT_EQ(orbit.verticalAngle, 4.0);
  const LookShotParameters look{TARGET_CAM_END, 2.0, 3.0, 4.0};
  EXPECT_EQ(look.horizontalAngle, 3.0);
  EXPECT_EQ(look.verticalAngle, 4.0);
  const CraneShotParameters crane{1, TARGET_CAM_END, 2.0, 3.0, 4.0, 5.0, true};
  EXPECT_EQ(crane.direction, 1);
  EXPECT_EQ(crane.height, 3.0);
  EXPECT_EQ(crane.sidewaysDistance, 4.0);
  EXPECT_EQ(crane.forwardRatio, 5.0);
  EXPECT_TRUE(crane.keepTarget);
}

TEST(ShotRecords, numbered_fields_have_their_width) {
  EXPECT_EQ(sizeof(LookAtShotParameters::reserved), 4U);
  EXPECT_EQ(sizeof(ZoomRectShotParameters::reserved), 8U);
  EXPECT_EQ(sizeof(ZoomShotParameters::direction), 4U);
  EXPECT_EQ(sizeof(ProjectionTransitionShotParameters::targetProjection), 4U);
  EXPECT_EQ(sizeof(TrackShotParameters::direction), 4U);
  EXPECT_EQ(sizeof(SpinShotParameters::axis), 4U);
  EXPECT_EQ(sizeof(CraneShotParameters::direction), 4U);
  EXPECT_EQ(sizeof(TargetCamPos), 4U);
}

TEST(ShotRecords, named_values_have_their_numbers) {
  EXPECT_EQ(ZoomShotParameters::DIRECTION_IN, 0);
  EXPECT_EQ(ZoomShotParameters::DIRECTION_OUT, 1);
  EXPECT_EQ(TrackShotParameters::DIRECTION_RIGHT, 0);
  EXPECT_EQ(TrackShotParameters::DIRECTION_LEFT, 1);
  EXPECT_EQ(TrackShotParameters::DIRECTION_FORWARD, 2);
  EXPECT_EQ(TrackShotParameters::DIRECTION_BACKWARD, 3);
  EXPECT_EQ(SpinShotParameters::AXIS_WORLD_UP, 0);
  EXPECT_EQ(SpinShotParameters::AXIS_CAMERA_HORIZONTAL, 1);
  EXPECT_EQ(CraneShotParameters::DIRECTION_DOWN, 0);
  EXPECT_EQ(CraneShotParameters::DIRECTION_UP, 1);
}

TEST(ShotRecords, start_out_zero) {
  const ViewAlignShotParameters align;
  for (const bool flag : align.directionFlags) EXPECT_FALSE(flag);
  EXPECT_EQ(align.duration, 0.0);
  EXPECT_EQ(align.rollAngle, 0.0);
  EXPECT_EQ(align.panAngle, 0.0);
  EXPECT_FALSE(align.fit || align.keepSceneUp || align.useCustom);
  EXPECT_EQ(align.customDirection, Vector3::Zero);
  EXPECT_EQ(align.customUp, Vector3::Zero);
  EXPECT_EQ(align.customFront, Vector3::Zero);
  const TransitionShotParameters transition;
  EXPECT_TRUE(SameBits(transition.targetCamera, CameraParameters()));
  EXPECT_EQ(transition.easeEnd, 0.0);
  EXPECT_EQ(transition.duration, 0.0);
  const CraneShotParameters crane;
  EXPECT_EQ(crane.direction, 0);
  EXPECT_EQ(crane.anchor, TARGET_CAM_START);
  EXPECT_EQ(crane.height, 0.0);
  EXPECT_FALSE(crane.keepTarget);
  const KeyframeShotParameters keyframe;
  EXPECT_TRUE(keyframe.keyframes.empty() && keyframe.times.empty());
  const LookAtShotParameters lookAt;
  EXPECT_EQ(lookAt.reserved, 0U);
  EXPECT_EQ(lookAt.distance, 0.0);
}

// ---- beginning ----

TEST_F(BeginShots, each_form_ends_the_running_shot_and_begins_its_own_kind) {
  ExpectBegins<LookAtShot>(LookAtShotParameters());
  ExpectBegins<ZoomRectShot>(ZoomRectShotParameters());
  ExpectBegins<ProjectionTransitionShot>(ProjectionTransitionShotParameters());
  ExpectBegins<PanZoomShot>(PanZoomShotParameters());
  ExpectBegins<CenterShot>(CenterShotParameters());
  ExpectBegins<KeyframeShot>(KeyframeShotParameters{{hub.view}, {}, 0.0});
  ExpectBegins<TransitionShot>(TransitionShotParameters());
  ExpectBegins<ClosestViewAlignShot>(ClosestViewAlignShotParameters());
  ExpectBegins<ViewAlignShot>(ViewAlignShotParameters());
  ExpectBegins<LookShot>(LookShotParameters());
  ExpectBegins<SpinShot>(SpinShotParameters());
  ExpectBegins<CraneShot>(CraneShotParameters());
  ExpectBegins<OrbitShot>(OrbitShotParameters());
  ExpectBegins<ZoomShot>(ZoomShotParameters());
  ExpectBegins<TrackShot>(TrackShotParameters());
}

TEST_F(BeginShots, the_record_is_copied_whole) {
  TrackShotParameters record{TrackShotParameters::DIRECTION_RIGHT, TARGET_CAM_START, 2.0, 4.0, true};
  ASSERT_TRUE(hub.BeginShot(record));
  record = TrackShotParameters();
  StepShot(hub, 2.0);
  EXPECT_TRUE(IsNear(StepShot(hub, 0.0).camera.eye, oracle::Vec(4, 0, 10), 1e-14));
}

TEST_F(BeginShots, a_shot_starts_from_the_hosts_camera_of_the_moment_it_begins) {
  hub.view.eye = {5, 0, 10};
  hub.view.centre = {5, 0, 0};
  ASSERT_TRUE(hub.BeginShot(TrackShotParameters{0, TARGET_CAM_START, 2.0, 4.0, false}));
  hub.view.eye = {77, 77, 77};
  EXPECT_TRUE(IsNear(StepShot(hub, 0.0).camera.eye, oracle::Vec(5, 0, 10), 1e-14));
}

TEST_F(BeginShots, a_record_with_a_number_that_is_not_finite_is_refused_and_the_running_shot_goes_on) {
  hub.BeginShot(SpinShotParameters());
  using Zoom = ZoomRectShotParameters;
  using Pan = PanZoomShotParameters;
  using Align = ViewAlignShotParameters;
  using Crane = CraneShotParameters;
  using LookAt = LookAtShotParameters;
  ExpectRefusesBadNumbers<LookAt>({}, {&LookAt::duration, &LookAt::distance},
                                  {&LookAt::point, &LookAt::direction});
  ExpectRefusesBadNumbers<Zoom>(
      {}, {&Zoom::duration, &Zoom::sidewaysOffset, &Zoom::upwardOffset, &Zoom::forwardOffset});
  ExpectRefusesBadNumbers<ProjectionTransitionShotParameters>(
      {}, {&ProjectionTransitionShotParameters::easeEnd, &ProjectionTransitionShotParameters::duration});
  ExpectRefusesBadNumbers<Pan>(
      {}, {&Pan::duration, &Pan::sidewaysDistance, &Pan::upwardDistance, &Pan::zoomDistance});
  ExpectRefusesBadNumbers<CenterShotParameters>(
      {}, {&CenterShotParameters::easeEnd, &CenterShotParameters::duration}, {&CenterShotParameters::point});
  ExpectRefusesBadNumbers<KeyframeShotParameters>({{hub.view}, {}, 1.0}, {&KeyframeShotParameters::duration});
  ExpectRefusesBadNumbers<TransitionShotParameters>(
      {}, {&TransitionShotParameters::easeEnd, &TransitionShotParameters::duration});
  ExpectRefusesBadNumbers<ClosestViewAlignShotParameters>({}, {&ClosestViewAlignShotParameters::threshold});
  ExpectRefusesBadNumbers<Align>({}, {&Align::duration, &Align::rollAngle, &Align::panAngle},
                                 {&Align::customDirection, &Align::customUp, &Align::customFront});
  ExpectRefusesBadNumbers<LookShotParameters>(
      {}, {&LookShotParameters::duration, &LookShotParameters::horizontalAngle,
           &LookShotParameters::verticalAngle});
  ExpectRefusesBadNumbers<SpinShotParameters>({},
                                              {&SpinShotParameters::duration, &SpinShotParameters::angle});
  ExpectRefusesBadNumbers<Crane>(
      {}, {&Crane::duration, &Crane::height, &Crane::sidewaysDistance, &Crane::forwardRatio});
  ExpectRefusesBadNumbers<OrbitShotParameters>(
      {}, {&OrbitShotParameters::duration, &OrbitShotParameters::horizontalAngle,
           &OrbitShotParameters::verticalAngle});
  ExpectRefusesBadNumbers<ZoomShotParameters>({},
                                              {&ZoomShotParameters::duration, &ZoomShotParameters::amount});
  ExpectRefusesBadNumbers<TrackShotParameters>(
      {}, {&TrackShotParameters::duration, &TrackShotParameters::distance});
}

TEST_F(BeginShots, cameras_and_times_with_a_bad_number_are_refused) {
  hub.BeginShot(SpinShotParameters());
  Random random;
  for (int i = 0; i < 200; ++i) {
    const CameraParameters broken = BrokenCamera(random);
    ExpectRefused(TransitionShotParameters{broken, 1.0, 1.0});
    ExpectRefused(KeyframeShotParameters{{hub.view, broken}, {}, 1.0});
  }
  const double nan = std::numeric_limits<double>::quiet_NaN();
  ExpectRefused(KeyframeShotParameters{{hub.view, hub.view}, {0.0, nan}, 1.0});
  EXPECT_NE(dynamic_cast<SpinShot*>(hub.GetActiveShot()), nullptr);
}

// ---- what all kinds share ----

TEST_F(BeginShots, a_duration_not_above_0_makes_the_first_step_the_last) {
  ForEachSampleRecord([this](auto record) {
    using Record = decltype(record);
    if constexpr (!std::is_same_v<Record, ClosestViewAlignShotParameters>) {
      hub.GetApplicationParameters().use_projection_transitions = true;
      for (const double duration : {0.0, -1.0, -1e300}) {
        const Step wanted = StepAt(hub, record, 1.0);
        Record quick = record;
        quick.duration = duration;
        ASSERT_TRUE(hub.BeginShot(quick));
        const Step step = StepShot(hub, 0.016);
        EXPECT_FALSE(step.goesOn) << typeid(Record).name();
        EXPECT_EQ(step.unitTime, 1.0) << typeid(Record).name();
        EXPECT_TRUE(IsNear(step.camera, wanted.camera, 0.0)) << typeid(Record).name();
      }
    }
  });
}

TEST_F(BeginShots, the_first_step_is_at_time_0_and_the_shot_runs_for_its_duration_plus_one_frame) {
  hub.GetApplicationParameters().use_projection_transitions = true;
  ForEachSampleRecord([this](const auto& record) {
    using Record = std::decay_t<decltype(record)>;
    if constexpr (!std::is_same_v<Record, ClosestViewAlignShotParameters>) {
      ASSERT_TRUE(hub.BeginShot(record));
      EXPECT_TRUE(StepShot(hub, 0.5).goesOn) << typeid(Record).name();
      EXPECT_EQ(hub.GetActiveShot()->GetUnitTime(), 0.0) << typeid(Record).name();
      EXPECT_EQ(hub.GetActiveShot()->GetElapsedTime(), 0.5) << typeid(Record).name();
      for (int i = 1; i < 4; ++i) EXPECT_TRUE(StepShot(hub, 0.5).goesOn) << typeid(Record).name();
      EXPECT_FALSE(StepShot(hub, 0.5).goesOn) << typeid(Record).name();
      EXPECT_EQ(hub.GetActiveShot()->GetUnitTime(), 1.0) << typeid(Record).name();
    }
  });
}

TEST_F(BeginShots, each_kind_eases_but_the_keyframes) {
  hub.GetApplicationParameters().use_projection_transitions = true;
  ForEachSampleRecord([this](const auto& record) {
    using Record = std::decay_t<decltype(record)>;
    if constexpr (!std::is_same_v<Record, ClosestViewAlignShotParameters>) {
      const double expected = std::is_same_v<Record, KeyframeShotParameters> ? 0.25 : oracle::Ease(0.25);
      EXPECT_NEAR(StepAt(hub, record, 0.25).unitTime, expected, 1e-15) << typeid(Record).name();
    }
  });
}

TEST_F(BeginShots, with_a_null_hub_no_kind_starts_from_anything) {
  const auto check = [](Shot& shot) {
    shot.InitShot(nullptr);
    EXPECT_EQ(shot.GetElapsedTime(), 0.0);
    CameraParameters camera = LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    for (int i = 0; i < 3; ++i) shot.PerformShot(1.0, camera);
    EXPECT_TRUE(camera.eye.IsFinite());
  };
  std::apply(
      [&](const LookAtShotParameters& lookAt, const ZoomRectShotParameters& zoomRect,
          const ProjectionTransitionShotParameters& projection, const PanZoomShotParameters& panZoom,
          const CenterShotParameters& center, const KeyframeShotParameters& keyframe,
          const TransitionShotParameters& transition, const ClosestViewAlignShotParameters& closest,
          const ViewAlignShotParameters& align, const LookShotParameters& look,
          const SpinShotParameters& spin, const CraneShotParameters& crane, const OrbitShotParameters& orbit,
          const ZoomShotParameters& zoom, const TrackShotParameters& track) {
        LookAtShot lookAtShot(lookAt);
        ZoomRectShot zoomRectShot(zoomRect);
        ProjectionTransitionShot projectionShot(projection);
        PanZoomShot panZoomShot(panZoom);
        CenterShot centerShot(center);
        KeyframeShot keyframeShot(keyframe);
        TransitionShot transitionShot(transition);
        ClosestViewAlignShot closestShot(closest);
        ViewAlignShot alignShot(align);
        LookShot lookShot(look);
        SpinShot spinShot(spin);
        CraneShot craneShot(crane);
        OrbitShot orbitShot(orbit);
        ZoomShot zoomShot(zoom);
        TrackShot trackShot(track);
        Shot* const shots[] = {&lookAtShot,   &zoomRectShot,   &projectionShot, &panZoomShot, &centerShot,
                               &keyframeShot, &transitionShot, &closestShot,    &alignShot,   &lookShot,
                               &spinShot,     &craneShot,      &orbitShot,      &zoomShot,    &trackShot};
        for (Shot* const shot : shots) check(*shot);
      },
      SampleRecords());
}

TEST_F(BeginShots, no_step_of_any_kind_allocates) {
  hub.GetApplicationParameters().use_projection_transitions = true;
  hub.view = LookAt({1, 2, 10}, {0, 0, 0}, {0, 1, 0});
  ForEachSampleRecord([this](const auto& record) {
    ASSERT_TRUE(hub.BeginShot(record));
    Shot& shot = *hub.GetActiveShot();
    CameraParameters camera = hub.view;
    const AllocationCounter counter;
    for (int i = 0; i < 100; ++i) shot.PerformShot(0.03, camera);
    EXPECT_EQ(counter.GetAllocations(), 0U) << typeid(record).name();
    EXPECT_EQ(counter.GetDeallocations(), 0U) << typeid(record).name();
    EXPECT_FALSE(IsNear(camera, hub.view, 1e-6)) << typeid(record).name() << " moved nothing";
  });
}
