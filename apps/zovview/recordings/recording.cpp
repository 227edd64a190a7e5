#include "recordings/recording.h"

#include <SDL_keyboard.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>
#include <variant>

#include "korvane/cam3d_controller_observer.h"
#include "recordings/words.h"
#include "stories/story_desk.h"
#include "zovhost/named_views.h"

namespace zovview {

using zovhost::MouseButton;
using zovhost::WindowEvent;
using Type = WindowEvent::Type;

namespace {

constexpr const char* FIRST_LINE = "zovview recording 1";
constexpr int FURTHEST_POSITION = 1'000'000;  // pixels
constexpr double MOST_NOTCHES = 1000.0;
constexpr int MOST_CLICKS = 1000;
constexpr int MOST_FINGERS = 16;
constexpr std::string_view PEN = "pen";
constexpr std::string_view RAY = "ray ";

// What follows the name of an event on its line.
enum class Form : int {
  Position,
  Button,
  Press,
  Wheel,
  Finger,
  Key,
  Size,
  Path,
  Command,
  Axes,
  DeviceButton,
  Setting,
  Margins,
  Camera,
  Nothing
};

using Device = DeviceEvent::Kind;

// What is no event of the window or the device.
enum class Other : int { Command, Margins, Flight };

struct EventName {
  const char* name;
  std::variant<Type, Device, Other> what;
  Form form;
};
constexpr std::array<EventName, 21> EVENT_NAMES = {{
    {"move", Type::MouseMove, Form::Position},
    {"press", Type::MouseDown, Form::Press},
    {"release", Type::MouseUp, Form::Button},
    {"wheel", Type::Wheel, Form::Wheel},
    {"leave", Type::MouseLeave, Form::Nothing},
    {"finger-down", Type::FingerDown, Form::Finger},
    {"finger-move", Type::FingerMove, Form::Finger},
    {"finger-up", Type::FingerUp, Form::Finger},
    {"fingers-lost", Type::FingersLost, Form::Nothing},
    {"key-down", Type::KeyDown, Form::Key},
    {"key-up", Type::KeyUp, Form::Key},
    {"focus-lost", Type::FocusLost, Form::Nothing},
    {"resize", Type::Resized, Form::Size},
    {"open", Type::FileDropped, Form::Path},
    {"command", Other::Command, Form::Command},
    {"axes", Device::Axes, Form::Axes},
    {"device-press", Device::Press, Form::DeviceButton},
    {"device-release", Device::Release, Form::DeviceButton},
    {"device", Device::Setting, Form::Setting},
    {"margins", Other::Margins, Form::Margins},
    {"fly", Other::Flight, Form::Camera},
}};

constexpr double LEAST_SCALE = 0.25;
constexpr double LARGEST_SCALE = 16.0;

// In the order of the buttons.
constexpr std::array<const char*, 5> BUTTON_NAMES = {"left", "middle", "right", "back", "forward"};

const EventName& FindName(const RecordedEvent& recorded) {
  decltype(EventName::what) what = recorded.event.type;
  if (recorded.command != nullptr) what = Other::Command;
  if (recorded.device.has_value()) what = recorded.device->kind;
  if (recorded.margins.has_value()) what = Other::Margins;
  if (recorded.flight.has_value()) what = Other::Flight;
  return *std::find_if(EVENT_NAMES.begin(), EVENT_NAMES.end(),
                       [&what](const EventName& name) { return name.what == what; });
}

// ---- reading ----

bool ReadPosition(Words& words, WindowEvent& event) {
  return words.Read(event.x, -FURTHEST_POSITION, FURTHEST_POSITION) &&
         words.Read(event.y, -FURTHEST_POSITION, FURTHEST_POSITION);
}

bool ReadSize(Words& words, int& width, int& height) {
  return words.Read(width, 1, LARGEST_RECORDED_SIDE) && words.Read(height, 1, LARGEST_RECORDED_SIDE);
}

bool ReadButton(Words& words, WindowEvent& event) {
  const auto* const found = std::find(BUTTON_NAMES.begin(), BUTTON_NAMES.end(), words.Next());
  if (found == BUTTON_NAMES.end()) return false;
  event.button = static_cast<MouseButton>(found - BUTTON_NAMES.begin());
  return ReadPosition(words, event);
}

// A pen says so.
bool ReadFinger(Words& words, WindowEvent& event) {
  if (!words.Read(event.finger, 0, MOST_FINGERS - 1) || !ReadPosition(words, event)) return false;
  event.pen = !words.IsAtEnd();
  return !event.pen || words.Next() == PEN;
}

bool ReadKey(Words& words, WindowEvent& event) {
  event.key = SDL_GetKeyFromName(std::string(words.Rest()).c_str());
  return event.key != SDLK_UNKNOWN;
}

bool ReadAxes(Words& words, zovhost::SixAxes& axes) {
  constexpr double MOST = zovhost::MOST_DEFLECTION;
  return std::all_of(axes.begin(), axes.end(), [&](double& axis) { return words.Read(axis, -MOST, MOST); });
}

bool ReadSetting(Words& words, DeviceEvent& device) {
  device.setting = FindDeviceSetting(words.Next());
  return device.setting != nullptr && words.Read(device.value, device.setting->least, device.setting->most) &&
         device.setting->Takes(device.value);
}

bool ReadMargins(Words& words, Korvane::FitMargins& margins) {
  for (double* const side : {&margins.left, &margins.right, &margins.bottom, &margins.top}) {
    if (!words.Read(*side, 0.0, 1.0)) return false;
  }
  return margins.IsUsable();
}

// In the order of a stream of cameras.
using Camera = Korvane::CameraParameters;
constexpr std::array<Korvane::Vector3 Camera::*, 4> CAMERA_POINTS = {&Camera::eye, &Camera::centre,
                                                                     &Camera::up, &Camera::pivot};
constexpr std::array<double Camera::*, 6> CAMERA_NUMBERS = {&Camera::left_fov,    &Camera::right_fov,
                                                            &Camera::top_fov,     &Camera::bottom_fov,
                                                            &Camera::ortho_width, &Camera::ortho_height};
constexpr std::array<const char*, 2> PROJECTION_NAMES = {"perspective", "orthographic"};

bool ReadCamera(Words& words, Camera& camera) {
  constexpr double MOST = std::numeric_limits<double>::max();
  for (const auto point : CAMERA_POINTS) {
    for (int axis = 0; axis < 3; ++axis) {
      if (!words.Read((camera.*point)[axis], -MOST, MOST)) return false;
    }
  }
  for (const auto number : CAMERA_NUMBERS) {
    if (!words.Read(camera.*number, -MOST, MOST)) return false;
  }
  const auto* const found = std::find(PROJECTION_NAMES.begin(), PROJECTION_NAMES.end(), words.Next());
  camera.projection_type = static_cast<Camera::ProjectionType>(found - PROJECTION_NAMES.begin());
  camera.projection_transition = camera.IsOrthographic() ? 1.0 : 0.0;
  return found != PROJECTION_NAMES.end() && zovhost::CanShowView(camera);
}

bool ReadForm(Form form, Words& words, RecordedEvent& recorded) {
  WindowEvent& event = recorded.event;
  switch (form) {
    case Form::Position:
      return ReadPosition(words, event);
    case Form::Button:
      return ReadButton(words, event);
    case Form::Press:
      return ReadButton(words, event) && words.Read(event.clicks, 1, MOST_CLICKS);
    case Form::Wheel:
      return ReadPosition(words, event) && words.Read(event.wheel, -MOST_NOTCHES, MOST_NOTCHES);
    case Form::Finger:
      return ReadFinger(words, event);
    case Form::Key:
      return ReadKey(words, event);
    case Form::Size:
      return ReadSize(words, event.x, event.y) &&
             (words.IsAtEnd() || words.Read(event.scale, LEAST_SCALE, LARGEST_SCALE));
    case Form::Path:
      event.path = words.Rest();
      return !event.path.empty();
    case Form::Command:
      recorded.command = FindViewCommand(words.Next());
      return recorded.command != nullptr;
    case Form::Axes:
      return ReadAxes(words, recorded.device->axes);
    case Form::DeviceButton:
      return words.Read(recorded.device->command, 0, Korvane::CAM3D_KEY_COUNT - 1);
    case Form::Setting:
      return ReadSetting(words, *recorded.device);
    case Form::Margins:
      return ReadMargins(words, recorded.margins.emplace());
    case Form::Camera:
      return ReadCamera(words, *recorded.flight);
    case Form::Nothing:
      return true;
  }
  return false;
}

/// Reads the lines one after the other and stops at the first that is wrong.
class Reader {
 public:
  Reader(std::istream& from, Recording& into) : input(from), recording(into) {}

  bool Read() {
    if (!ReadHeader()) return false;
    while (!ended) {
      if (!ReadRest()) return false;
    }
    std::string more;
    return std::getline(input, more) ? Fail(more, "follows the end") : true;
  }
  const std::string& GetError() const { return error; }

 private:
  // Empty lines and such as begin with # count for nothing.
  bool NextLine() {
    if (std::exchange(held, false)) return true;
    while (std::getline(input, line)) {
      ++number;
      line.erase(line.find_last_not_of('\r') + 1);
      if (!line.empty() && line.front() != '#') return true;
    }
    error = "it ends without its last line";
    return false;
  }

  bool Fail(const std::string& text, const char* what) {
    // The line may be anything, and as long.
    std::string shown = text.substr(0, 60);
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c >= 0 && c < ' '; }, '?');
    error = "line " + std::to_string(number) + ", \"" + shown + "\", " + what;
    return false;
  }

  bool ReadHeader() {
    if (!NextLine()) return false;
    if (line != FIRST_LINE) return Fail(line, "is not the first line of a recording");
    return ReadModel() && ReadViewport() && ReadProjection() && ReadScale() && ReadStartMargins();
  }

  // A line that the head may have or not: another one is the first event.
  bool ReadScale() {
    if (!NextLine()) return false;
    Words words(line);
    held = words.Next() != "scale";
    return held || (words.Read(recording.scale, LEAST_SCALE, LARGEST_SCALE) && words.IsAtEnd()) ||
           Fail(line, "names no scale");
  }

  bool ReadStartMargins() {
    if (!NextLine()) return false;
    Words words(line);
    held = words.Next() != "margins";
    return held || (ReadMargins(words, recording.margins) && words.IsAtEnd()) ||
           Fail(line, "names no margins");
  }

  bool ReadModel() {
    if (!NextLine()) return false;
    Words words(line);
    const bool named = words.Next() == "model";
    recording.model = words.Rest();
    const bool isFile = recording.model.rfind("file ", 0) == 0 && recording.model.size() > 5;
    if (named && (isFile || recording.model == "house" || recording.model == "building")) return true;
    return Fail(line, "names no model");
  }

  bool ReadViewport() {
    if (!NextLine()) return false;
    Words words(line);
    const bool read =
        words.Next() == "viewport" && ReadSize(words, recording.width, recording.height) && words.IsAtEnd();
    return read || Fail(line, "names no size of a viewport");
  }

  bool ReadProjection() {
    if (!NextLine()) return false;
    recording.orthographic = line == "projection orthographic";
    return recording.orthographic || line == "projection perspective" || Fail(line, "names no projection");
  }

  bool ReadRest() {
    if (!NextLine()) return false;
    Words words(line);
    if (line.starts_with(RAY)) return ReadRayOfModel(words);
    std::uint32_t time = 0;
    if (!words.Read(time, std::uint32_t{0}, LONGEST_RECORDING)) return Fail(line, "has no time");
    if (time < lastTime) return Fail(line, "comes before the line above");
    lastTime = time;
    return ReadEvent(words);
  }

  bool ReadEvent(Words& words) {
    RecordedEvent recorded;
    recorded.time = lastTime;
    const std::string_view name = words.Next();
    if (name == "end" && words.IsAtEnd()) {
      recording.end = recorded.time;
      return ended = true;
    }
    const auto* const found = std::find_if(EVENT_NAMES.begin(), EVENT_NAMES.end(),
                                           [name](const EventName& row) { return row.name == name; });
    if (found == EVENT_NAMES.end()) return Fail(line, "is no event");
    if (const Type* const type = std::get_if<Type>(&found->what)) recorded.event.type = *type;
    if (const Device* const kind = std::get_if<Device>(&found->what)) recorded.device = DeviceEvent{*kind};
    if (found->form == Form::Camera) recorded.flight.emplace();
    if (!ReadForm(found->form, words, recorded) || !words.IsAtEnd()) return Fail(line, "is not understood");
    if (IsModelOpened(recorded)) ++models;
    recording.events.push_back(std::move(recorded));
    return true;
  }

  // Of the model that was named last.
  bool ReadRayOfModel(Words& words) {
    words.Next();
    RecordedRay ray;
    if (!ReadRay(words, ray) || !words.IsAtEnd()) return Fail(line, "is not understood");
    recording.rays.resize(models);
    recording.rays.back().push_back(ray);
    return true;
  }

  std::istream& input;
  Recording& recording;
  std::string line;
  std::string error;
  int number = 0;
  std::uint32_t lastTime = 0;
  std::size_t models = 1;
  bool ended = false;
  bool held = false;  // the line is to be read once more
};

// A line after which rays are of another model, or none.
bool EndsModel(std::string_view line) {
  if (line.starts_with('#')) return false;
  Words words(line.substr(0, line.find_last_not_of('\r') + 1));
  words.Next();
  const std::string_view name = words.Next();
  return name == "end" || (name == "open" && !IsStoryFile(words.Rest()));
}

// ---- writing ----

std::string FormatPosition(const WindowEvent& event) {
  return std::string(" ").append(std::to_string(event.x)).append(" ").append(std::to_string(event.y));
}

std::string FormatFinger(const WindowEvent& event) {
  const std::string text = " " + std::to_string(event.finger) + FormatPosition(event);
  return event.pen ? text + " " + std::string(PEN) : text;
}

std::string FormatAxes(const zovhost::SixAxes& axes) {
  std::string text;
  for (const double axis : axes) text.append(" ").append(FormatNumber(axis));
  return text;
}

std::string FormatMargins(const Korvane::FitMargins& margins) {
  std::string text;
  for (const double side : {margins.left, margins.right, margins.bottom, margins.top}) {
    text.append(" ").append(FormatNumber(side));
  }
  return text;
}

std::string FormatSetting(const DeviceEvent& device) {
  return std::string(" ").append(device.setting->name).append(" ").append(FormatNumber(device.value));
}

std::string FormatCamera(const Camera& camera) {
  std::string text;
  for (const auto point : CAMERA_POINTS) {
    for (int axis = 0; axis < 3; ++axis) text.append(" ").append(FormatNumber((camera.*point)[axis]));
  }
  for (const auto number : CAMERA_NUMBERS) text.append(" ").append(FormatNumber(camera.*number));
  return text.append(" ").append(PROJECTION_NAMES[camera.IsOrthographic() ? 1 : 0]);
}

std::string FormatForm(Form form, const RecordedEvent& recorded) {
  const WindowEvent& event = recorded.event;
  const std::string button = std::string(" ") + BUTTON_NAMES[static_cast<std::size_t>(event.button)];
  switch (form) {
    case Form::Position:
      return FormatPosition(event);
    case Form::Size:
      return FormatPosition(event) + (event.scale > 0.0 ? " " + FormatNumber(event.scale) : "");
    case Form::Button:
      return button + FormatPosition(event);
    case Form::Press:
      return button + FormatPosition(event) + " " + std::to_string(event.clicks);
    case Form::Wheel:
      return FormatPosition(event) + " " + FormatNumber(event.wheel);
    case Form::Finger:
      return FormatFinger(event);
    case Form::Key:
      return std::string(" ") + SDL_GetKeyName(event.key);
    case Form::Path:
      return " " + event.path;
    case Form::Command:
      return std::string(" ").append(recorded.command->name);
    case Form::Axes:
      return FormatAxes(recorded.device->axes);
    case Form::DeviceButton:
      return " " + std::to_string(recorded.device->command);
    case Form::Setting:
      return FormatSetting(*recorded.device);
    case Form::Margins:
      return FormatMargins(*recorded.margins);
    case Form::Camera:
      return FormatCamera(*recorded.flight);
    case Form::Nothing:
      return {};
  }
  return {};
}

}  // namespace

bool IsModelOpened(const RecordedEvent& recorded) {
  return recorded.event.type == Type::FileDropped && !IsStoryFile(recorded.event.path);
}

bool HasWords(const WindowEvent& event) {
  const bool isKey = event.type == Type::KeyDown || event.type == Type::KeyUp;
  if (isKey) return !event.repeated && *SDL_GetKeyName(event.key) != '\0';
  if (event.type == Type::FileDropped)
    return !event.path.ends_with('\r') && event.path.find('\n') == std::string::npos;
  return event.type != Type::Closing;
}

bool ReadRecording(std::istream& input, Recording& recording, std::string& error) {
  recording = Recording();
  Reader reader(input, recording);
  if (reader.Read()) return true;
  error = reader.GetError();
  return false;
}

bool CompleteRecording(std::istream& input, const std::vector<RaysOfModel>& rays, std::string& text) {
  std::string line;
  std::size_t model = 0;
  const auto endModel = [&] {
    if (model == rays.size()) return;
    for (const RecordedRay& ray : rays[model]) text.append(RAY).append(FormatRay(ray)).append("\n");
    ++model;
  };
  while (std::getline(input, line)) {
    if (line.starts_with(RAY)) continue;
    if (EndsModel(line)) endModel();
    text.append(line).append("\n");
  }
  return model == rays.size();
}

std::string FormatHeader(const Recording& recording) {
  std::ostringstream text;
  const std::string scale =
      recording.scale > 0.0 ? "scale " + FormatNumber(recording.scale) + "\n" : std::string();
  text << FIRST_LINE << "\nmodel " << recording.model << "\nviewport " << recording.width << ' '
       << recording.height << "\nprojection " << (recording.orthographic ? "orthographic" : "perspective")
       << '\n'
       << scale;
  if (!recording.margins.IsNone()) text << "margins" << FormatMargins(recording.margins) << '\n';
  return text.str();
}

std::string FormatEvent(const RecordedEvent& recorded) {
  const EventName& name = FindName(recorded);
  return std::to_string(recorded.time) + " " + name.name + FormatForm(name.form, recorded) + "\n";
}

std::string FormatEnd(std::uint32_t time) { return std::to_string(time) + " end\n"; }

}  // namespace zovview
