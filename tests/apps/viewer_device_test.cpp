// A six-axis device in the viewer: its motion, its button on the bar, its page, and what is kept and recorded
// of it.
#include <SDL_keycode.h>

#include <fstream>
#include <functional>

#include "commands/device_commands.h"
#include "korvane/cam3d_controller_observer.h"
#include "recordings/recorder.h"
#include "settings/device_settings.h"
#include "settings/settings_file.h"
#include "viewer_fixture.h"

namespace {

using apps_test::ViewerTest;
using Korvane::Cam3DController;
using zovhost::FedSource;

class ViewerDeviceTest : public ViewerTest {
 protected:
  void SetUp() override {
    ViewerTest::SetUp();
    Connect();
  }
  void TearDown() override {
    ViewerTest::TearDown();
    viewer.reset();  // which borrows the device
  }

  void Connect() { viewer->GetDevices().AddSource(&source, "Test"); }
  // Held so until it has come of it.
  void Hold(const zovhost::SixAxes& axes, const std::function<bool()>& until) {
    source.Feed(axes);
    window->RequestFrame();
    for (int i = 0; i < 6000 && !until(); ++i) window->Step(10);
    EXPECT_TRUE(until());
  }
  void Turn(std::size_t view = 0) {
    const Korvane::Vector3 before = GetEye(view);
    Hold({0, 0, 0, 0, 300, 0}, [&] { return (GetEye(view) - before).Length() > 1e-3; });
  }
  void LetGo() {
    source.Feed({});
    ComeToRest();
  }
  Korvane::Vector3 GetEye(std::size_t view = 0) const { return viewer->GetView(view).GetHub().GetView().eye; }
  Cam3DController& GetDevice() { return viewer->GetView(0).GetDevice(); }
  bool IsButtonShown(int tag) {
    Korvane::Toolbar* const bar = viewer->GetView(0).GetBars().GetBar().GetToolbar();
    for (int i = 0; i < bar->GetItems().GetCount(); ++i) {
      const Korvane::ToolbarItem& item = bar->GetItems().GetAt(i);
      if (item.GetTag() == tag) return !item.IsHidden();
    }
    return false;
  }

  FedSource source;
};

TEST_F(ViewerDeviceTest, a_device_that_is_held_moves_the_view_and_one_that_is_let_go_rests) {
  Turn();
  EXPECT_TRUE(GetDevice().IsOperating());
  EXPECT_TRUE(window->IsFrameRequested()) << "it goes on by itself";
  LetGo();
  EXPECT_FALSE(GetDevice().IsOperating());
  EXPECT_FALSE(window->IsFrameRequested());
}

TEST_F(ViewerDeviceTest, a_device_wakes_a_window_that_sleeps) {
  ASSERT_FALSE(window->IsFrameRequested());
  source.Feed({0, 0, 0, 0, 300, 0});
  for (int i = 0; i < 1000 && !GetDevice().IsOperating(); ++i) window->Step(10);
  EXPECT_TRUE(GetDevice().IsOperating());
  LetGo();
}

TEST_F(ViewerDeviceTest, its_motion_is_one_view_of_the_history) {
  const Korvane::Vector3 before = GetEye();
  Turn();
  LetGo();
  viewer->GetView(0).Run(*zovview::FindViewCommand("previous-view"));
  ComeToRest();
  EXPECT_NEAR((GetEye() - before).Length(), 0.0, 1e-3);  // a view that is hardly another is the same
}

TEST_F(ViewerDeviceTest, each_mode_has_a_key_and_shows_on_the_bar_while_there_is_a_device) {
  static constexpr int FIRST_TAG = 204;
  EXPECT_FALSE(IsButtonShown(FIRST_TAG));
  Hold({}, [this] { return IsButtonShown(FIRST_TAG); });
  constexpr SDL_Keycode KEYS[] = {SDLK_8, SDLK_9, SDLK_0, SDLK_7};
  constexpr int MODES[] = {1, 2, 3, 0};
  for (std::size_t i = 0; i < std::size(KEYS); ++i) {
    Press(KEYS[i]);
    ComeToRest();
    EXPECT_EQ(GetDevice().GetNavigationMode(), MODES[i]);
    EXPECT_TRUE(IsButtonShown(FIRST_TAG + MODES[i]));
    for (int other = 0; other < 4; ++other) {
      EXPECT_TRUE(other == MODES[i] || !IsButtonShown(FIRST_TAG + other)) << other;
    }
  }
  source.RemoveDevice();
  window->RequestFrame();
  ComeToRest();
  EXPECT_FALSE(IsButtonShown(FIRST_TAG));
}

TEST_F(ViewerDeviceTest, buttons_are_commands) {
  const Korvane::Vector3 before = GetEye();
  zovhost::SixAxisSettings settings;
  settings.commands[3] = Korvane::CAM3D_KEY_TOP;
  ASSERT_TRUE(viewer->GetDevices().GetHand().SetSettings(&source, settings));
  source.FeedButton(3, true);
  window->RequestFrame();
  ComeToRest();
  source.FeedButton(3, false);
  window->RequestFrame();
  ComeToRest();
  EXPECT_GT((GetEye() - before).Length(), 1e-3);
  const Korvane::CameraParameters& view = GetHub().GetView();
  EXPECT_LT((view.centre - view.eye).Normalized().Dot(GetHub().GetWorldUpDirection()), -0.999);
}

TEST_F(ViewerDeviceTest, the_page_opens_and_closes_by_its_key) {
  Press(SDLK_e);
  ComeToRest();
  EXPECT_TRUE(viewer->GetDevices().IsPageVisible());
  Press(SDLK_e);
  ComeToRest();
  EXPECT_FALSE(viewer->GetDevices().IsPageVisible());
}

TEST_F(ViewerDeviceTest, moves_the_view_where_the_pointer_was_last) {
  viewer.reset();
  zovview::Viewer::Options options;
  options.views = 2;
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
  ComeToRest();
  Connect();
  const Korvane::Vector3 left = GetEye();
  Move(600, 300);
  Turn(1);
  EXPECT_EQ(GetEye(), left);
  EXPECT_TRUE(viewer->GetView(1).GetDevice().IsOperating());
  PushMotion(375, 60);  // to the other beside its panel, while it is held
  Turn(0);
  EXPECT_FALSE(viewer->GetView(1).GetDevice().IsOperating());
  LetGo();
}

TEST_F(ViewerDeviceTest, what_it_does_is_recorded) {
  viewer.reset();
  std::string error;
  const std::unique_ptr<zovview::Recorder> recorder =
      zovview::Recorder::Create(folder.GetPath() / "session.txt", error);
  ASSERT_NE(recorder, nullptr) << error;
  zovview::Viewer::Options options;
  options.recorder = recorder.get();
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
  ComeToRest();
  zovhost::SixAxisSettings settings;
  settings.commands[0] = Korvane::CAM3D_KEY_PAN_MODE;
  Connect();
  ASSERT_TRUE(viewer->GetDevices().GetHand().SetSettings(&source, settings));
  GetDevice().SetSensitivity(0.0018);
  Turn();
  LetGo();
  source.FeedButton(0, true);
  window->RequestFrame();
  ComeToRest();
  viewer.reset();
  ASSERT_TRUE(recorder->Finish(error)) << error;

  std::ifstream file(folder.GetPath() / "session.txt");
  zovview::Recording recording;
  ASSERT_TRUE(zovview::ReadRecording(file, recording, error)) << error;
  using Kind = zovview::DeviceEvent::Kind;
  std::vector<std::string> seen;
  for (const zovview::RecordedEvent& event : recording.events) {
    if (!event.device.has_value()) continue;
    const zovview::DeviceEvent& device = *event.device;
    if (device.kind == Kind::Axes) seen.push_back("axes " + zovview::FormatNumber(device.axes[4]));
    if (device.kind == Kind::Press) seen.push_back("press " + std::to_string(device.command));
    if (device.kind == Kind::Setting) {
      seen.push_back(std::string(device.setting->name) + " " + zovview::FormatNumber(device.value));
    }
  }
  const std::vector<std::string> expected = {"axes 300", "shown 1",  "speed 0.0018",
                                             "axes 0",   "press 21", "mode 3"};
  EXPECT_EQ(seen, expected);
}

TEST_F(ViewerDeviceTest, its_settings_are_there_the_next_time) {
  viewer.reset();
  const std::filesystem::path file = folder.GetPath() / "settings.json";
  zovview::SettingsFile settings(file);
  zovview::Viewer::Options options;
  options.settings = &settings;
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  viewer->Open({folder.Write("square.obj", apps_test::SQUARE)});
  ComeToRest();
  Press(SDLK_9);
  GetDevice().SetSensitivity(0.0027);
  GetDevice().SetKeepSceneUpright(false);
  ComeToRest();
  viewer.reset();
  zovview::SettingsFile again(file);
  options.settings = &again;
  viewer = std::make_unique<zovview::Viewer>(*window, options);
  EXPECT_EQ(GetDevice().GetNavigationMode(), Korvane::Cam3DControllerParameters::MODE_FLY);
  EXPECT_EQ(GetDevice().GetSensitivity(), 0.0027);
  EXPECT_FALSE(GetDevice().GetKeepSceneUpright());
  EXPECT_TRUE(GetDevice().GetEnableRotation());
  viewer.reset();
}

}  // namespace
