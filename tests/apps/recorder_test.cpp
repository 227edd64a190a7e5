// What is written down is read as the same again.
#include "recordings/recorder.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "program.h"
#include "stories/tour_clock.h"
#include "zovhost/key_table.h"

namespace {

using apps_test::TemporaryFolder;
using zovhost::MouseButton;
using zovhost::WindowEvent;
using zovview::Recorder;
using zovview::Recording;
using Type = WindowEvent::Type;

WindowEvent MakeEvent(Type type, int x = 0, int y = 0) {
  WindowEvent event;
  event.type = type;
  event.x = x;
  event.y = y;
  return event;
}

class RecorderTest : public testing::Test {
 protected:
  RecorderTest() {
    header.model = "file /a folder/a model.obj";
    header.width = 640;
    header.height = 480;
  }

  std::unique_ptr<Recorder> Make() {
    std::unique_ptr<Recorder> recorder = Recorder::Create(folder.GetPath() / "recording.txt", error);
    EXPECT_NE(recorder, nullptr) << error;
    return recorder;
  }
  Recording ReadBack() {
    std::ifstream file(folder.GetPath() / "recording.txt");
    Recording recording;
    EXPECT_TRUE(zovview::ReadRecording(file, recording, error)) << error;
    return recording;
  }

  zovview::TourClock clock;
  TemporaryFolder folder;
  Recording header;
  std::string error;
};

TEST_F(RecorderTest, everything_that_can_happen_is_read_back) {
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Begin(header);
  WindowEvent press = MakeEvent(Type::MouseDown, 5, -3);
  press.button = MouseButton::Right;
  press.clicks = 2;
  WindowEvent wheel = MakeEvent(Type::Wheel, 1, 2);
  wheel.wheel = -0.1;
  WindowEvent opened = MakeEvent(Type::FileDropped);
  opened.path = "/another folder/x.obj";
  recorder->Add(MakeEvent(Type::MouseMove, 700, -20));
  clock.Advance();
  recorder->Add(press);
  recorder->Add(MakeEvent(Type::MouseUp, 6, 7));
  recorder->Add(wheel);
  recorder->Add(MakeEvent(Type::MouseLeave));
  recorder->Add(MakeEvent(Type::FocusLost));
  recorder->Add(MakeEvent(Type::Resized, 300, 200));
  recorder->Add(opened);
  for (const zovview::ViewCommand& command : zovview::GetViewCommands()) recorder->Add(command);
  clock.Advance();
  ASSERT_TRUE(recorder->Finish(error)) << error;

  const Recording read = ReadBack();
  EXPECT_EQ(read.model, header.model);
  EXPECT_EQ(read.width, 640);
  EXPECT_EQ(read.height, 480);
  EXPECT_FALSE(read.orthographic);
  EXPECT_EQ(read.end, 33U);  // two frames of a sixtieth of a second
  ASSERT_EQ(read.events.size(), 8U + zovview::GetViewCommands().size());
  EXPECT_EQ(read.events[0].time, 0U);
  EXPECT_EQ(read.events[0].event.x, 700);
  EXPECT_EQ(read.events[0].event.y, -20);
  EXPECT_EQ(read.events[1].time, 16U);
  EXPECT_EQ(read.events[1].event.button, MouseButton::Right);
  EXPECT_EQ(read.events[1].event.clicks, 2);
  EXPECT_EQ(read.events[3].event.wheel, -0.1) << "to the last bit";
  const Type types[] = {Type::MouseMove,  Type::MouseDown, Type::MouseUp, Type::Wheel,
                        Type::MouseLeave, Type::FocusLost, Type::Resized, Type::FileDropped};
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(read.events[i].event.type, types[i]) << i;
  EXPECT_EQ(read.events[7].event.path, opened.path);
  for (std::size_t i = 0; i < zovview::GetViewCommands().size(); ++i) {
    EXPECT_EQ(read.events[8 + i].command, &zovview::GetViewCommands()[i]);
  }
}

#if !defined(_WIN32)
TEST_F(RecorderTest, a_link_is_written_through) {
  namespace fs = std::filesystem;
  const fs::path target = folder.Write("elsewhere.txt", "before");
  fs::create_symlink(target, folder.GetPath() / "recording.txt");
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Begin(header);
  ASSERT_TRUE(recorder->Finish(error)) << error;
  EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "recording.txt"));
  EXPECT_TRUE(fs::is_regular_file(target));
  EXPECT_EQ(ReadBack().width, header.width);
}
#endif

// Some systems end a line by it, so none of it is read back there.
TEST_F(RecorderTest, a_path_that_no_line_holds_is_left_out_and_a_recording_is_read_as_it_is_written) {
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Begin(header);
  for (const char* path : {"/a\nb.obj", "/c.obj\r", "/d\re.obj"}) {
    WindowEvent opened = MakeEvent(Type::FileDropped);
    opened.path = path;
    recorder->Add(opened);
  }
  ASSERT_TRUE(recorder->Finish(error)) << error;
  const Recording read = ReadBack();
  ASSERT_EQ(read.events.size(), 1u);
  EXPECT_EQ(read.events[0].event.path, "/d\re.obj");
  std::istringstream strange(zovview::FormatHeader(read) + "10 open /f.obj\r\r\r\n20 end\r\n");
  Recording again;
  ASSERT_TRUE(zovview::ReadRecording(strange, again, error)) << error;
  EXPECT_EQ(again.events[0].event.path, "/f.obj");
}

TEST_F(RecorderTest, whatever_comes_from_a_six_axis_device_is_read_back) {
  using Kind = zovview::DeviceEvent::Kind;
  const zovhost::SixAxes axes = {0.1, -350.0, 1.0 / 3.0, 2000.0, -2000.0, 0.0};
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Begin(header);
  recorder->Add(zovview::DeviceEvent{Kind::Axes, axes});
  for (int command = 0; command < 22; ++command) {
    recorder->Add(zovview::DeviceEvent{Kind::Press, {}, command});
    recorder->Add(zovview::DeviceEvent{Kind::Release, {}, command});
  }
  for (const zovview::DeviceSetting& setting : zovview::GetDeviceSettings()) {
    recorder->Add(zovview::DeviceEvent{Kind::Setting, {}, 0, &setting, setting.most});
  }
  ASSERT_TRUE(recorder->Finish(error)) << error;
  const Recording read = ReadBack();
  ASSERT_EQ(read.events.size(), 45U + zovview::GetDeviceSettings().size());
  for (const zovview::RecordedEvent& event : read.events) ASSERT_TRUE(event.device.has_value());
  EXPECT_EQ(read.events[0].device->axes, axes) << "to the last bit";
  for (int command = 0; command < 22; ++command) {
    const std::size_t at = 1 + 2 * static_cast<std::size_t>(command);
    EXPECT_EQ(read.events[at].device->kind, Kind::Press);
    EXPECT_EQ(read.events[at + 1].device->kind, Kind::Release);
    EXPECT_EQ(read.events[at].device->command, command);
    EXPECT_EQ(read.events[at + 1].device->command, command);
  }
  for (std::size_t i = 0; i < zovview::GetDeviceSettings().size(); ++i) {
    EXPECT_EQ(read.events[45 + i].device->setting, &zovview::GetDeviceSettings()[i]);
    EXPECT_EQ(read.events[45 + i].device->value, zovview::GetDeviceSettings()[i].most);
  }
}

TEST_F(RecorderTest, every_key_of_the_library_and_of_the_commands_has_a_name_that_is_read_back) {
  std::vector<SDL_Keycode> keys;
  for (const zovhost::KeyBinding& binding : zovhost::GetKeyBindings()) keys.push_back(binding.key);
  for (const zovview::ViewCommand& command : zovview::GetViewCommands()) {
    if (command.key != SDLK_UNKNOWN) keys.push_back(command.key);
  }
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Begin(header);
  for (const SDL_Keycode key : keys) {
    WindowEvent event = MakeEvent(Type::KeyDown);
    event.key = key;
    recorder->Add(event);
    event.repeated = true;
    recorder->Add(event);
  }
  ASSERT_TRUE(recorder->Finish(error)) << error;
  const Recording read = ReadBack();
  ASSERT_EQ(read.events.size(), keys.size()) << "repetitions are left out";
  for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(read.events[i].event.key, keys[i]);
}

TEST_F(RecorderTest, what_happens_before_the_model_is_shown_is_forgotten) {
  const std::unique_ptr<Recorder> recorder = Make();
  recorder->Add(MakeEvent(Type::MouseMove));
  EXPECT_FALSE(recorder->HasBegun());
  recorder->Begin(header);
  EXPECT_TRUE(recorder->HasBegun());
  ASSERT_TRUE(recorder->Finish(error)) << error;
  EXPECT_TRUE(ReadBack().events.empty());
}

TEST_F(RecorderTest, without_a_model_or_an_end_no_file_is_left) {
  EXPECT_FALSE(Make()->Finish(error));
  EXPECT_FALSE(error.empty());
  Make()->Begin(header);
  EXPECT_TRUE(folder.IsEmpty());
}

TEST_F(RecorderTest, a_place_that_cannot_be_written_is_told) {
  EXPECT_EQ(Recorder::Create(folder.GetPath() / "none" / "recording.txt", error), nullptr);
  EXPECT_NE(error.find("cannot be written"), std::string::npos);
}

}  // namespace
