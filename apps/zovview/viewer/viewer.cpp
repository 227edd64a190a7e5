#include "viewer/viewer.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "commands/command_icons.h"
#include "commands/language_commands.h"
#include "files/text_path.h"
#include "views/picture_look.h"
#include "zovhost/host_pictures.h"
#include "zovhost/phrases.h"
#include "zovhost/resource_pack.h"

namespace zovview {

using zovhost::WindowEvent;

namespace {

constexpr const char* PROGRAM = "zovview";

// A pointer that is not seen.
zovhost::Image MakeEmptyImage() {
  constexpr int SIDE = 8;
  constexpr std::size_t BYTES = std::size_t{4} * SIDE * SIDE;
  zovhost::Image image;
  image.width = image.height = SIDE;
  image.rgba.assign(BYTES, 0);
  return image;
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
                  [this](const Korvane::CameraParameters& camera) { Fly(camera); },
                  [this](const std::string& name) {
                    if (!panel.IsUnfolded()) ShowMessage("Kept as " + name);
                  }},
                 sceneView),
      cursorScales(Korvane::CURSOR_NONE, 0.0),
      gui(window),
      panel([this] { window.RequestFrame(); }),
      desk({[this] { window.RequestFrame(); }, [this](const std::string& line) { ShowMessage(line); },
            [this] { return FindModelFolder(); },
            [this](const std::filesystem::path& file) { NoteOpened(file); },
            [this](const Korvane::Story& story, const StoryExport::Options& wanted, std::string& error) {
              return BeginExport(story, wanted, error);
            },
            [this](FileQuestion question) { files.Ask(std::move(question)); }}),
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
  gui.SetIcons(GetPanelIcons(), zovhost::PaintIcon);
  sceneView.SetScene(nullptr);  // whose ground shows until there is one
  panelFocus.AddGroup([this] { return panel.GetThings(); },
                      [this](int id, zovhost::FocusStep step) { return panel.Steer(id, step); });
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
  view.GetRenderer().SetSceneDraw(
      [this, &view](const Korvane::CameraParameters& camera, int width, int height) {
        const PictureLook look(sceneView, view.GetSelection().GetPart());
        const double proportions = static_cast<double>(width) / height;
        sceneView.Draw(FindFreeView(view).Frame(camera, proportions), width, height);
      });
  if (index == 0) ReadSettings(view);
  TakeSettings(view);
  SpeakLanguage();
  view.ApplyPreferences();
  if (!view.Create()) std::fprintf(stderr, "%s: the tools and the cube cannot be drawn\n", PROGRAM);
  devices.AddView(view.GetTarget());
  if (settings == nullptr) return;
  view.GetBars().SetPlaces(settings->GetBarPlaces());
  RestoreCube(settings->GetCube(), view.GetTarget());
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
}

// The other views begin as the first one does, which has read them.
void Viewer::TakeSettings(Viewport& view) {
  const Korvane::HelmDisc& first = views[0]->GetDisc();
  view.GetDisc().GetParameters() = first.GetParameters();
  view.GetDisc().SetDefaultDiscType(first.GetDefaultDiscType());
  if (settings != nullptr) devices.Restore(settings->GetDevices(), view.GetTarget());
  view.GetHub().GetApplicationParameters().preserve_orbit_up_direction =
      view.GetDisc().GetParameters().keepSceneUpright;
}

void Viewer::ReadKept(Viewport& view) {
  std::string error;
  settings->GetDevices() = devices.GetKept(view.GetTarget());
  if (!settings->Read(view.GetDisc(), error)) std::fprintf(stderr, "%s: %s\n", PROGRAM, error.c_str());
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
  gui.SetLight(ground.lightPanels);
  if (ground == sceneView.GetOptions().ground) return;
  sceneView.GetOptions().ground = ground;
  namedViews.GetPictures().Renew();
}

void Viewer::KeepSettings() {
  if (settings == nullptr) return;
  const Choices kept = settings->GetChoices();
  settings->GetChoices() = preferences.Get();
  if (zovhost::ViewHub::WantsReducedMotion()) settings->GetChoices().reducedMotion = kept.reducedMotion;
  if (settings->GetChoices().ground == givenGround) settings->GetChoices().ground = kept.ground;
  for (std::size_t view = 0; view < views.size(); ++view) KeepSettings(view);
}

// A drag may have borrowed some of them.
void Viewer::KeepSettings(std::size_t index) {
  std::string error;
  Viewport& view = *views[index];
  if (view.IsPressed()) return;
  settings->GetBarPlaces() = view.GetBars().GetPlaces();
  settings->GetCube() = ReadCube(view.GetTarget());
  settings->GetDevices() = devices.GetKept(view.GetTarget());
  settings->SetScale(view.GetScale());
  if (settings->Keep(view.GetDisc(), error, index)) return;
  std::fprintf(stderr, "%s: %s\n", PROGRAM, error.c_str());
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

}  // namespace zovview
