#include "viewer.h"

#include <SDL_keycode.h>
#include <epoxy/gl.h>
#include <imgui.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "language_commands.h"
#include "picture_file.h"
#include "text_path.h"
#include "view_commands.h"
#include "zovhost/accent.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"

namespace zovview {

using zovhost::WindowEvent;

namespace {

constexpr const char* PROGRAM = "zovview";
constexpr double READING_SHARE = 0.8;  // of the progress of a load; the rest brings it to the graphics card
constexpr double MESSAGE_SECONDS = 8.0;
constexpr int EXIT_BAD_MODEL = 2;
constexpr double FIT_MARGIN = 0.05;     // of the view, at each side
constexpr double MOST_COVERED = 0.5;    // of a view by the panel: beyond that a fit does not mind it
constexpr float EDITOR_RIGHT = 220.0F;  // points: beside the cube
constexpr float EDITOR_TOP = 12.0F;
constexpr std::size_t MOST_RECENT = 10;
constexpr double MARK_WIDTH = 2.0;  // points
constexpr SDL_Keycode SHARP_S = 0xDF;

// A pointer that is not seen.
zovhost::Image MakeEmptyImage() {
  constexpr int SIDE = 8;
  constexpr std::size_t BYTES = std::size_t{4} * SIDE * SIDE;
  zovhost::Image image;
  image.width = image.height = SIDE;
  image.rgba.assign(BYTES, 0);
  return image;
}

// By the key that it is on where no key is its own.
bool IsQuestionMark(const WindowEvent& event) {
  const bool shifted = (event.modifiers & WindowEvent::SHIFT) != 0;
  return event.key == SDLK_QUESTION || (shifted && (event.key == SDLK_SLASH || event.key == SHARP_S));
}

}  // namespace

Viewer::MessageTimer::MessageTimer(Viewer& owner) : viewer(owner) {}

void Viewer::MessageTimer::Timeout() {
  viewer.contents.message.clear();
  viewer.window.RequestFrame();
}

bool Viewer::Surface::ApplyCursor(Korvane::CursorID id) {
  if (viewer.active == view) viewer.ShowCursor(id);
  return true;
}

bool Viewer::Surface::WarpPointer(int x, int y) {
  const Viewport& place = *viewer.views[view];
  viewer.window.WarpPointer(place.GetX() + x, place.GetY() + y);
  return true;
}

bool Viewer::Surface::OpenMenu(Korvane::MenuID id) {
  const std::optional<ViewerMenus::Kind> kind = ViewerMenus::FindKind(id);
  if (kind.has_value()) viewer.OpenMenu(view, *kind);
  return kind.has_value();
}

bool Viewer::Surface::OpenUCSMenu(int /*x*/, int /*y*/) {
  viewer.OpenMenu(view, ViewerMenus::Kind::Coordinates);
  return true;
}

Viewer::Viewer(zovhost::Window& onWindow, const Options& options)
    : window(onWindow),
      recorder(options.recorder),
      settings(options.settings),
      givenGround(options.ground),
      log(options.log),
      namedViews({[this] { window.RequestFrame(); }, [this](const std::string& line) { Tell(line); },
                  [this] { return FindModelFolder(); },
                  [this](FileQuestion question) { files.Ask(std::move(question)); },
                  [this](const Korvane::CameraParameters& camera) { Fly(camera); }},
                 sceneView),
      cursorScales(Korvane::CURSOR_NONE, 0.0),
      gui(window),
      desk({[this] { window.RequestFrame(); }, [this](const std::string& line) { ShowMessage(line); },
            [this] { return FindModelFolder(); },
            [this](const std::filesystem::path& file) { NoteOpened(file); },
            [this](const Korvane::Story& story, const StoryExport::Options& wanted, std::string& error) {
              return BeginExport(story, wanted, error);
            }}),
      files({[this] { window.Wake(); },
             [this](FileQuestion question) { desk.AskForFile(std::move(question)); },
             [this](const std::string& line) { ShowMessage(line); }}),
      devices(window),
      firstStory(options.story),
      firstView(options.view),
      messageTimer(*this),
      rest([this] { window.RequestFrame(); }),
      progress(ProgressLine::OffTerminal::Silent) {
  window.DefineCursor(Korvane::CURSOR_NONE, MakeEmptyImage(), 0, 0);
  // A recording is played in English, and made so unless another is asked for.
  preferences.SetSessionLanguage(options.language.empty() && recorder != nullptr ? "en" : options.language);
  panelFocus.AddGroup([this] { return panel.GetThings(); });
  for (int i = 0; i < std::clamp(options.views, 1, MOST_VIEWS); ++i) AddView();
  window.SetEventHandler([this](const WindowEvent& event) { OnEvent(event); });
  window.SetFrameHandler([this] { DrawFrame(); });
  window.SetWakeHandler([this] { OnWake(); });
  devices.SetTarget(views[active]->GetTarget());
  OnResized();
}

void Viewer::AddView() {
  const std::size_t index = views.size();
  surfaces.push_back(std::make_unique<Surface>(*this, index));
  views.push_back(std::make_unique<Viewport>(Viewport::Surroundings{
      [this] { window.RequestFrame(); }, *surfaces.back(),
      [this, index](int /*x*/, int /*y*/) { OpenMenu(index, ViewerMenus::Kind::View); },
      [this] { ShowHelp(); },
      [this, index](ViewBars::Menu menu, const zovhost::BarMenuPlace& place) {
        OpenBarMenu(index, menu, place);
      },
      settings != nullptr && index == 0, [this, index](StoryRequest request) { AskForStory(index, request); },
      [this] {
        devices.TogglePage();
        window.RequestFrame();
      },
      &preferences, &namedViews, [this, index](const FileRequest& request) { AskForFile(index, request); },
      [this](const std::string& file) { Open({ToPath(file)}); }}));
  Viewport& view = *views.back();
  view.GetRenderer().SetFaceShow(
      [this](const zovhost::SceneFace* face) { sceneView.SetFaceHighlight(face); });
  view.GetRenderer().SetSceneDraw([this](const Korvane::CameraParameters& camera, int width, int height) {
    sceneView.Draw(camera, width, height);
  });
  if (index == 0) ReadSettings(view);
  SpeakLanguage();
  view.ApplyPreferences();
  if (!view.Create()) std::fprintf(stderr, "%s: the tools and the cube cannot be drawn\n", PROGRAM);
  if (index == 0 && settings != nullptr) view.GetBars().SetPlaces(settings->GetBarPlaces());
}

// What the environment says holds for the session, and is not kept; a recording is played without it.
void Viewer::ReadSettings(Viewport& view) {
  if (settings != nullptr) ReadKept(view);
  Choices choices = settings != nullptr ? settings->GetChoices() : Choices();
  if (zovhost::ViewHub::WantsReducedMotion() && recorder == nullptr) choices.reducedMotion = true;
  if (!givenGround.empty()) choices.ground = givenGround;
  preferences.Set(std::move(choices));
  ShowGround();
  preferences.SetObserver([this] { ApplyPreferences(); });
  view.GetHub().GetApplicationParameters().preserve_orbit_up_direction =
      view.GetDisc().GetParameters().keepSceneUpright;
}

void Viewer::ReadKept(Viewport& view) {
  std::string error;
  settings->GetDevices() = devices.GetKept(view.GetTarget());
  if (!settings->Read(view.GetDisc(), error)) std::fprintf(stderr, "%s: %s\n", PROGRAM, error.c_str());
  devices.Restore(settings->GetDevices(), view.GetTarget());
}

// Between two frames, as the panels speak it too.
void Viewer::SpeakLanguage() {
  const zovhost::Phrases& before = zovhost::GetPhrases();
  spoken = &FindLanguage(preferences);
  zovhost::SpeakLanguage(*spoken);
  const std::shared_ptr<const zovhost::ResourcePack> texts = zovhost::ResourcePack::Make(*spoken);
  for (const auto& view : views) view->SetLanguage(texts, before);
}

void Viewer::TellFontProblem() {
  const std::string problem = gui.TakeProblem();
  if (!problem.empty()) std::fprintf(stderr, "%s: %s\n", PROGRAM, problem.c_str());
}

void Viewer::ApplyPreferences() {
  for (const auto& view : views) view->ApplyPreferences();
  ShowGround();
  window.RequestFrame();
}

void Viewer::ShowGround() {
  const zovhost::SceneGround& ground = FindGround(preferences.Get().ground);
  sceneView.GetOptions().ground = ground;
  gui.SetLight(ground.lightPanels);
}

void Viewer::KeepSettings() {
  if (settings == nullptr) return;
  std::string error;
  const Choices kept = settings->GetChoices();
  settings->GetBarPlaces() = views[0]->GetBars().GetPlaces();
  settings->GetChoices() = preferences.Get();
  if (zovhost::ViewHub::WantsReducedMotion()) settings->GetChoices().reducedMotion = kept.reducedMotion;
  if (settings->GetChoices().ground == givenGround) settings->GetChoices().ground = kept.ground;
  settings->GetDevices() = devices.GetKept(views[0]->GetTarget());
  settings->SetScale(views[0]->GetScale());
  if (!settings->Keep(views[0]->GetDisc(), error)) {
    std::fprintf(stderr, "%s: %s\n", PROGRAM, error.c_str());
  }
}

Viewer::~Viewer() {
  KeepSettings();
  namedViews.Save();
  window.SetEventHandler(nullptr);
  window.SetFrameHandler(nullptr);
  window.SetWakeHandler(nullptr);
}

int Viewer::Run(const ModelSource& first) {
  Open(first);
  while (window.Step(-1)) {
    if (!window.IsFrameRequested() && !IsLoading()) log.AddRest();
  }
  return exitCode;
}

// ---- models ----

void Viewer::Open(const ModelSource& source) {
  if (ViewList::IsViewsFile(source.file)) return namedViews.Open(source.file);
  if (IsStoryFile(source.file)) return desk.Open(source.file, views[active]->GetStory());
  LeaveStories([this, source] {
    waiting = source;
    window.Wake();
  });
}

void Viewer::OnWake() {
  files.TakeAnswer();
  if (devices.TakeWake() && window.IsFocused()) window.RequestFrame();
  LoadWaiting();
}

void Viewer::LoadWaiting() {
  if (contents.loading.has_value()) return;  // this round is one that a load has served
  while (waiting.has_value() && window.IsOpen()) Load(*std::exchange(waiting, std::nullopt));
}

// On the window's own thread, which serves its events meanwhile: the importer is contained in a forked
// process, and a fork wants all other threads at rest. Those of the graphics driver are, after glFinish, and
// that of the six-axis devices waits.
void Viewer::Load(const ModelSource& source) {
  contents.loading = LoadingStatus{0.0, "", source.GetName()};
  loadCancelled = false;
  glFinish();
  LoadedModel model = LoadModel(source, [this](double fraction, const char* step) {
    return ShowProgress(fraction * READING_SHARE, step);
  });
  if (window.IsOpen() && !loadCancelled) {
    ShowModel(std::move(model));
  } else if (window.IsOpen()) {
    TellCancelled(source);
  }
  progress.Clear();
  contents.loading.reset();
  window.RequestFrame();
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
void Viewer::ShowModel(LoadedModel model) {
  const auto report = [this](double fraction, const char* step) {
    return ShowProgress(READING_SHARE + fraction * (1.0 - READING_SHARE), step);
  };
  if (model.scene != nullptr && !sceneView.SetScene(model.scene.get(), report)) {
    if (!window.IsOpen()) return;
    if (loadCancelled) return TellCancelled(model.source);
    model.error = model.source.GetName() + ": the graphics memory does not hold this model";
    model.scene.reset();
  }
  if (model.scene == nullptr) {
    if (scene != nullptr) return Tell(model.error);
    std::fprintf(stderr, "%s: %s\n", PROGRAM, model.error.c_str());
    exitCode = EXIT_BAD_MODEL;
    window.Close();
    return;
  }
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

// ---- events ----

void Viewer::OnEvent(const WindowEvent& event) {
  log.Add(event);
  switch (event.type) {
    case WindowEvent::Type::MouseDown:
    case WindowEvent::Type::MouseMove:
    case WindowEvent::Type::MouseUp:
    case WindowEvent::Type::Wheel:
    case WindowEvent::Type::FingerDown:
    case WindowEvent::Type::FingerMove:
    case WindowEvent::Type::FingerUp:
      return OnPointerEvent(event);
    case WindowEvent::Type::KeyDown:
    case WindowEvent::Type::KeyUp:
      return OnKeyEvent(event);
    case WindowEvent::Type::MouseLeave:
    case WindowEvent::Type::FocusLost:
    case WindowEvent::Type::FingersLost:
      if (recorder != nullptr) recorder->Add(event);
      panelFocus.OnEvent(event);
      views[active]->OnEvent(event);
      return;
    case WindowEvent::Type::Resized:
      return OnResized();
    case WindowEvent::Type::FileDropped:
      return Open({event.path});
    case WindowEvent::Type::Closing:
      if (desk.GetPage() == StoryDesk::Page::Losing) return;  // who asks twice means it
      window.KeepOpen();
      return LeaveStories([this] { window.Close(); });
  }
}

// A drag belongs to the view in which it began.
void Viewer::OnPointerEvent(WindowEvent event) {
  if (!views[active]->IsPressed()) ActivateView(FindViewAt(places, event.x, event.y));
  panelFocus.OnEvent(event);
  event.x -= views[active]->GetX();
  event.y -= views[active]->GetY();
  if (recorder != nullptr) recorder->Add(event);
  views[active]->OnEvent(event);
}

// The pointer has left the other one, and so have the keys.
void Viewer::ActivateView(std::size_t index) {
  if (index == active) return;
  for (const WindowEvent::Type type : {WindowEvent::Type::MouseLeave, WindowEvent::Type::FocusLost}) {
    WindowEvent event;
    event.type = type;
    views[active]->OnEvent(event);
  }
  active = index;
  devices.SetTarget(views[active]->GetTarget());
  window.RequestFrame();
}

void Viewer::OnKeyEvent(const WindowEvent& event) {
  const bool pressed = event.type == WindowEvent::Type::KeyDown && !event.repeated;
  if (pressed && contents.loading.has_value() && event.key == SDLK_ESCAPE) {
    loadCancelled = true;
    return;
  }
  if (pressed && desk.IsOpen()) return OnDeskKey(event);
  if (pressed && menus.IsOpen() && event.key == SDLK_ESCAPE) {
    menus.Close();
    return window.RequestFrame();
  }
  if (pressed && (event.key == SDLK_F1 || IsQuestionMark(event))) {
    panel.ToggleVisible();
    return window.RequestFrame();
  }
  if (pressed && event.key == SDLK_F11) {
    window.SetFullScreen(!window.IsFullScreen());
    return;
  }
  if (OnPanelKey(event)) return;
  if (recorder != nullptr) recorder->Add(event);
  const bool back = (event.modifiers & WindowEvent::SHIFT) != 0;
  if (!views[active]->OnEvent(event) && panelFocus.Enter(back)) window.RequestFrame();
}

// What a recording holds of it is the command that comes of it.
bool Viewer::OnPanelKey(const WindowEvent& event) {
  const bool wasActive = panelFocus.IsActive();
  const bool used = wasActive && panelFocus.OnEvent(event);
  if (wasActive) window.RequestFrame();
  return used;
}

void Viewer::OnDeskKey(const WindowEvent& event) {
  if (event.key == SDLK_ESCAPE) desk.Cancel();
  if (event.key == SDLK_RETURN || event.key == SDLK_KP_ENTER) desk.Confirm();
}

void Viewer::Run(const ViewCommand& command) {
  if (recorder != nullptr) recorder->Add(command);
  views[active]->Run(command);
}

void Viewer::ShowHelp() {
  panel.ShowHelp();
  window.RequestFrame();
}

void Viewer::AskForFile(std::size_t view, const FileRequest& request) {
  if (request.kind == FileRequest::Kind::OpenModel) {
    const auto open = [this](const std::filesystem::path& file, std::string& /*error*/) {
      Open({file});
      return true;
    };
    return files.Ask({"Open a model", "Open", false, FindModelFolder() / modelFile.filename(), open});
  }
  const auto write = [this, view, enlargement = request.enlargement](const std::filesystem::path& file,
                                                                     std::string& error) {
    return WritePictureFile(file, views[view]->GetHub(), sceneView, enlargement, window.GetScale(), error);
  };
  const std::filesystem::path name = modelFile.empty() ? "view" : modelFile.stem();
  files.Ask(
      {"Save a picture of the view as", "Save", true, FindModelFolder() / (name.string() + ".png"), write});
}

void Viewer::NoteRecent(const std::filesystem::path& file) {
  if (file.empty()) return;
  preferences.Edit([&file](Choices& choices) {
    std::error_code ignored;
    const std::string text = ToText(std::filesystem::absolute(file, ignored));
    std::vector<std::string>& recent = choices.recentFiles;
    std::erase(recent, text);
    recent.insert(recent.begin(), text);
    recent.resize(std::min(recent.size(), MOST_RECENT));
  });
}

void Viewer::AskForStory(std::size_t view, StoryRequest request) {
  desk.Ask(request, views[view]->GetStory());
}

std::unique_ptr<StoryExport> Viewer::BeginExport(const Korvane::Story& story,
                                                 const StoryExport::Options& options, std::string& error) {
  if (scene != nullptr) return StoryExport::Begin(story, *scene, sceneView, options, error);
  error = "there is no model to show";
  return nullptr;
}

void Viewer::OpenMenu(std::size_t view, ViewerMenus::Kind kind, std::optional<ViewerMenus::Corner> at) {
  ActivateView(view);
  menus.Open(kind, at);
  window.RequestFrame();
}

void Viewer::OpenBarMenu(std::size_t view, ViewBars::Menu menu, const zovhost::BarMenuPlace& place) {
  const double points = 1.0 / window.GetScale();
  const double x = (views[view]->GetX() + place.x) * points;
  const double y = (window.GetHeight() - views[view]->GetY() - place.y) * points;
  OpenMenu(view, ViewerMenus::FindKind(menu),
           ViewerMenus::Corner{x, y, place.atRight ? 1.0 : 0.0, place.atBottom ? 1.0 : 0.0});
}

// Numbers without a picture of their own show the system's arrow.
void Viewer::ShowCursor(Korvane::CursorID id) {
  double& drawnFor = cursorScales[static_cast<std::size_t>(id)];
  const zovhost::ResourcePack& resources = views[active]->GetRenderer().GetResources();
  zovhost::CursorPicture picture;
  const double scale = window.GetScale();
  if (drawnFor != scale && resources.HasCursor(id) && resources.RenderCursor(id, scale, picture)) {
    window.DefineCursor(id, picture.image, picture.hotX, picture.hotY);
    drawnFor = scale;
  }
  window.SetCursor(id);
}

void Viewer::OnResized() {
  PlaceViews();
  if (recorder == nullptr) return;
  WindowEvent resized;
  resized.type = WindowEvent::Type::Resized;
  resized.x = views[0]->GetWidth();
  resized.y = views[0]->GetHeight();
  resized.scale = views[0]->GetScale();
  recorder->Add(resized);
}

void Viewer::PlaceViews() {
  places = zovview::PlaceViews(static_cast<int>(views.size()), window.GetWidth(), window.GetHeight());
  for (std::size_t i = 0; i < views.size(); ++i) {
    const ViewPlace& place = places[i];
    views[i]->SetPlace(place.x, place.y, place.width, place.height, window.GetScale());
  }
}

// The panel stands at the left, over the views that begin there.
void Viewer::NoteMargins() {
  const double reach = panel.GetReach() * window.GetScale();
  for (const auto& view : views) {
    Korvane::FitMargins margins = {FIT_MARGIN, FIT_MARGIN, FIT_MARGIN, FIT_MARGIN};
    const double covered = view->GetX() == 0 ? reach / view->GetWidth() : 0.0;
    if (covered < MOST_COVERED) margins.left += covered;
    view->SetFitMargins(margins);
  }
  const Korvane::FitMargins& first = views[0]->GetHub().GetFitMargins();
  if (recorder == nullptr || !recorder->HasBegun() || first.left == recordedMargin) return;
  recordedMargin = first.left;
  recorder->Add(first);
}

// ---- the frame ----

void Viewer::DrawFrame() {
  log.AddFrame();
  if (spoken != &FindLanguage(preferences)) SpeakLanguage();
  desk.Advance();
  namedViews.Advance();
  devices.Advance(recorder);
  glDisable(GL_SCISSOR_TEST);
  glClearColor(0.0F, 0.0F, 0.0F, 1.0F);  // what shows between two views
  glClear(GL_COLOR_BUFFER_BIT);
  DrawViews();
  // Over a panel or a menu the pointer is no tool.
  const bool ofPanels = gui.HasPointer() || menus.IsOpen();
  if (views[active]->GetStory().IsPresenting()) {
    window.SetCursor(Korvane::CURSOR_NONE);
  } else if (ofPanels || !views[active]->GetManager().OnSetCursor()) {
    ShowCursor(Korvane::CURSOR_ARROW);
  }
  glViewport(0, 0, window.GetWidth(), window.GetHeight());
  gui.BeginFrame();
  TellFontProblem();
  DrawPanels();
  MarkActiveView();
  gui.EndFrame();
  NoteMargins();
  if (window.IsFrameRequested()) return;  // what has changed is drawn first
  KeepSettings();
  namedViews.Save();
}

void Viewer::DrawViews() {
  for (const auto& view : views) {
    view->PerformFrame();
    sceneView.GetOptions().moving =
        sceneView.DropsDetail() && rest.IsMoving(*view, contents.loading.has_value());
    sceneView.GetOptions().selectedPart = view->GetSelection().GetPart();
    sceneView.Draw(view->GetHub().GetView(), view->GetX(), view->GetY(), view->GetWidth(), view->GetHeight(),
                   window.GetScale());
    view->DrawWidgets();
  }
}

// That the keys go to; one alone needs no mark.
void Viewer::MarkActiveView() const {
  if (views.size() < 2) return;
  const double points = 1.0 / window.GetScale();
  const ViewPlace& place = places[active];
  const double inset = (MARK_WIDTH - 1.0) / 2.0;  // a line is drawn through the middles of pixels
  const auto at = [points, this](int x, int y, double in) {
    return ImVec2(static_cast<float>(x * points + in),
                  static_cast<float>((window.GetHeight() - y) * points + in));
  };
  const auto& [red, green, blue] = zovhost::ACCENT_COLOUR;
  const ImVec4 accent(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue), 1.0F);
  ImGui::GetBackgroundDrawList()->AddRect(
      at(place.x, place.y + place.height, inset), at(place.x + place.width, place.y, -inset),
      ImGui::GetColorU32(accent), 0.0F, 0, static_cast<float>(MARK_WIDTH));
}

void Viewer::DrawPanels() {
  const ViewTarget& target = views[active]->GetTarget();
  desk.Draw();
  if (target.story->IsPresenting()) return;
  const float right = ImGui::GetIO().DisplaySize.x - EDITOR_RIGHT;
  target.story->GetEditor().Draw(right, EDITOR_TOP);
  devices.DrawPage(right, EDITOR_TOP);
  panel.ShowFocus(panelFocus.Get());
  const ViewCommand* const pressed = panel.Draw(contents, target);
  const bool hadMenu = menus.IsOpen();
  const ViewCommand* const chosen = menus.Draw(target);
  if (menus.IsOpen() != hadMenu) window.RequestFrame();  // the pointer changes with it
  panelFocus.Get();                                      // tells of a state that has changed
  if (pressed != nullptr) Run(*pressed);
  if (pressed != nullptr && panelFocus.IsActive()) window.RequestFrame();
  if (chosen != nullptr) Run(*chosen);
}

}  // namespace zovview
