#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "commands/view_bars.h"
#include "commands/view_commands.h"
#include "korvane/cam3d_controller.h"
#include "korvane/helm_disc.h"
#include "korvane/orientor.h"
#include "stories/view_story.h"
#include "viewport/view_tooltip.h"
#include "views/preferences.h"
#include "views/selection.h"
#include "views/viewer_view_manager.h"
#include "zovhost/click_watch.h"
#include "zovhost/gl_renderer.h"
#include "zovhost/touch_navigation.h"
#include "zovhost/view_focus.h"
#include "zovhost/view_hub.h"
#include "zovhost/window.h"

namespace zovhost {
class Phrases;
class ResourcePack;
}  // namespace zovhost

namespace zovview {

/// One view of a model, with all that steers it: the hub, the view manager with its tools, the cube, the
/// discs, the bars, the selection. It owns no window; positions are pixels of the viewport, origin at the
/// bottom left.
class Viewport {
 public:
  /// What the viewport asks of the window around it.
  struct Surroundings {
    std::function<void()> requestFrame;
    /// Shape and place of the pointer, and menus. Borrowed.
    zovhost::RendererHost& host;
    /// The menu of the viewport itself, at one of its pixels.
    std::function<void(int x, int y)> openMenu;
    /// Tells what discs are for; empty: nobody can.
    std::function<void()> showHelp = {};
    /// A menu of a bar; empty: nobody opens one.
    ViewBars::OpenMenu openBarMenu = {};
    /// The discs may introduce themselves: the welcome screen shows to whoever has not seen it.
    bool welcome = false;
    /// Files of a story; empty: nobody can.
    std::function<void(StoryRequest request)> askForStory = {};
    /// The page of settings of six-axis devices; empty: nobody can.
    std::function<void()> toggleDevicePage = {};
    /// To be applied by ApplyPreferences when they change; null: those of a first start. Borrowed.
    Preferences* preferences = nullptr;
    /// The views that the user keeps. Borrowed; null: none are kept.
    ViewList* views = nullptr;
    /// Files of models and pictures; empty: nobody can.
    std::function<void(const FileRequest& request)> askForFile = {};
    std::function<void(const std::string& file)> openFile = {};
    /// The cube as the library has it, in pixels, as recordings that name no scale were made with.
    bool plainCube = false;
  };

  explicit Viewport(Surroundings surroundings);
  ~Viewport();
  Viewport(const Viewport&) = delete;
  Viewport& operator=(const Viewport&) = delete;

  /// In a context of OpenGL that stays current. False when the drawing cannot be had.
  bool Create();

  /// Its place in the framebuffer, and the pixels for one point of the display.
  void SetPlace(int x, int y, int width, int height, double scale);
  int GetX() const { return placeX; }
  int GetY() const { return placeY; }
  double GetScale() const { return scale; }
  int GetWidth() const { return hub.GetViewportWidth(); }
  int GetHeight() const { return hub.GetViewportHeight(); }

  void ApplyPreferences();
  /// The language that the process has come to speak; `before`: what it spoke until now.
  void SetLanguage(const std::shared_ptr<const zovhost::ResourcePack>& texts, const zovhost::Phrases& before);

  /// Borrowed. What was going on ends, nothing is selected, and the view is the start view of the scene.
  void SetScene(const zovhost::Scene& scene);
  /// Takes the welcome screen away, if it shows, until it is released or a scene comes.
  void HoldWelcome();
  void ReleaseWelcome();

  /// In parallel projection, as a view that has always been so.
  void ShowParallel();
  /// What a command leads to, at once and as a view that has always been so.
  void ShowAtOnce(const ViewCommand& command);
  /// Of fits; those that are not usable change nothing.
  void SetFitMargins(const Korvane::FitMargins& margins) { hub.SetFitMargins(margins); }

  /// An event of the window: of the pointer or the keys, or the loss of the focus. A click that nobody
  /// needs selects, the second one of a double click brings what is under it to the middle.
  /// False for a key by which the focus has left the view.
  bool OnEvent(const zovhost::WindowEvent& event);
  /// Ends what the hand is doing. What goes by the view that it finds waits while the camera travels.
  void Run(const ViewCommand& command);
  /// Likewise. The camera travels, in one entry of the rewind history.
  void Fly(const Korvane::CameraParameters& camera);
  /// Nothing goes on that Escape would end: no press, no move, no story, no disc, no focus.
  bool IsAtRest() const;
  bool IsPressed() const { return manager.IsPressed() || touch.IsActive(); }

  /// One step of whatever moves; the drawing follows.
  void PerformFrame();
  /// The pivot, the cube and the notes, over a picture of the scene.
  void DrawWidgets();
  /// Above all, also above panels, which stand there.
  void DrawTooltip(std::vector<Korvane::Box2> panels);
  /// The pointer is on a panel, or a menu is open.
  void LeaveToPanels() { tooltip.LeaveToPanels(); }

  zovhost::ViewHub& GetHub() { return hub; }
  const zovhost::ViewHub& GetHub() const { return hub; }
  Selection& GetSelection() { return selection; }
  ViewerViewManager& GetManager() { return manager; }
  zovhost::GLRenderer& GetRenderer() { return renderer; }
  /// What keys lead without a mouse; a key that is the focus's is no one else's.
  zovhost::ViewFocus& GetFocus() { return focus; }
  Korvane::Orientor& GetCube() { return cube; }
  Korvane::HelmDisc& GetDisc() { return disc; }
  Korvane::Cam3DController& GetDevice() { return device; }
  ViewBars& GetBars() { return bars; }
  ViewStory& GetStory() { return story; }
  const zovhost::TooltipNote& GetTooltip() const { return tooltip.GetNote(); }
  const ViewTarget& GetTarget() const { return target; }

 private:
  // The host, but that the view manager hears where the pointer is set.
  class Pointer : public zovhost::RendererHost {
   public:
    explicit Pointer(Viewport& whose) : viewport(whose), host(whose.surroundings.host) {}
    bool ApplyCursor(Korvane::CursorID id) override { return host.ApplyCursor(id); }
    bool WarpPointer(int x, int y) override;
    bool OpenMenu(Korvane::MenuID id) override { return !viewport.endsRightDrag && host.OpenMenu(id); }
    bool OpenUCSMenu(int x, int y) override { return host.OpenUCSMenu(x, y); }

   private:
    Viewport& viewport;
    zovhost::RendererHost& host;
  };

  bool OnTouch(const zovhost::WindowEvent& event);
  void OnPointer(const zovhost::WindowEvent& event);
  bool OnEventOfShow(const zovhost::WindowEvent& event);
  void OnClick(const zovhost::WindowEvent& event);
  void OnSideButton(zovhost::MouseButton button);
  void CancelClicks();
  void LetGo();
  void RunInTurn(const ViewCommand& command);
  void RunWaiting();
  void SetScale(double value);
  void OnKey(const zovhost::WindowEvent& event);
  void OnRightButton(const zovhost::WindowEvent& event);
  void NotePointer(const zovhost::WindowEvent& event);
  std::optional<Korvane::Vector3> PickPivot() const;

  Surroundings surroundings;
  zovhost::ViewHub hub;
  Selection selection;
  zovhost::GLRenderer renderer;
  Korvane::HelmDisc disc;
  zovhost::PressableOrientor cube;
  Korvane::Cam3DController device;
  ViewerViewManager manager;
  Pointer pointer;
  zovhost::TouchNavigation touch;
  zovhost::ClickWatch clicks;
  zovhost::ClickWatch middleClicks{zovhost::MouseButton::Middle};
  zovhost::ClickWatch rightClicks{zovhost::MouseButton::Right};
  ViewBars bars;
  ViewStory story;
  zovhost::ViewFocus focus;
  ViewTooltip tooltip;
  double scale = 1.0;
  const ViewTarget target;
  std::vector<const ViewCommand*> waiting;  // for the camera to arrive, the first to be run first
  int placeX = 0;
  int placeY = 0;
  bool endsRightDrag = false;  // while that is told
  bool rightOnBar = false;     // the last press of the right button
  bool created = false;
  bool welcomeWaits = false;
  bool pressEndedShow = false;  // whose release is of no use either
};

}  // namespace zovview
