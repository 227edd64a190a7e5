// What the film strip costs on a building: a draw of the scene for each picture, once, and none while one
// slides along it.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

#include "korvane/helm_disc_observer.h"
#include "korvane/rewind_history.h"
#include "lone_view.h"
#include "tour/disc_wedges.h"
#include "zovhost/scene.h"

namespace {

using Korvane::CameraParameters;
using Korvane::RewindHistory;
using Korvane::Vector3;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

constexpr int COUNT = 100;

class FilmStripTest : public apps_test::LoneViewTest {
 protected:
  void SetUp() override {
    LoneViewTest::SetUp();
    view->GetRenderer().SetSceneDraw([this](const CameraParameters&, int, int) { ++sceneDraws; });
    view->SetScene(*building);
  }

  RewindHistory& GetHistory() { return *view->GetDisc().GetHistory(); }

  // As the camera on its way around the building; the last is the present view.
  void Fill() {
    const CameraParameters start = view->GetHub().GetView();
    const Vector3 arm = start.eye - start.centre;
    CameraParameters camera = start;
    for (int i = 0; i < COUNT; ++i) {
      const double angle = 0.02 * (i - COUNT);
      const Vector3 turned(arm.x * std::cos(angle) - arm.y * std::sin(angle),
                           arm.x * std::sin(angle) + arm.y * std::cos(angle), arm.z);
      camera.eye = camera.centre + turned;
      camera.up = Vector3(0, 0, 1);
      GetHistory().AddHistoryElement(camera, nullptr);
    }
    view->GetHub().SetView(camera);
  }

  std::unique_ptr<zovhost::Scene> building = zovhost::MakeDemoBuilding();
  int sceneDraws = 0;  // for pictures; the frames are the host's own
};

TEST_F(FilmStripTest, each_picture_costs_one_draw_of_the_scene) {
  Fill();
  EXPECT_EQ(GetHistory().GetElementCount(), COUNT);
  EXPECT_EQ(sceneDraws, COUNT);
  GetHistory().UpdateThumbnails();
  EXPECT_EQ(sceneDraws, COUNT) << "all are there";
}

TEST_F(FilmStripTest, a_scrub_over_100_views_draws_the_scene_for_nothing_but_the_frames) {
  Fill();
  const CameraParameters newest = view->GetHub().GetView();
  Send(Type::MouseMove);
  Draw();
  view->Run(*zovview::FindViewCommand("disc-full-navigation"));
  Draw();
  const auto rewind = static_cast<int>(Korvane::HelmDiscZone::Rewind);
  ASSERT_TRUE(zovview::FindWedge(view->GetDisc(), rewind, hand.x, hand.y));
  Send(Type::MouseMove);
  Draw();
  const int before = sceneDraws;
  Send(Type::MouseDown);
  CameraParameters first;
  ASSERT_TRUE(GetHistory().GetElementCamera(0, first));
  int moved = 0;
  // 68 pixels from one to the next.
  for (int step = 0; step < 68 * COUNT / 17 + 20; ++step) {
    const Vector3 eye = view->GetHub().GetView().eye;
    hand.x -= 17;
    Send(Type::MouseMove);
    Draw();
    ASSERT_EQ(sceneDraws, before) << "step " << step;
    if (view->GetHub().GetView().eye != eye) ++moved;
  }
  EXPECT_GT(moved, COUNT) << "the view follows between the pictures, too";
  Send(Type::MouseUp);
  Draw();
  EXPECT_EQ(GetHistory().GetCurrentElementIndex(), 0);
  EXPECT_LT((view->GetHub().GetView().eye - first.eye).Length(), 1e-9);
  EXPECT_GT((view->GetHub().GetView().eye - newest.eye).Length(), 1.0);
  EXPECT_EQ(sceneDraws, before);
}

TEST_F(FilmStripTest, a_move_costs_one_picture_and_gives_those_that_it_cuts_off_back) {
  Fill();
  ASSERT_TRUE(GetHistory().SetCurrentElementIndex(40));
  CameraParameters camera;
  ASSERT_TRUE(GetHistory().GetTransitionCamera(camera));
  view->GetHub().SetView(camera);
  const int before = sceneDraws;
  view->Run(*zovview::FindViewCommand("top"));
  for (int i = 0; i < 60; ++i) Draw();
  EXPECT_EQ(GetHistory().GetElementCount(), 42);
  EXPECT_EQ(sceneDraws, before + 1);
}

}  // namespace
