#include "zov/zov_camera_operations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "facade/facade_host.h"
#include "korvane/camera_operations.h"
#include "support/allocation_counter.h"
#include "support/manual_platform.h"
#include "support/random.h"
#include "support/virtual_slot.h"

namespace {

using Korvane::Box3;
using Korvane::CameraOperations;
using Korvane::CameraParameters;
using Korvane::Vector3;

constexpr double INFINITE = std::numeric_limits<double>::infinity();

TEST(ZovCameraOperations, have_the_host_operations_first_and_the_destructor_last) {
  using H = zovCameraOperations;
  EXPECT_EQ(VirtualSlot(&H::apply_camera_parameters), 0);
  EXPECT_EQ(VirtualSlot(&H::query_camera_parameters), 1);
  EXPECT_EQ(VirtualSlot(&H::request_application_update), 2);
  EXPECT_EQ(VirtualSlot(&H::perform_operations), 3);
  EXPECT_EQ(VirtualSlot(&H::is_shot_active), 4);
  EXPECT_EQ(VirtualSlot(&H::recalculate_selection_bounds), 5);
  EXPECT_EQ(VirtualSlot(&H::recalculate_global_bounds), 6);
  struct Longer : FacadeHost {
    virtual void Next() {}
  };
  EXPECT_EQ(VirtualSlot(&Longer::Next), 9);  // the destructor takes 7 and 8
  EXPECT_EQ(VirtualSlot(&H::fit_all_to_view), -1);
}

// ---- two directions ----

// Counts the calls of each override, and then leaves it to the library.
class OverridingHost : public FacadeHost {
 public:
  bool perform_operations() override { return ++performs, zovCameraOperations::perform_operations(); }
  bool is_shot_active() const override { return ++shotQueries, zovCameraOperations::is_shot_active(); }
  void recalculate_selection_bounds() override {
    ++selectionBounds;
    zovCameraOperations::recalculate_selection_bounds();
  }
  void recalculate_global_bounds() override {
    ++globalBounds;
    zovCameraOperations::recalculate_global_bounds();
  }

  int performs = 0;
  mutable int shotQueries = 0;
  int selectionBounds = 0;
  int globalBounds = 0;
};

TEST(ZovCameraOperations, bring_a_frame_from_either_side_to_the_override_once) {
  OverridingHost host;
  host.perform_operations();
  EXPECT_EQ(host.performs, 1);
  host.korvane().PerformOperations();
  EXPECT_EQ(host.performs, 2);
  EXPECT_EQ(host.queried, 2);
}

TEST(ZovCameraOperations, bring_the_question_for_a_shot_from_either_side_to_the_override_once) {
  OverridingHost host;
  EXPECT_FALSE(host.is_shot_active());
  EXPECT_EQ(host.shotQueries, 1);
  EXPECT_TRUE(host.fit_all_to_view());
  host.shotQueries = 0;
  EXPECT_TRUE(host.korvane().IsShotActive());
  EXPECT_EQ(host.shotQueries, 1);
}

TEST(ZovCameraOperations, bring_the_bounds_from_either_side_to_the_override_once) {
  OverridingHost host;
  host.recalculate_selection_bounds();
  EXPECT_EQ(host.selectionBounds, 1);
  host.korvane().RecalculateSelectionBounds();
  EXPECT_EQ(host.selectionBounds, 2);
  host.recalculate_global_bounds();
  EXPECT_EQ(host.globalBounds, 1);
  host.korvane().RecalculateGlobalBounds();
  EXPECT_EQ(host.globalBounds, 2);
  EXPECT_TRUE(host.fit_all_to_view());
  EXPECT_EQ(host.globalBounds, 3);
  host.recalculate_scene_bounds();  // asks for both: nothing is selected
  EXPECT_EQ(host.selectionBounds, 3);
  EXPECT_EQ(host.globalBounds, 4);
}

TEST(ZovCameraOperations, answer_the_library_with_what_the_override_says) {
  class Refusing : public FacadeHost {
   public:
    bool perform_operations() override { return true; }
    bool is_shot_active() const override { return true; }
  };
  Refusing host;
  EXPECT_TRUE(host.korvane().PerformOperations());
  EXPECT_TRUE(host.korvane().IsShotActive());
  EXPECT_EQ(host.queried, 0);
}

TEST(ZovCameraOperations, without_an_override_do_what_the_library_does) {
  ManualPlatform platform;
  FacadeHost host;
  host.view = host.get_home_camera();
  EXPECT_FALSE(host.perform_operations());
  EXPECT_FALSE(host.korvane().PerformOperations());
  host.recalculate_global_bounds();
  host.recalculate_selection_bounds();
  EXPECT_TRUE(host.fit_all_to_view());
  EXPECT_TRUE(host.is_shot_active());
  EXPECT_TRUE(host.korvane().IsShotActive());
  int frames = 0;
  for (; host.perform_operations(); ++frames) platform.Advance(100);
  EXPECT_FALSE(host.is_shot_active());
  EXPECT_GE(frames, 5);
}

TEST(ZovCameraOperations, bring_the_pure_operations_to_the_host_once) {
  FacadeHost host;
  host.korvane().RequestApplicationUpdate();
  EXPECT_EQ(host.requested, 1);
  CameraParameters camera;
  camera.up = Vector3(0.0, 3.0, 0.0);
  camera.left_fov = 20.0;
  camera.projection_transition = 0.5;
  host.korvane().ApplyCameraParameters(camera);
  EXPECT_EQ(host.applied, 1);
  EXPECT_EQ(host.view.left_fov(), qmAngle(20.0, qmAngleDegrees));
  CameraParameters back;
  host.korvane().QueryCameraParameters(back);
  EXPECT_EQ(host.queried, 1);
  EXPECT_EQ(back.up, camera.up);  // the length as well
  EXPECT_EQ(back.left_fov, 20.0);
  EXPECT_EQ(back.projection_transition, 0.5);
}

TEST(ZovCameraOperations, keep_what_a_host_does_not_fill_in) {
  class Lazy : public FacadeHost {
   public:
    void query_camera_parameters(zovCameraParameters& camera) const override {
      camera.set_eye(qmPoint3(1.0, 2.0, 3.0));
    }
  };
  Lazy host;
  CameraParameters camera;
  camera.page_scale = 7.0;
  host.korvane().QueryCameraParameters(camera);
  EXPECT_EQ(camera.eye, Vector3(1.0, 2.0, 3.0));
  EXPECT_EQ(camera.page_scale, 7.0);
}

// ---- what is forwarded ----

// The same view within the library, without the facade.
class PlainHub : public CameraOperations {
 public:
  void ApplyCameraParameters(const CameraParameters& camera) override { view = camera; }
  void QueryCameraParameters(CameraParameters& camera) const override { camera = view; }
  void RequestApplicationUpdate() override {}

  CameraParameters view;
};

// A facade and a plain hub that have been told the same.
struct Twins {
  FacadeHost facade;
  PlainHub plain;

  void Both(const std::function<void(CameraOperations&)>& tell) {
    tell(facade.korvane());
    tell(plain);
  }
  void SetView(const CameraParameters& camera) {
    facade.view = zovCameraParameters(camera);
    plain.view = camera;
  }
  void Frames(ManualPlatform& platform) {
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(facade.perform_operations(), plain.PerformOperations());
      platform.Advance(200);
    }
  }
};

::testing::AssertionResult SameCamera(const CameraParameters& a, const CameraParameters& b) {
  const bool same = Korvane::CameraCheckEqual(&a, &b) && a.perspective_with_ortho == b.perspective_with_ortho;
  return (same ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
         << "eyes " << a.eye.x << " " << a.eye.y << " " << a.eye.z << ", " << b.eye.x << " " << b.eye.y << " "
         << b.eye.z;
}

bool SameBox(const Box3& a, const Box3& b) {
  return (a.GetCenter() - b.GetCenter()).Length() < 1e-12 && (a.GetExtent() - b.GetExtent()).Length() < 1e-12;
}

void ExpectSameBounds(const CameraOperations& a, const CameraOperations& b) {
  const Korvane::ApplicationParameters& x = a.GetApplicationParameters();
  const Korvane::ApplicationParameters& y = b.GetApplicationParameters();
  EXPECT_EQ(x.scene_bound_radius, y.scene_bound_radius);
  EXPECT_EQ(x.scene_bound_centre, y.scene_bound_centre);
  EXPECT_TRUE(SameBox(x.scene_bound_box, y.scene_bound_box));
  EXPECT_EQ(x.ucs_bound_radius, y.ucs_bound_radius);
  EXPECT_EQ(x.ucs_bound_centre, y.ucs_bound_centre);
  EXPECT_TRUE(SameBox(x.ucs_bound_box, y.ucs_bound_box));
  EXPECT_EQ(x.selected_bound_radius, y.selected_bound_radius);
  EXPECT_EQ(x.selected_bound_centre, y.selected_bound_centre);
  EXPECT_TRUE(SameBox(x.selected_bound_box, y.selected_bound_box));
}

struct Forwarded {
  const char* name;
  std::function<bool(zovCameraOperations&)> facade;
  std::function<bool(CameraOperations&)> plain;
};

const qmPoint3 CENTRE(4.0, -1.0, 2.0);
const Vector3 PLAIN_CENTRE(4.0, -1.0, 2.0);
const qmBox3 BOX(qmPoint3(2.0, -2.0, -2.0), qmPoint3(6.0, 0.0, 6.0));
const Box3 PLAIN_BOX(Vector3(4.0, -1.0, 2.0), Vector3(2.0, 1.0, 4.0));

// Operations without a result count as true.
template <class Call>
bool Done(Call call) {
  call();
  return true;
}

std::vector<Forwarded> AllForwarded() {
  using F = zovCameraOperations;
  using P = CameraOperations;
  return {
      {"align_to_scene_up_direction", [](F& f) { return f.align_to_scene_up_direction(0.5); },
       [](P& p) { return p.AlignToSceneUpDirection(0.5); }},
      {"auto_switch_to_perspective_projection",
       [](F& f) { return f.auto_switch_to_perspective_projection(); },
       [](P& p) { return p.AutoSwitchToPerspectiveProjection(); }},
      {"constrain_pivot_to_viewport", [](F& f) { return f.constrain_pivot_to_viewport(); },
       [](P& p) { return p.ConstrainPivotToViewport(); }},
      {"fit_all_to_view", [](F& f) { return f.fit_all_to_view(); }, [](P& p) { return p.FitAllToView(); }},
      {"fit_selection_to_view", [](F& f) { return f.fit_selection_to_view(); },
       [](P& p) { return p.FitSelectionToView(); }},
      {"is_geometry_selected", [](F& f) { return f.is_geometry_selected(); },
       [](P& p) { return p.IsGeometrySelected(); }},
      {"recalculate_scene_bounds", [](F& f) { return Done([&] { f.recalculate_scene_bounds(); }); },
       [](P& p) { return Done([&] { p.RecalculateSceneBounds(); }); }},
      {"reset_geometry_selection", [](F& f) { return Done([&] { f.reset_geometry_selection(); }); },
       [](P& p) { return Done([&] { p.ResetGeometrySelection(); }); }},
      {"reset_scene_bounding_box", [](F& f) { return Done([&] { f.reset_scene_bounding_box(); }); },
       [](P& p) { return Done([&] { p.ResetSceneBoundingBox(); }); }},
      {"reset_scene_bounding_sphere", [](F& f) { return Done([&] { f.reset_scene_bounding_sphere(); }); },
       [](P& p) { return Done([&] { p.ResetSceneBoundingSphere(); }); }},
      {"reset_ucs_bounding_box", [](F& f) { return Done([&] { f.reset_ucs_bounding_box(); }); },
       [](P& p) { return Done([&] { p.ResetUCSBoundingBox(); }); }},
      {"reset_ucs_bounding_sphere", [](F& f) { return Done([&] { f.reset_ucs_bounding_sphere(); }); },
       [](P& p) { return Done([&] { p.ResetUCSBoundingSphere(); }); }},
      {"set_bounding_box_selection", [](F& f) { return Done([&] { f.set_bounding_box_selection(BOX); }); },
       [](P& p) { return Done([&] { p.SetBoundingBoxSelection(PLAIN_BOX, PLAIN_CENTRE); }); }},
      {"set_geometry_selection", [](F& f) { return Done([&] { f.set_geometry_selection(3.0, CENTRE); }); },
       [](P& p) { return Done([&] { p.SetGeometrySelection(3.0, PLAIN_CENTRE); }); }},
      {"set_scene_bounding_box", [](F& f) { return Done([&] { f.set_scene_bounding_box(BOX); }); },
       [](P& p) { return Done([&] { p.SetSceneBoundingBox(PLAIN_BOX, PLAIN_CENTRE); }); }},
      {"set_scene_bounding_sphere",
       [](F& f) { return Done([&] { f.set_scene_bounding_sphere(3.0, CENTRE); }); },
       [](P& p) { return Done([&] { p.SetSceneBoundingSphere(3.0, PLAIN_CENTRE); }); }},
      {"set_ucs_bounding_box", [](F& f) { return Done([&] { f.set_ucs_bounding_box(BOX); }); },
       [](P& p) { return Done([&] { p.SetUCSBoundingBox(PLAIN_BOX, PLAIN_CENTRE); }); }},
      {"set_ucs_bounding_sphere", [](F& f) { return Done([&] { f.set_ucs_bounding_sphere(3.0, CENTRE); }); },
       [](P& p) { return Done([&] { p.SetUCSBoundingSphere(3.0, PLAIN_CENTRE); }); }},
      {"transition_camera_to_fit_bounding_box",
       [](F& f) { return f.transition_camera_to_fit_bounding_box(BOX); },
       [](P& p) { return p.TransitionCameraToFitBoundingBox(PLAIN_CENTRE, PLAIN_BOX); }},
      {"transition_camera_to_fit_bounding_sphere",
       [](F& f) { return f.transition_camera_to_fit_bounding_sphere(CENTRE, 3.0); },
       [](P& p) { return p.TransitionCameraToFitBoundingSphere(PLAIN_CENTRE, 3.0); }},
  };
}

CameraParameters RandomCamera(Random& random) {
  CameraParameters camera;
  camera.eye = random.Point(20.0);
  camera.centre = camera.eye + random.Direction() * random.Uniform(1.0, 20.0);
  camera.up = random.Direction();
  camera.pivot = random.Point(20.0);
  camera.left_fov = random.Uniform(10.0, 40.0);
  camera.right_fov = random.Uniform(10.0, 40.0);
  camera.top_fov = random.Uniform(10.0, 40.0);
  camera.bottom_fov = random.Uniform(10.0, 40.0);
  camera.ortho_width = random.Uniform(1.0, 30.0);
  camera.ortho_height = random.Uniform(1.0, 30.0);
  if (random.Coin()) camera.projection_type = CameraParameters::ProjectionType::Orthographic;
  return camera;
}

void Describe(Random& random, Twins& twins) {
  const double radius = random.Uniform(1.0, 9.0);
  const Box3 box(random.Point(5.0), Vector3(1.0, 2.0, 3.0));
  const bool selected = random.Coin();
  const bool isBox = random.Coin();
  twins.Both([&](CameraOperations& hub) {
    Korvane::ApplicationParameters& settings = hub.GetApplicationParameters();
    settings.global_bound_radius = radius;
    settings.global_bound_box = box;
    settings.global_bound_centre = box.GetCenter();
    if (isBox) settings.global_bound_geometry = Korvane::ApplicationParameters::BoundGeometryType::Box;
    hub.SetUCSBoundingBox(Box3(box.GetCenter() * 2.0, Vector3(1.0)), box.GetCenter() * 2.0);
    if (selected) hub.SetGeometrySelection(0.5 * radius, box.GetCenter() * 3.0);
  });
}

// Of random views, in which the one and the other way of each operation is taken.
TEST(ZovCameraOperations, forward_each_operation_to_the_like_named_one) {
  for (const Forwarded& each : AllForwarded()) {
    Random random;
    for (int round = 0; round < 20; ++round) {
      ManualPlatform platform;
      Twins twins;
      twins.SetView(RandomCamera(random));
      Describe(random, twins);
      ASSERT_EQ(each.facade(twins.facade), each.plain(twins.plain)) << each.name;
      ExpectSameBounds(twins.facade.korvane(), twins.plain);
      ASSERT_EQ(twins.facade.is_geometry_selected(), twins.plain.IsGeometrySelected()) << each.name;
      ASSERT_EQ(twins.facade.is_shot_active(), twins.plain.IsShotActive()) << each.name;
      twins.Frames(platform);
      ASSERT_TRUE(SameCamera(twins.facade.view.korvane(), twins.plain.view)) << each.name;
      ASSERT_TRUE(
          SameCamera(twins.facade.get_camera_parameters().korvane(), twins.plain.GetCameraParameters()))
          << each.name;
    }
  }
}

TEST(ZovCameraOperations, fit_a_box_and_a_sphere_as_the_library_does) {
  Random random;
  for (int round = 0; round < 100; ++round) {
    Twins twins;
    const CameraParameters start = RandomCamera(random);
    const Vector3 way = random.Direction();
    const Vector3 up = random.Direction();
    const qmUnitVec3 direction(qmVector3(way.x, way.y, way.z));
    const qmUnitVec3 upward(qmVector3(up.x, up.y, up.z));
    zovCameraParameters fitted(start);
    CameraParameters expected = start;
    ASSERT_TRUE(twins.facade.fit_bounding_box_to_view(BOX, direction, upward, fitted));
    ASSERT_TRUE(twins.plain.FitBoundingBoxToView(PLAIN_CENTRE, PLAIN_BOX, way, up, expected));
    ASSERT_TRUE(SameCamera(fitted.korvane(), expected));
    fitted = zovCameraParameters(start);
    expected = start;
    ASSERT_TRUE(twins.facade.fit_bounding_sphere_to_view(CENTRE, 3.0, direction, upward, fitted));
    ASSERT_TRUE(twins.plain.FitBoundingSphereToView(PLAIN_CENTRE, 3.0, way, up, expected));
    ASSERT_TRUE(SameCamera(fitted.korvane(), expected));
  }
}

TEST(ZovCameraOperations, leave_the_camera_alone_where_nothing_can_be_fitted) {
  const FacadeHost host;
  zovCameraParameters camera = host.view;
  camera.set_page_scale(5.0);
  const qmUnitVec3 direction(qmVector3(1.0, 0.0, 0.0));
  const qmUnitVec3 up(qmVector3(0.0, 1.0, 0.0));
  EXPECT_FALSE(host.fit_bounding_sphere_to_view(CENTRE, 0.0, direction, up, camera));
  EXPECT_FALSE(host.fit_bounding_sphere_to_view(CENTRE, INFINITE, direction, up, camera));
  EXPECT_FALSE(
      host.fit_bounding_box_to_view(qmBox3(qmPoint3(), qmPoint3(INFINITE, 0.0, 0.0)), direction, up, camera));
  EXPECT_EQ(camera.page_scale(), 5.0);
  EXPECT_EQ(camera.eye(), qmPoint3());
}

TEST(ZovCameraOperations, compare_cameras_and_see_the_scene_as_the_library_does) {
  Twins twins;
  CameraParameters camera = twins.plain.GetHomeCamera();
  const zovCameraParameters home(camera);
  EXPECT_TRUE(twins.facade.check_cameras_equal(home, home));
  EXPECT_FALSE(twins.facade.is_scene_outside_view(home));
  camera.centre = camera.eye * 2.0;  // turned round
  const zovCameraParameters away(camera);
  EXPECT_FALSE(twins.facade.check_cameras_equal(home, away));
  camera.eye = Vector3(9.0, 9.0, 9.0);
  camera.centre = Vector3(19.0, 19.0, 19.0);
  EXPECT_TRUE(twins.facade.is_scene_outside_view(zovCameraParameters(camera)));
}

TEST(ZovCameraOperations, tell_the_directions_of_scene_and_world) {
  FacadeHost host;
  zovApplicationParameters& settings = host.get_application_parameters();
  settings.set_scene_up_direction(qmUnitVec3(qmVector3(0.0, 0.0, 1.0)));
  settings.set_world_up_direction(qmUnitVec3(qmVector3(1.0, 0.0, 0.0)));
  settings.set_world_front_direction(qmUnitVec3(qmVector3(0.0, 1.0, 0.0)));
  EXPECT_EQ(host.get_world_up_direction(), qmUnitVec3(qmVector3(0.0, 0.0, 1.0)));
  EXPECT_EQ(host.get_world_front_direction(), qmUnitVec3(qmVector3(1.0, 0.0, 0.0)));
  settings.set_scene_is_world(false);
  EXPECT_EQ(host.get_world_up_direction(), qmUnitVec3(qmVector3(1.0, 0.0, 0.0)));
  EXPECT_EQ(host.get_world_front_direction(), qmUnitVec3(qmVector3(0.0, 1.0, 0.0)));
}

TEST(ZovCameraOperations, hold_the_settings_and_the_home_camera_of_the_view) {
  FacadeHost host;
  host.get_application_parameters().set_viewport_width(321);
  EXPECT_EQ(host.korvane().GetApplicationParameters().viewport_width, 321);
  host.get_home_camera().set_page_scale(6.0);
  EXPECT_EQ(host.korvane().GetHomeCamera().page_scale, 6.0);
  const FacadeHost& looked = host;
  EXPECT_EQ(looked.get_application_parameters().viewport_width(), 321);
  EXPECT_EQ(&looked.korvane(), &host.korvane());
}

TEST(ZovCameraOperations, take_an_empty_box_for_the_whole_model) {
  FacadeHost host;
  host.set_scene_bounding_box(BOX);
  host.set_scene_bounding_box(qmBox3());
  EXPECT_EQ(host.get_application_parameters().scene_bound_box(),
            host.get_application_parameters().global_bound_box());
}

TEST(ZovCameraOperations, change_nothing_for_numbers_that_are_not_finite) {
  FacadeHost host;
  host.set_scene_bounding_box(BOX);
  host.set_scene_bounding_sphere(3.0, CENTRE);
  host.set_scene_bounding_box(qmBox3(qmPoint3(INFINITE, 0.0, 0.0), qmPoint3(1.0, 1.0, 1.0)));
  host.set_scene_bounding_sphere(std::numeric_limits<double>::quiet_NaN(), CENTRE);
  EXPECT_EQ(host.get_application_parameters().scene_bound_box(), BOX);
  EXPECT_EQ(host.get_application_parameters().scene_bound_radius(), 3.0);
  EXPECT_FALSE(host.align_to_scene_up_direction(INFINITE));
}

TEST(ZovCameraOperations, take_changes_of_mind_within_what_the_host_is_asked) {
  class Restless : public FacadeHost {
   public:
    void apply_camera_parameters(const zovCameraParameters& camera) override {
      FacadeHost::apply_camera_parameters(camera);
      EXPECT_FALSE(perform_operations());
      korvane().EndShot();
      get_application_parameters().set_scene_scale(2.0);
    }
  };
  ManualPlatform platform;
  Restless host;
  host.view = host.get_home_camera();
  EXPECT_TRUE(host.fit_all_to_view());
  host.perform_operations();
  platform.Advance(100);
  host.perform_operations();
  EXPECT_EQ(host.applied, 1);
  EXPECT_FALSE(host.is_shot_active());
}

TEST(ZovCameraOperations, allocate_nothing_in_a_frame) {
  ManualPlatform platform;
  FacadeHost host;
  host.view = host.get_home_camera();
  host.korvane().BeginOperation(Korvane::OPERATION_ORBIT, 400, 300);
  host.perform_operations();
  const AllocationCounter counter;
  for (int x = 400; x < 500; ++x) {
    host.korvane().UpdateOperationParams(x, 300, Korvane::OPERATION_ORBIT);
    platform.Advance(16);
    host.perform_operations();
  }
  EXPECT_EQ(counter.GetAllocations(), 0U);
  EXPECT_GT(host.applied, 90);
}

}  // namespace
