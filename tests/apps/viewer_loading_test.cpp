#include <chrono>

#include "../host/large_meshes.h"
#include "viewer_fixture.h"

namespace {

using Clock = std::chrono::steady_clock;

class ViewerLoadingTest : public apps_test::ViewerTest {
 protected:
  // A model that takes a while.
  std::filesystem::path WriteHills() { return folder.Write("hills.stl", zovtest::MakeHillsStl(400)); }
};

TEST_F(ViewerLoadingTest, escape_breaks_a_load_off_and_the_present_model_stays) {
  const zovhost::Scene* const scene = viewer->GetScene();
  viewer->Open({WriteHills()});
  const Clock::time_point begin = Clock::now();
  Press(SDLK_ESCAPE);
  ComeToRest();
  EXPECT_LT(std::chrono::duration<double>(Clock::now() - begin).count(), 5.0);
  EXPECT_EQ(viewer->GetMessage(), "hills.stl: loading was cancelled");
  EXPECT_EQ(viewer->GetScene(), scene);
  EXPECT_EQ(GetTitle(), "triangle.obj - zovview");
  viewer->Open({WriteHills()});  // and once more, to the end
  ComeToRest();
  EXPECT_EQ(GetTitle(), "hills.stl - zovview");
  EXPECT_EQ(viewer->GetMessage(), "");
}

TEST_F(ViewerLoadingTest, escape_while_the_first_model_loads_ends_the_program) {
  viewer.reset();
  viewer = std::make_unique<zovview::Viewer>(*window);
  viewer->Open({WriteHills()});
  Press(SDLK_ESCAPE);
  window->Run();
  EXPECT_FALSE(window->IsOpen());
  EXPECT_EQ(viewer->GetExitCode(), 0);
}

TEST_F(ViewerLoadingTest, a_large_model_is_drawn_whole_when_its_view_has_come_to_rest) {
  viewer->Open({WriteHills()});
  ComeToRest();
  zovview::ViewRest rest([] {});
  zovview::Viewport& view = viewer->GetView(0);
  EXPECT_TRUE(rest.IsMoving(view, false));  // not seen before
  const Clock::time_point begin = Clock::now();
  while (rest.IsMoving(view, false) && std::chrono::duration<double>(Clock::now() - begin).count() < 60.0) {
    window->Step(10);
  }
  EXPECT_FALSE(rest.IsMoving(view, false));
  Korvane::CameraParameters camera = GetHub().GetView();
  camera.eye.x += 1.0;
  GetHub().SetView(camera);
  EXPECT_TRUE(rest.IsMoving(view, false));
}

}  // namespace
