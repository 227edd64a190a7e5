// The viewer: events, commands, what is asked, and where the views stand.
#include "viewer/viewer.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <utility>

#include "commands/view_commands.h"
#include "files/text_path.h"
#include "views/picture_file.h"
#include "zovhost/resource_pack.h"

namespace zovview {

using zovhost::WindowEvent;

namespace {

constexpr double FIT_MARGIN = 0.05;   // of the view, at each side
constexpr double MOST_COVERED = 0.5;  // of a view by the panel: beyond that a fit does not mind it
constexpr std::size_t MOST_RECENT = 10;

}  // namespace

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
      dropped.emplace_back(event.path);  // the others of the same drop come next
      return window.Wake();
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
  if (event.type == WindowEvent::Type::MouseDown) hasNewPage = false;
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
  if (desk.IsOpen() && event.type == WindowEvent::Type::KeyDown) return OnDeskKey(event);
  if (pressed && contents.loading.has_value() && event.key == SDLK_ESCAPE) {
    loadCancelled = true;
    return;
  }
  if (pressed && menus.IsOpen() && event.key == SDLK_ESCAPE) {
    menus.Close();
    return window.RequestFrame();
  }
  if (pressed && (event.key == SDLK_F1 || event.key == SDLK_QUESTION)) {
    const bool ofWhole = event.key == SDLK_F1 && (event.modifiers & WindowEvent::SHIFT) != 0;
    if (ofWhole) {
      panel.ToggleVisible();
    } else {
      panel.ToggleHelp();
    }
    return window.RequestFrame();
  }
  if (pressed && event.key == SDLK_F11) {
    window.SetFullScreen(!window.IsFullScreen());
    return;
  }
  if (pressed && OnViewKey(event)) return;
  if (OnPageKey(event) || OnPanelKey(event)) return;
  if (pressed && zovhost::IsMenuKey(event) && !views[active]->GetStory().IsPresenting())
    return OnMenuKey(event);
  if (recorder != nullptr) recorder->Add(event);
  if (!views[active]->OnEvent(event)) LeaveView((event.modifiers & WindowEvent::SHIFT) != 0);
}

// To the panel, and the pages after it.
void Viewer::LeaveView(bool back) {
  if (back && EnterPage(std::nullopt, true)) return;
  if (panelFocus.Enter(back)) return window.RequestFrame();
  if (!back) EnterPage(std::nullopt, false);
}

// Round all views, as the pointer goes to any.
bool Viewer::OnViewKey(const WindowEvent& event) {
  constexpr unsigned HELD = WindowEvent::CONTROL | WindowEvent::ALT;
  if (event.key != SDLK_TAB || (event.modifiers & HELD) != WindowEvent::CONTROL || views.size() < 2)
    return false;
  const bool back = (event.modifiers & WindowEvent::SHIFT) != 0;
  panelFocus.Leave();
  if (!views[active]->IsPressed()) ActivateView((active + (back ? views.size() - 1 : 1)) % views.size());
  return true;
}

// That of what has the focus, or else of the view.
void Viewer::OnMenuKey(const WindowEvent& event) {
  Viewport& view = *views[active];
  if (view.GetFocus().GetFocus().IsActive()) {
    if (recorder != nullptr) recorder->Add(event);
    if (view.GetFocus().OnEvent(event)) return;
    return OpenMenu(active, ViewerMenus::Kind::View);
  }
  const double points = 1.0 / window.GetScale();
  OpenMenu(
      active, ViewerMenus::Kind::View,
      ViewerMenus::Corner{(view.GetX() + view.GetWidth() * 0.5) * points,
                          (window.GetHeight() - view.GetY() - view.GetHeight() * 0.5) * points, 0.5, 0.5});
}

// What a recording holds of it is the command that comes of it.
bool Viewer::OnPanelKey(const WindowEvent& event) {
  const bool wasActive = panelFocus.IsActive();
  const bool used = wasActive && panelFocus.OnEvent(event);
  if (wasActive) window.RequestFrame();
  const bool left = wasActive && !panelFocus.IsActive() && event.key == SDLK_TAB;
  const bool back = (event.modifiers & WindowEvent::SHIFT) != 0;
  return used || (left && !back && EnterPage(std::nullopt, false));
}

// The question's own; what was held when it came is released as ever.
void Viewer::OnDeskKey(const WindowEvent& event) {
  if (event.repeated) return;
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
    // Once the question is closed, as what it leads to may be another: whether changes are to be lost.
    const auto chosen = std::make_shared<std::filesystem::path>();
    const auto take = [chosen](const std::filesystem::path& file, std::string& /*error*/) {
      *chosen = file;
      return true;
    };
    const auto open = [this, chosen] { Open({*chosen}); };
    return files.Ask(
        {"Open a model", "Open", false, FindModelFolder() / modelFile.filename(), take, {}, open});
  }
  const auto write = [this, view, enlargement = request.enlargement](const std::filesystem::path& file,
                                                                     std::string& error) {
    return WritePictureFile(file, views[view]->GetHub(), sceneView, views[view]->GetSelection().GetPart(),
                            enlargement, window.GetScale(), error);
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
  menus.Open(kind, at.has_value() ? at : FindFocusCorner(view));
  window.RequestFrame();
}

// Below what keys have pressed; none: where the pointer is.
std::optional<ViewerMenus::Corner> Viewer::FindFocusCorner(std::size_t view) {
  const zovhost::FocusThing* const thing = views[view]->GetFocus().GetFocus().Get();
  if (thing == nullptr) return std::nullopt;
  const double points = 1.0 / window.GetScale();
  const Korvane::Vector2 low = thing->bounds.Min();
  return ViewerMenus::Corner{(views[view]->GetX() + low.x) * points,
                             (window.GetHeight() - views[view]->GetY() - low.y) * points, 0.0, 0.0};
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

FreeView Viewer::FindFreeView(Viewport& view) {
  return {static_cast<double>(view.GetWidth()) / view.GetHeight(), view.GetHub().GetFitMargins()};
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
  namedViews.GetPictures().SetFreeView(FindFreeView(*views[active]));
  const Korvane::FitMargins& first = views[0]->GetHub().GetFitMargins();
  if (recorder == nullptr || !recorder->HasBegun() || first.left == recordedMargin) return;
  recordedMargin = first.left;
  recorder->Add(first);
}

}  // namespace zovview
