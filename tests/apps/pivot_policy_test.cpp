// What the view turns about: as it was chosen, whatever the hand is on, and without a jump.
#include "zovhost/pivot_policy.h"

#include <cmath>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "korvane/pivot_ball.h"
#include "viewer_fixture.h"

namespace {

using apps_test::HEIGHT;
using apps_test::WIDTH;
using Korvane::CameraParameters;
using Korvane::Vector2;
using Korvane::Vector3;
using zovhost::FedSource;
using zovhost::PivotPolicy;

constexpr const char* TWO_PARTS =
    "o Far\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"
    "o Near\nv 1.5 0 0\nv 2.5 0 0\nv 2.5 1 0\nv 1.5 1 0\nf 4 5 6 7\n";
constexpr double SAME = 1e-9;

class PivotPolicyTest : public apps_test::ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    viewer->Open({folder.Write("parts.obj", TWO_PARTS)});
    ComeToRest();
    Press(SDLK_F1, KMOD_LSHIFT);  // the panel goes
    viewer->GetDevices().AddSource(&source, "Test");
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();  // which borrows the device
  }

  void Use(std::string_view policy) {
    viewer->GetPreferences().Edit([policy](zovview::Choices& choices) { choices.pivotPolicy = policy; });
  }
  void SelectSquare() { viewer->GetView(0).GetSelection().PickAt(At(SQUARE).x, At(SQUARE).y); }
  zovhost::PixelPosition At(const Vector3& point) const {
    const Vector2 pixel = Project(point);
    return {static_cast<int>(pixel.x), static_cast<int>(pixel.y)};
  }
  CameraParameters GetView() const { return GetHub().GetView(); }
  // The place of the point that the policy asks for.
  Vector3 GetWanted(PivotPolicy policy, const Vector3& last) {
    switch (policy) {
      case PivotPolicy::Last:
        return last;
      case PivotPolicy::Pointer:
        return SQUARE;
      case PivotPolicy::Selection:
        return viewer->GetScene()->GetParts().back().bounds.GetCenter();
      case PivotPolicy::Scene:
        return viewer->GetScene()->GetCentre();
    }
    return {};
  }
  static void ExpectSameView(const CameraParameters& a, const CameraParameters& b) {
    EXPECT_LT((a.eye - b.eye).Length(), SAME);
    EXPECT_LT((a.centre - b.centre).Length(), SAME);
    EXPECT_LT((a.up - b.up).Length(), SAME);
  }
  // The press, and a motion by nothing.
  void ExpectQuietPress(int x, int y, Uint8 button) {
    PushMotion(x, y);
    ComeToRest();
    const CameraParameters before = GetView();
    PushButton(SDL_MOUSEBUTTONDOWN, x, y, 1, button);
    window->Step(0);
    ExpectSameView(GetView(), before);
    EXPECT_TRUE(viewer->GetView(0).GetManager().GetPivotBall()->IsVisible()) << "marked";
    PushMotion(x, y);
    window->Step(0);
    ExpectSameView(GetView(), before);
  }
  void Release(int x, int y, Uint8 button) {
    PushButton(SDL_MOUSEBUTTONUP, x, y, 1, button);
    ComeToRest();
  }
  void Finger(Uint32 type, int finger, int x, int y) {
    PushFinger(type, finger, x, y);
    DrawFrames(3);
  }
  bool IsMarked() const { return viewer->GetView(0).GetManager().GetPivotBall()->IsVisible(); }
  void ForEachPolicy(const std::function<void(PivotPolicy policy, const Vector3& wanted)>& check) {
    const CameraParameters start = GetView();
    SelectSquare();
    for (const zovhost::PivotPolicyName& each : zovhost::GetPivotPolicies()) {
      SCOPED_TRACE(std::string(each.name));
      GetHub().SetView(start);
      Use(each.name);
      check(each.policy, GetWanted(each.policy, start.pivot));
    }
  }

  const Vector3 SQUARE = {1.7, 0.3, 0.0};
  FedSource source;
};

TEST_F(PivotPolicyTest, the_mouse_turns_about_what_is_wanted_and_nothing_jumps) {
  ForEachPolicy([this](PivotPolicy /*policy*/, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    ExpectQuietPress(x, y, SDL_BUTTON_LEFT);
    EXPECT_LT((GetView().pivot - wanted).Length(), 0.02);
    const double far = (GetView().eye - GetView().pivot).Length();
    const CameraParameters before = GetView();
    PushMotion(x - 60, y + 20);
    Release(x - 60, y + 20, SDL_BUTTON_LEFT);
    EXPECT_GT((GetView().eye - before.eye).Length(), 0.01);
    EXPECT_NEAR((GetView().eye - GetView().pivot).Length(), far, SAME);
    EXPECT_EQ(GetView().pivot, before.pivot);
  });
}

TEST_F(PivotPolicyTest, so_does_the_button_of_a_style) {
  viewer->GetPreferences().Edit([](zovview::Choices& each) { each.navigationStyle = "middle-orbits"; });
  ForEachPolicy([this](PivotPolicy /*policy*/, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    ExpectQuietPress(x, y, SDL_BUTTON_MIDDLE);
    EXPECT_LT((GetView().pivot - wanted).Length(), 0.02);
    Release(x, y, SDL_BUTTON_MIDDLE);
  });
}

TEST_F(PivotPolicyTest, the_wheel_goes_to_it_where_the_policy_is_no_matter_of_the_pointer) {
  ForEachPolicy([this](PivotPolicy policy, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    PushMotion(x, y);
    ComeToRest();
    const CameraParameters before = GetView();
    SDL_Event event = {};
    event.type = SDL_MOUSEWHEEL;
    event.wheel.preciseY = 2.0F;
    event.wheel.mouseX = x;
    event.wheel.mouseY = HEIGHT - 1 - y;
    SDL_PushEvent(&event);
    window->Step(0);
    ComeToRest();
    const Vector3 target = zovhost::DrawsZooms(policy) ? wanted : SQUARE;
    EXPECT_LT((GetView().pivot - target).Length(), 0.02);
    const Vector3 moved = (GetView().eye - before.eye).Normalized();
    EXPECT_GT(moved.Dot((target - before.eye).Normalized()), 1.0 - 1e-5);
  });
}

TEST_F(PivotPolicyTest, a_device_turns_about_it) {
  ForEachPolicy([this](PivotPolicy /*policy*/, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    PushMotion(x, y);
    ComeToRest();
    const CameraParameters before = GetView();
    source.Feed({0, 0, 0, 0, 300, 0});
    window->RequestFrame();
    for (int i = 0; i < 6000 && (GetView().eye - before.eye).Length() < 1e-3; ++i) window->Step(10);
    EXPECT_LT((GetView().pivot - wanted).Length(), 0.02);
    EXPECT_NEAR((GetView().eye - GetView().pivot).Length(), (before.eye - GetView().pivot).Length(), 1e-6);
    source.Feed({});
    ComeToRest();
  });
}

TEST_F(PivotPolicyTest, a_finger_turns_about_it_and_nothing_jumps) {
  ForEachPolicy([this](PivotPolicy /*policy*/, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    PushMotion(20, 20);  // the mouse is elsewhere
    ComeToRest();
    const CameraParameters before = GetView();
    Finger(SDL_FINGERDOWN, 0, x, y);
    ExpectSameView(GetView(), before);
    EXPECT_TRUE(IsMarked());
    EXPECT_LT((GetView().pivot - wanted).Length(), 0.02);
    const CameraParameters chosen = GetView();
    Finger(SDL_FINGERMOTION, 0, x - 20, y);
    ExpectSameView(GetView(), before);
    EXPECT_EQ(GetView().pivot, chosen.pivot) << "where the finger came down, not where it has gone";
    EXPECT_TRUE(IsMarked());
    Finger(SDL_FINGERMOTION, 0, x - 60, y + 20);
    EXPECT_GT((GetView().eye - before.eye).Length(), 0.01);
    EXPECT_EQ(GetView().pivot, chosen.pivot);
    EXPECT_NEAR((GetView().eye - GetView().pivot).Length(), (before.eye - chosen.pivot).Length(), SAME);
    Finger(SDL_FINGERUP, 0, x - 60, y + 20);
    ComeToRest();
    EXPECT_FALSE(IsMarked());
  });
}

TEST_F(PivotPolicyTest, a_finger_that_is_lifted_leaves_no_mark_and_the_same_view) {
  Use("pointer");
  const auto [x, y] = At(SQUARE);
  const CameraParameters before = GetView();
  Finger(SDL_FINGERDOWN, 0, x, y);
  EXPECT_TRUE(IsMarked());
  Finger(SDL_FINGERUP, 0, x, y);
  ComeToRest();
  EXPECT_FALSE(IsMarked());
  ExpectSameView(GetView(), before);
}

TEST_F(PivotPolicyTest, a_finger_beside_an_open_disc_picks_what_is_under_it) {
  Use("pointer");
  PushMotion(WIDTH - 200, 200);
  ComeToRest();
  viewer->GetView(0).Run(*zovview::FindViewCommand("disc-full-navigation"));
  ComeToRest();
  const auto [x, y] = At(SQUARE);
  Finger(SDL_FINGERDOWN, 0, x, y);
  EXPECT_LT((GetView().pivot - SQUARE).Length(), 0.02);
  Finger(SDL_FINGERUP, 0, x, y);
  ComeToRest();
}

TEST_F(PivotPolicyTest, two_fingers_that_enlarge_take_it_along_only_where_zooms_do) {
  ForEachPolicy([this](PivotPolicy policy, const Vector3& wanted) {
    const auto [x, y] = At(SQUARE);
    Finger(SDL_FINGERDOWN, 0, x - 60, y);
    Finger(SDL_FINGERDOWN, 1, x + 60, y);
    EXPECT_FALSE(IsMarked()) << "it is no orbit";
    Finger(SDL_FINGERMOTION, 0, x - 90, y);
    Finger(SDL_FINGERMOTION, 1, x + 90, y);
    EXPECT_LT((GetView().pivot - (zovhost::DrawsZooms(policy) ? wanted : SQUARE)).Length(), 0.05);
    Finger(SDL_FINGERUP, 0, x - 90, y);
    Finger(SDL_FINGERUP, 1, x + 90, y);
    ComeToRest();
  });
}

// The cube knows nothing of what lies behind it.
TEST_F(PivotPolicyTest, the_cube_turns_about_it_and_picks_nothing_behind_itself) {
  ForEachPolicy([this](PivotPolicy policy, const Vector3& wanted) {
    const Vector3 last = GetView().pivot;
    PushMotion(WIDTH - 60, HEIGHT - 60);
    ComeToRest();
    PushButton(SDL_MOUSEBUTTONDOWN, WIDTH - 60, HEIGHT - 60, 1);
    PushMotion(WIDTH - 90, HEIGHT - 60);
    window->Step(0);
    ASSERT_TRUE(viewer->GetView(0).GetCube().IsDragActive());
    EXPECT_LT((GetView().pivot - (policy == PivotPolicy::Pointer ? last : wanted)).Length(), SAME);
    Release(WIDTH - 90, HEIGHT - 60, SDL_BUTTON_LEFT);
  });
}

TEST_F(PivotPolicyTest, beside_the_model_the_last_one_stays) {
  Use("pointer");
  const Vector3 last = GetView().pivot;
  ExpectQuietPress(WIDTH / 2, 20, SDL_BUTTON_LEFT);
  EXPECT_EQ(GetView().pivot, last);
  Release(WIDTH / 2, 20, SDL_BUTTON_LEFT);
}

TEST_F(PivotPolicyTest, without_a_selection_its_policy_is_that_of_the_scene) {
  Use("selection");
  EXPECT_EQ(GetHub().FindPivot(), viewer->GetScene()->GetCentre());
}

TEST_F(PivotPolicyTest, a_command_chooses_each) {
  std::set<std::string_view> names;
  for (const zovhost::PivotPolicyName& each : zovhost::GetPivotPolicies()) {
    EXPECT_TRUE(names.insert(each.name).second);
    const zovview::ViewCommand* const command = zovview::FindViewCommand("pivot-" + std::string(each.name));
    ASSERT_NE(command, nullptr) << each.name;
    EXPECT_STREQ(command->label, each.label);
    viewer->GetView(0).Run(*command);
    EXPECT_EQ(GetHub().GetPivotPolicy(), each.policy);
    EXPECT_TRUE(command->isOn(viewer->GetView(0).GetTarget()));
  }
  EXPECT_EQ(zovhost::FindPivotPolicy("of nobody"), PivotPolicy::Last);
  EXPECT_EQ(names.size(), 4u);
}

TEST_F(PivotPolicyTest, a_place_that_is_none_is_not_taken) {
  const Vector3 last = GetView().pivot;
  GetHub().SetPivotPolicy(PivotPolicy::Pointer);
  GetHub().SetPickPivot([] { return Vector3(std::nan(""), 0, 0); });
  GetHub().ConstrainPivotToViewport();
  EXPECT_EQ(GetView().pivot, last);
  GetHub().SetPickPivot({});
  GetHub().ConstrainPivotToViewport();
  EXPECT_EQ(GetView().pivot, last);
}

}  // namespace
