// The viewer: models, what is told of them, and their first views.
#include "viewer/viewer.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "zovhost/phrases.h"

namespace zovview {

namespace fs = std::filesystem;
using zovhost::WindowEvent;

namespace {

constexpr const char* PROGRAM = "zovview";
constexpr double READING_SHARE = 0.8;  // of the progress of a load; the rest brings it to the graphics card
constexpr double MESSAGE_SECONDS = 8.0;
constexpr int EXIT_BAD_MODEL = 2;

// Views or a story, rather than a model.
bool IsOfModel(const fs::path& file) { return ViewList::IsViewsFile(file) || IsStoryFile(file); }

}  // namespace

void Viewer::Open(const ModelSource& source) {
  if (!IsOfModel(source.file)) return OpenModel(source, {});
  if (IsLoading() || HasArrival()) return ofModel.push_back(source.file);
  OpenOfModel(source.file);
}

void Viewer::OpenOfModel(const fs::path& file) {
  if (IsStoryFile(file) && !ViewList::IsViewsFile(file)) return desk.Open(file, views[active]->GetStory());
  namedViews.Open(file);
}

void Viewer::OpenModel(const ModelSource& source, const std::vector<fs::path>& ofIt) {
  LeaveStories([this, source, ofIt] {
    waiting = source;
    ofModel = ofIt;
    window.Wake();
  });
}

// Files that come together belong together, in whatever order they come.
void Viewer::TakeDropped() {
  std::vector<fs::path> came = std::exchange(dropped, {});
  const auto model = std::find_if_not(came.rbegin(), came.rend(), IsOfModel);
  if (model == came.rend()) {
    for (const fs::path& file : came) Open({file});
    return;
  }
  const ModelSource source = {*model};
  std::erase_if(came, [](const fs::path& file) { return !IsOfModel(file); });
  OpenModel(source, came);
}

void Viewer::OnWake() {
  files.TakeAnswer();
  TakeDropped();
  if (devices.TakeWake() && window.IsFocused()) window.RequestFrame();
  AdvanceArrival();
  LoadWaiting();
}

void Viewer::LoadWaiting() {
  if (contents.loading.has_value()) return;  // this round is one that a load has served
  while (waiting.has_value() && window.IsOpen()) Load(*std::exchange(waiting, std::nullopt));
}

// On the window's own thread, which serves its events meanwhile: the importer is contained in a forked
// process, before which the threads of the graphics driver come to rest by glFinish. The child touches
// nothing that another thread may hold but the memory of the C library, which is fit for use after a fork.
void Viewer::Load(const ModelSource& source) {
  arrival.reset();
  sceneView.DropPrepared();
  contents.loading = LoadingStatus{0.0, "", source.GetName()};
  loadCancelled = false;
  for (const auto& view : views) view->HoldWelcome();  // the progress stands in its place
  glFinish();
  LoadedModel model = LoadModel(source, [this](double fraction, const char* step) {
    const std::string last = contents.loading->step;  // "Done" would be too early
    return ShowProgress(fraction * READING_SHARE, fraction < 1.0 ? step : last.c_str());
  });
  const bool loaded = window.IsOpen() && !loadCancelled && Prepare(model);
  progress.Clear();
  contents.loading.reset();
  if (scene != nullptr)
    for (const auto& view : views) view->ReleaseWelcome();
  window.RequestFrame();
  if (!window.IsOpen()) return;
  if (loaded) {
    arrival.emplace(Arrival{std::move(model)});
    return AdvanceArrival();
  }
  if (!waiting.has_value()) ofModel.clear();
  if (loadCancelled) return TellCancelled(source);
  TellBadModel(model.error);
}

// What cannot be brought to the graphics card tells why.
bool Viewer::Prepare(LoadedModel& model) {
  const auto report = [this](double fraction, const char* step) {
    return ShowProgress(READING_SHARE + fraction * (1.0 - READING_SHARE), step);
  };
  if (model.scene == nullptr) return false;
  if (sceneView.Prepare(*model.scene, report)) return true;
  model.error = model.source.GetName() + ": the graphics memory does not hold this model";
  return false;
}

// What was done while it was loading is not lost by it: it waits until nothing is asked any more, and asks
// itself where a story has changed meanwhile. A question that ends without leave has refused it.
void Viewer::AdvanceArrival() {
  using State = Arrival::State;
  if (!arrival.has_value() || IsAsking()) return;
  if (arrival->state == State::Asked) {
    const ModelSource refused = std::exchange(arrival, std::nullopt)->model.source;
    sceneView.DropPrepared();
    if (!waiting.has_value()) ofModel.clear();
    return TellCancelled(refused);
  }
  if (arrival->state == State::Waiting) {
    arrival->state = scene == nullptr ? State::Allowed : State::Asked;  // of nothing there is no story
    if (scene != nullptr)
      LeaveStories([this] {
        if (arrival.has_value()) arrival->state = State::Allowed;
        window.Wake();
      });
  }
  if (arrival->state == State::Allowed) ShowModel(std::move(std::exchange(arrival, std::nullopt)->model));
}

// Whether to go on: Escape breaks a load off, and a closed window must not wait for one.
bool Viewer::ShowProgress(double fraction, const char* step) {
  progress.Show(fraction, step);
  contents.loading->fraction = fraction;
  contents.loading->step = step;
  window.RequestFrame();
  if (!window.Step(0)) window.Hide();
  return window.IsOpen() && !loadCancelled;
}

// A first model that nobody waits for leaves nothing to show.
void Viewer::TellCancelled(const ModelSource& source) {
  if (scene == nullptr) return window.Close();
  ShowMessage(source.GetName() + ": loading was cancelled");
}

// The story of each view is of the model that shows.
void Viewer::LeaveStories(const std::function<void()>& then) {
  if (desk.IsExporting()) desk.Cancel();
  for (const auto& view : views) {
    ViewStory& story = view->GetStory();
    if (!story.IsChanged()) continue;
    return desk.Guard(story, [this, &story, then] {
      if (story.IsChanged()) story.BeginEmpty();  // they are to be lost
      LeaveStories(then);
    });
  }
  then();
}

// What cannot be shown leaves the present model where it is; without one there is nothing to stay for.
void Viewer::TellBadModel(const std::string& error) {
  if (scene != nullptr) return Tell(error);
  std::fprintf(stderr, "%s: %s\n", PROGRAM, error.c_str());
  exitCode = EXIT_BAD_MODEL;
  window.Close();
}

void Viewer::ShowModel(LoadedModel model) {
  sceneView.ShowPrepared();
  if (scene == nullptr) DrawFrame();  // which tells what the panel will cover
  for (std::size_t i = 0; i < views.size(); ++i) Enter(i, *model.scene);
  rest.Restart();
  scene = std::move(model.scene);
  scene->PrepareFaces();
  BeginRecording(model);
  modelFile = model.source.file;
  NoteRecent(modelFile);
  PresentFirstStory();
  contents.name = model.source.GetName();
  contents.triangleCount = scene->GetTriangleCount();
  contents.message.clear();
  window.SetTitle(contents.name + " - " + PROGRAM);
  namedViews.SetModel(scene.get(), modelFile,
                      settings != nullptr ? settings->GetModelFolder() : std::filesystem::path());
  ShowFirstView();
  for (const fs::path& file : std::exchange(ofModel, {})) OpenOfModel(file);
}

// Three and more are those of a drawing: the others show it from its sides.
void Viewer::Enter(std::size_t view, const zovhost::Scene& entered) {
  static constexpr std::array<std::string_view, MOST_VIEWS> SIDES = {"home", "top", "front", "right"};
  views[view]->SetScene(entered);
  if (views.size() < 3 || view == 0) return;
  views[view]->ShowParallel();
  views[view]->ShowAtOnce(*FindViewCommand(SIDES[view]));
}

// The first model begins it, others happen in it.
void Viewer::BeginRecording(const LoadedModel& model) {
  if (recorder == nullptr) return;
  const std::filesystem::path& file = model.source.file;
  if (recorder->HasBegun()) return NoteOpened(file);
  Recording header;
  header.model = file.empty()                      ? "building"
                 : file == FindDefaultModel().file ? "house"
                                                   : "file " + std::filesystem::absolute(file).string();
  header.width = views[0]->GetWidth();
  header.height = views[0]->GetHeight();
  header.scale = views[0]->GetScale();
  header.margins = views[0]->GetHub().GetFitMargins();
  recordedMargin = header.margins.left;
  recorder->Begin(header);
}

void Viewer::NoteOpened(const std::filesystem::path& file) {
  if (recorder == nullptr) return;
  WindowEvent opened;
  opened.type = WindowEvent::Type::FileDropped;
  opened.path = std::filesystem::absolute(file).string();
  recorder->Add(opened);
}

std::filesystem::path Viewer::FindModelFolder() const {
  std::error_code ignored;
  return modelFile.empty() ? std::filesystem::current_path(ignored)
                           : std::filesystem::absolute(modelFile, ignored).parent_path();
}

void Viewer::PresentFirstStory() {
  const std::filesystem::path file = std::exchange(firstStory, {});
  std::string error;
  if (file.empty()) return;
  if (!views[0]->GetStory().Read(file, error)) return ShowMessage(error);
  views[0]->GetStory().Present();
}

// At once: there is nothing to travel from.
void Viewer::ShowFirstView() {
  const std::string wanted = std::exchange(firstView, {});
  if (wanted.empty()) return;
  const std::optional<Korvane::CameraParameters> camera = namedViews.FindCamera(wanted);
  if (camera.has_value()) views[0]->GetHub().ApplyCameraParameters(*camera);
}

void Viewer::Fly(const Korvane::CameraParameters& camera) {
  if (recorder != nullptr) recorder->Add(camera);
  views[active]->Fly(camera);
}

void Viewer::Tell(const std::string& failure) {
  std::fprintf(stderr, "%s: %s\n", PROGRAM, failure.c_str());
  ShowMessage(failure);
}

void Viewer::ShowMessage(const std::string& text) {
  contents.message = text;
  messageTimer.Start(MESSAGE_SECONDS, false);
  window.RequestFrame();
}

}  // namespace zovview
