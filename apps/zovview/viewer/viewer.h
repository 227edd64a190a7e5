#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/viewer_menus.h"
#include "files/file_desk.h"
#include "files/model_source.h"
#include "files/progress_line.h"
#include "korvane/interval_timer.h"
#include "panel/viewer_panel.h"
#include "recordings/event_log.h"
#include "recordings/recorder.h"
#include "settings/settings_file.h"
#include "stories/story_desk.h"
#include "viewer/view_devices.h"
#include "viewer/view_grid.h"
#include "viewport/view_rest.h"
#include "viewport/viewport.h"
#include "views/free_view.h"
#include "views/view_list.h"
#include "zovhost/gl_scene_view.h"
#include "zovhost/gui.h"
#include "zovhost/languages.h"
#include "zovhost/window.h"

namespace zovview {

/// The viewer in a window: one view of the model, or up to four beside each other.
class Viewer {
 public:
  struct Options {
    int views = 1;  ///< To MOST_VIEWS.
    /// Hears what happens to the first view; null: nobody does. Borrowed.
    Recorder* recorder = nullptr;
    /// Events, frames and rests are told on the error stream.
    bool log = false;
    /// Of all views, which otherwise begin as they come; discs introduce themselves, in the first view, only
    /// where it can be kept that they have. Borrowed.
    SettingsFile* settings = nullptr;
    /// Opened with the first model, and presented; empty for none.
    std::filesystem::path story = {};
    /// Shown first of the first model: the name of a view that is kept of it, or a file of views; empty for
    /// the start view.
    std::string view = {};
    /// A name of the kit's grounds, for this session; it is not kept. Empty for that of the settings.
    std::string ground = {};
    /// Spoken until the user chooses another, and not kept: a tag or a locale's name. Empty, or of no
    /// language that there is: the one of the settings or of the environment.
    std::string language = {};
  };

  explicit Viewer(zovhost::Window& onWindow) : Viewer(onWindow, Options()) {}
  Viewer(zovhost::Window& onWindow, const Options& options);
  ~Viewer();
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  /// Until the window is closed, or the first model turns out not to be one. The exit code of the program.
  int Run(const ModelSource& first);

  /// Loads a model in one of the next rounds of the window's loop; it replaces the present one when that has
  /// succeeded. While another is loading, this one follows it; of several only the last. A file of views or
  /// of a story is of the model that is loading, or else of the present one.
  void Open(const ModelSource& source);
  bool IsLoading() const { return waiting.has_value() || contents.loading.has_value(); }
  /// A model has been loaded, and shows once no question is open.
  bool HasArrival() const { return arrival.has_value(); }
  /// Of the last failure, for a while; empty for none.
  const std::string& GetMessage() const { return contents.message; }
  const zovhost::Scene* GetScene() const { return scene.get(); }
  /// In the order of PlaceViews.
  Viewport& GetView(std::size_t index) { return *views[index]; }
  Preferences& GetPreferences() { return preferences; }
  const zovhost::GLSceneView& GetSceneView() const { return sceneView; }
  std::size_t GetViewCount() const { return views.size(); }
  StoryDesk& GetDesk() { return desk; }
  ViewList& GetNamedViews() { return namedViews; }
  const NamedViewsPanel& GetNamedViewsPanel() const { return panel.GetNamedViews(); }
  const ViewerPanel& GetPanel() const { return panel; }
  ViewDevices& GetDevices() { return devices; }
  bool IsMenuOpen() const { return menus.IsOpen(); }
  /// The one that was opened last.
  ViewerMenus::Kind GetOpenMenu() const { return menus.GetKind(); }
  /// Of the panel, which follows on those of the views.
  zovhost::KeyboardFocus& GetPanelFocus() { return panelFocus; }
  /// Of the menu that is open.
  zovhost::MenuKeys& GetMenuKeys() { return menus.GetKeys(); }
  int GetExitCode() const { return exitCode; }

 private:
  // Lets a message go after a while.
  class MessageTimer : public Korvane::IntervalTimer {
   public:
    explicit MessageTimer(Viewer& owner);
    void Timeout() override;

   private:
    Viewer& viewer;
  };

  // What a view asks of the window that it shares.
  class Surface : public zovhost::RendererHost {
   public:
    Surface(Viewer& owner, std::size_t index) : viewer(owner), view(index) {}
    bool ApplyCursor(Korvane::CursorID id) override;
    bool WarpPointer(int x, int y) override;
    bool OpenMenu(Korvane::MenuID id) override;
    bool OpenUCSMenu(int x, int y) override;

   private:
    Viewer& viewer;
    std::size_t view;
  };

  // A model that has been loaded, while the present one still shows.
  struct Arrival {
    enum class State : int { Waiting, Asked, Allowed };
    LoadedModel model;
    State state = State::Waiting;
  };

  void AddView();
  void ReadSettings(Viewport& view);
  void ReadKept(Viewport& view);
  void TakeSettings(Viewport& view);
  void ApplyPreferences();
  void ShowGround();
  void SpeakLanguage();
  void TellFontProblem();
  void KeepSettings();
  void KeepSettings(std::size_t view);
  void OnEvent(const zovhost::WindowEvent& event);
  void OnPointerEvent(zovhost::WindowEvent event);
  void OnKeyEvent(const zovhost::WindowEvent& event);
  bool OnViewKey(const zovhost::WindowEvent& event);
  void OnMenuKey(const zovhost::WindowEvent& event);
  bool OnPanelKey(const zovhost::WindowEvent& event);
  void OnDeskKey(const zovhost::WindowEvent& event);
  void OnResized();
  void PlaceViews();
  static FreeView FindFreeView(Viewport& view);
  void NoteMargins();
  void ActivateView(std::size_t index);
  void BeginRecording(const LoadedModel& model);
  void Run(const ViewCommand& command);
  void OpenMenu(std::size_t view, ViewerMenus::Kind kind, std::optional<ViewerMenus::Corner> at = {});
  std::optional<ViewerMenus::Corner> FindFocusCorner(std::size_t view);
  void OpenBarMenu(std::size_t view, ViewBars::Menu menu, const zovhost::BarMenuPlace& place);
  void ShowHelp();
  void AskForFile(std::size_t view, const FileRequest& request);
  void NoteRecent(const std::filesystem::path& file);
  void AskForStory(std::size_t view, StoryRequest request);
  void LeaveStories(const std::function<void()>& then);
  std::unique_ptr<StoryExport> BeginExport(const Korvane::Story& story, const StoryExport::Options& options,
                                           std::string& error);
  void PresentFirstStory();
  void ShowFirstView();
  void Fly(const Korvane::CameraParameters& camera);
  void NoteOpened(const std::filesystem::path& file);
  std::filesystem::path FindModelFolder() const;
  void ShowCursor(Korvane::CursorID id);
  void OnWake();
  void TakeDropped();
  void OpenModel(const ModelSource& source, const std::vector<std::filesystem::path>& ofIt);
  void OpenOfModel(const std::filesystem::path& file);
  void LoadWaiting();
  void Load(const ModelSource& source);
  bool ShowProgress(double fraction, const char* step);
  void TellBadModel(const std::string& error);
  void TellCancelled(const ModelSource& source);
  bool Prepare(LoadedModel& model);
  bool IsAsking() const { return desk.IsOpen() || files.IsAsking(); }
  void AdvanceArrival();
  void ShowModel(LoadedModel model);
  void Enter(std::size_t view, const zovhost::Scene& entered);
  void Tell(const std::string& failure);
  void ShowMessage(const std::string& text);
  void DrawFrame();
  void DrawViews();
  void DrawTooltips();
  void MarkActiveView() const;
  void DrawPanels();
  void DrawPages();
  void SkipPages(bool all);
  void NotePages();
  std::array<zovhost::PageKeys*, 2> FindPages();
  bool EnterPage(std::optional<std::size_t> from, bool back);
  bool OnPageKey(const zovhost::WindowEvent& event);
  bool LeavePage(bool back);
  void LeaveView(bool back);
  bool ClosePage();
  void NotePlaces();

  zovhost::Window& window;
  Recorder* const recorder;
  SettingsFile* const settings;
  const std::string givenGround;
  Preferences preferences;
  EventLog log;
  std::unique_ptr<zovhost::Scene> scene;
  zovhost::GLSceneView sceneView;
  ViewList namedViews;
  std::vector<std::unique_ptr<Surface>> surfaces;
  std::vector<std::unique_ptr<Viewport>> views;
  std::vector<ViewPlace> places;  // of the views
  std::size_t active = 0;         // the view where the pointer was last, which the keys and the panel go to
  double recordedMargin = 0.0;    // at the left
  std::size_t openPages = 0;      // of the last frame
  std::size_t pagesOfView = 0;    // the active one then
  bool hasNewPage = false;        // which Tab goes to first
  const zovhost::Language* spoken = nullptr;
  std::vector<double> cursorScales;  // by cursor: for which scale it is drawn
  zovhost::Gui gui;
  ViewerPanel panel;
  zovhost::KeyboardFocus panelFocus;
  ViewerMenus menus;
  StoryDesk desk;
  FileDesk files;
  ViewDevices devices;
  std::filesystem::path modelFile;  // of the scene that shows; empty for the generated one
  std::filesystem::path firstStory;
  std::string firstView;
  PanelContents contents;
  MessageTimer messageTimer;
  ViewRest rest;
  ProgressLine progress;
  std::optional<ModelSource> waiting;
  std::optional<Arrival> arrival;
  std::vector<std::filesystem::path> dropped;  // in this round of the window's loop
  std::vector<std::filesystem::path> ofModel;  // files of views and stories of the model that is to come
  bool loadCancelled = false;
  int exitCode = 0;
};

}  // namespace zovview
