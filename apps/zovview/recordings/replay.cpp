#include "recordings/replay.h"

#include <epoxy/gl.h>

#include <SDL_keycode.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "commands/cube_commands.h"
#include "files/model_source.h"
#include "recordings/recorded_rays.h"
#include "recordings/recording.h"
#include "recordings/scripted_device.h"
#include "stories/story_desk.h"
#include "stories/tour_clock.h"
#include "viewport/viewport.h"
#include "zovhost/languages.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/phrases.h"
#include "zovhost/whole_file.h"
#include "zovhost/window.h"

namespace zovview {

namespace fs = std::filesystem;
using Korvane::CameraParameters;
using Korvane::Vector3;
using zovhost::WindowEvent;

namespace {

constexpr int EXIT_BAD_INPUT = 2;
constexpr std::uint32_t LONGEST_REST = 10'000;  // milliseconds after the end, for what still moves
constexpr const char* HEADING =
    "# ms eye centre up pivot, half angles left right top bottom, orthographic width height, projection, "
    "blend\n";

// A pointer that goes where it is sent.
class ReplayedPointer : public zovhost::RendererHost {
 public:
  bool ApplyCursor(Korvane::CursorID) override { return true; }
  bool WarpPointer(int, int) override { return true; }
};

std::string FormatCamera(std::uint32_t time, const CameraParameters& camera) {
  std::string line = std::to_string(time);
  const auto add = [&line](std::initializer_list<double> values) {
    for (const double value : values) line.append(" ").append(FormatNumber(value));
  };
  for (const Vector3& vector : {camera.eye, camera.centre, camera.up, camera.pivot}) {
    add({vector.x, vector.y, vector.z});
  }
  add({camera.left_fov, camera.right_fov, camera.top_fov, camera.bottom_fov});
  add({camera.ortho_width, camera.ortho_height});
  line += camera.IsOrthographic() ? " orthographic" : " perspective";
  add({camera.projection_transition});
  return line + "\n";
}

/// The model that a recording names; a relative file counts from the folder of the recording.
LoadedModel LoadNamed(const std::string& name, const fs::path& folder) {
  const zovhost::Progress quiet;
  if (name == "building") return LoadModel({}, quiet);
  if (name != "house") return LoadModel({folder / name.substr(name.find(' ') + 1)}, quiet);
  const ModelSource house = FindDefaultModel();
  if (!house.file.empty()) return LoadModel(house, quiet);
  return {house, nullptr, "the sample house is not installed"};
}

// A model, and what rays met in it.
struct ShownModel {
  std::unique_ptr<zovhost::Scene> scene;
  std::unique_ptr<RayBook> rays;
};

class Replay {
 public:
  Replay(const Recording& recording, fs::path folder, bool notesRays);

  bool Prepare(std::string& error);
  bool Play(std::string& error);
  const std::string& GetOutput() const { return output; }
  /// Of each model that was shown, once it has been played.
  std::vector<RaysOfModel> GetRays() const;

 private:
  bool Show(LoadedModel loaded, std::string& error);
  bool Open(const std::string& path, std::string& error);
  bool Deliver(const RecordedEvent& recorded, std::string& error);
  void Resize(int width, int height, double scale);
  void Frame();
  unsigned TrackModifiers(const WindowEvent& event);

  const Recording& recording;
  const fs::path folder;
  const bool notesRays;
  TourClock clock;
  std::unique_ptr<zovhost::Window> window;
  zovhost::OffscreenTarget target;
  ReplayedPointer pointer;
  Preferences preferences;
  ShownModel model;
  std::vector<RaysOfModel> formerRays;  // of the models that were shown before
  std::unique_ptr<Viewport> view;
  ScriptedDevice device;
  std::uint32_t time = 0;
  unsigned modifiers = 0;
  bool frameRequested = true;
  std::string lastCamera;  // without its time
  std::string output;
};

Replay::Replay(const Recording& toPlay, fs::path inFolder, bool notes)
    : recording(toPlay), folder(std::move(inFolder)), notesRays(notes), output(HEADING) {}

bool Replay::Prepare(std::string& error) {
  zovhost::SpeakLanguage(zovhost::GetLanguages().front());  // as what is recorded
  zovhost::Window::Options options;
  options.offscreen = true;
  window = zovhost::Window::Create(options, error);
  if (window == nullptr) return false;
  Viewport::Surroundings surroundings = {[this] { frameRequested = true; }, pointer, [](int, int) {}};
  surroundings.preferences = &preferences;
  surroundings.plainCube = recording.scale <= 0.0;
  view = std::make_unique<Viewport>(surroundings);
  preferences.SetObserver([this] { view->ApplyPreferences(); });
  if (!view->Create()) {
    error = "there is no OpenGL 3.3 to draw with";
    return false;
  }
  device.SetController(&view->GetDevice());
  Resize(recording.width, recording.height, recording.scale);
  view->SetFitMargins(recording.margins);
  if (!Show(LoadNamed(recording.model, folder), error)) return false;
  if (recording.orthographic) view->ShowParallel();
  return true;
}

bool Replay::Show(LoadedModel loaded, std::string& error) {
  if (loaded.scene == nullptr) {
    error = loaded.error;
    return false;
  }
  const std::size_t number = model.rays != nullptr ? formerRays.size() + 1 : 0;
  const RaysOfModel known = number < recording.rays.size() ? recording.rays[number] : RaysOfModel();
  auto rays = std::make_unique<RayBook>(*loaded.scene, known, notesRays);
  if (model.rays != nullptr) formerRays.push_back(model.rays->GetAsked());
  view->SetScene(*loaded.scene);
  const ShownModel former =
      std::exchange(model, ShownModel{std::move(loaded.scene), std::move(rays)});  // its rays go before it
  return true;
}

std::vector<RaysOfModel> Replay::GetRays() const {
  std::vector<RaysOfModel> rays = formerRays;
  rays.push_back(model.rays->GetAsked());
  return rays;
}

bool Replay::Open(const std::string& path, std::string& error) {
  if (!IsStoryFile(path)) return Show(LoadNamed("file " + path, folder), error);
  if (!view->GetStory().Read(folder / path, error)) return false;
  view->GetStory().Show(true);
  return true;
}

bool Replay::Play(std::string& error) {
  auto next = recording.events.begin();
  while (time <= recording.end || (frameRequested && time <= recording.end + LONGEST_REST)) {
    for (; next != recording.events.end() && next->time <= time; ++next) {
      if (!Deliver(*next, error)) return false;
    }
    if (frameRequested) Frame();
    clock.Advance();
    time = clock.GetTickCount() - 1;
  }
  for (; next != recording.events.end(); ++next) {
    if (!Deliver(*next, error)) return false;
  }
  return true;
}

bool Replay::Deliver(const RecordedEvent& recorded, std::string& error) {
  if (recorded.command != nullptr) {
    view->Run(*recorded.command);
    return true;
  }
  if (recorded.device.has_value()) {
    device.Feed(*recorded.device, view->GetTarget());
    return frameRequested = true;
  }
  if (recorded.margins.has_value()) return view->GetHub().SetFitMargins(*recorded.margins);
  if (recorded.flight.has_value()) {
    view->Fly(*recorded.flight);
    return true;
  }
  switch (recorded.event.type) {
    case WindowEvent::Type::FileDropped:
      return Open(recorded.event.path, error);
    case WindowEvent::Type::Resized:
      Resize(recorded.event.x, recorded.event.y, recorded.event.scale);
      return true;
    default:
      break;
  }
  WindowEvent event = recorded.event;
  event.modifiers = TrackModifiers(event);
  view->OnEvent(event);
  return true;
}

unsigned Replay::TrackModifiers(const WindowEvent& event) {
  struct Modifier {
    SDL_Keycode key;
    unsigned bit;
  };
  for (const Modifier& modifier : {Modifier{SDLK_LCTRL, WindowEvent::CONTROL},
                                   {SDLK_RCTRL, WindowEvent::CONTROL},
                                   {SDLK_LALT, WindowEvent::ALT},
                                   {SDLK_RALT, WindowEvent::ALT},
                                   {SDLK_LSHIFT, WindowEvent::SHIFT},
                                   {SDLK_RSHIFT, WindowEvent::SHIFT}}) {
    if (event.key != modifier.key) continue;
    const bool down = event.type == WindowEvent::Type::KeyDown;
    modifiers = down ? modifiers | modifier.bit : modifiers & ~modifier.bit;
  }
  if (event.type == WindowEvent::Type::FocusLost) modifiers = 0;
  return modifiers;
}

void Replay::Resize(int width, int height, double scale) {
  target.Create(width, height, 0);
  view->SetPlace(0, 0, width, height, scale > 0.0 ? scale : view->GetScale());
}

// Drawing is part of it: tools end their moves when they are drawn.
void Replay::Frame() {
  frameRequested = false;
  if (device.Advance()) frameRequested = true;
  view->PerformFrame();
  target.Bind();
  view->DrawWidgets();
  glFinish();  // no window waits for the frames: without a graphics card they would pile up in the driver
  const CameraParameters& camera = view->GetHub().GetView();
  std::string shown = FormatCamera(0, camera);
  if (shown == lastCamera) return;
  lastCamera = std::move(shown);
  output += FormatCamera(time, camera);
}

int Fail(const fs::path& file, const std::string& error) {
  std::fprintf(stderr, "zovview: %s: %s\n", file.string().c_str(), error.c_str());
  return EXIT_BAD_INPUT;
}

bool Complete(std::ifstream& input, const std::vector<RaysOfModel>& rays, const fs::path& completed,
              std::string& error) {
  input.clear();
  input.seekg(0);
  std::string text;
  if (!CompleteRecording(input, rays, text)) {
    error = "has changed while it was played";
    return false;
  }
  zovhost::WholeFile output(completed);
  output.Write(text.data(), text.size());
  return output.Finish(error);
}

}  // namespace

int RunReplay(const fs::path& file, const fs::path& completed) {
  Recording recording;
  std::string error;
  std::error_code ignored;
  std::ifstream input(file, std::ios::binary);
  if (!input || !fs::is_regular_file(file, ignored)) return Fail(file, "cannot be read");
  if (!ReadRecording(input, recording, error)) return Fail(file, error);
  Replay replay(recording, file.parent_path(), !completed.empty());
  if (!replay.Prepare(error) || !replay.Play(error)) return Fail(file, error);
  if (!completed.empty() && !Complete(input, replay.GetRays(), completed, error)) return Fail(file, error);
  std::fputs(replay.GetOutput().c_str(), stdout);
  return 0;
}

}  // namespace zovview
