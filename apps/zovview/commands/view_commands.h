#pragma once

#include <SDL_keycode.h>

#include <functional>
#include <span>
#include <string_view>

#include "files/file_request.h"
#include "stories/story_request.h"
#include "views/selection.h"
#include "zovhost/view_hub.h"

namespace Korvane {
class Cam3DController;
class HelmDisc;
class Orientor;
class ViewManager;
}  // namespace Korvane

namespace zovhost {
struct NavigationStyle;
}

namespace zovview {

class Preferences;
class ViewBars;
class ViewList;
class ViewStory;

/// What a command acts on.
struct ViewTarget {
  zovhost::ViewHub& hub;
  Selection& selection;
  Korvane::ViewManager& manager;
  Korvane::Orientor& cube;
  Korvane::HelmDisc& disc;
  std::function<void()> showHelp = {};  ///< Empty: nobody can.
  ViewBars* bars = nullptr;             ///< Null: there are none.
  ViewStory* story = nullptr;           ///< Null: there is none.
  /// Empty: nobody can.
  std::function<void(StoryRequest request)> askForStory = {};
  Korvane::Cam3DController* device = nullptr;   ///< Null: there is none.
  std::function<void()> toggleDevicePage = {};  ///< Empty: nobody can.
  Preferences* preferences = nullptr;           ///< Null: there are none.
  ViewList* views = nullptr;                    ///< Null: none are kept.
  /// Empty: nobody can.
  std::function<void(const FileRequest& request)> askForFile = {};
  /// Opens a file that was opened before; empty: nobody can.
  std::function<void(const std::string& file)> openFile = {};
  const double* scale = nullptr;  ///< Pixels for one point of the display; null: 1.
};

/// Something that a key does, the panel or a menu.
struct ViewCommand {
  enum class Place : int {
    Views,     // of the panel
    Tools,     // of the panel and of the menu of the view
    Settings,  // of the panel
    // Of the menu of the cube, and of the lists in it.
    Cube,
    CubeProjection,
    CubeSettings,
    CubeSize,
    CubeCorner,
    CubeOpacity,
    Discs,  // of the panel, and of the menus of the view and the discs
    // Of the menus of the discs, and of the lists in them.
    DiscSettings,
    DiscSize,
    DiscOpacity,
    MiniDiscSize,
    MiniDiscOpacity,
    WalkSpeed,
    Coordinates,  // the list below the cube
    Bars,         // where the navigation bar stands: of its menu, and of a list in that of the view
    Ground,       // what is behind the model: of a list in the menu of the view
    // Of the panel, and of a list in the menu of the view.
    KeptViews,
    Story,
    StoryFile,
    File,     // of lists in the panel and the menu of the view
    Picture,  // likewise
    Shot,     // of the menu of a shot
    // Of the panel, of a list in the menu of the view, and of the menu of the device's button.
    Device,
    DeviceSettings,
    // Of the panel, and of lists in the menu of the view.
    Styles,  // of navigation
    Pivots,
    Languages,  // of a list in the panel and in the menu of the view
    Nowhere,
  };

  Place place;
  std::string_view name;  ///< In recordings and scripts: unique, and stays when the label changes.
  const char* label;      ///< On the button or the item: a phrase, or the own name of a language.
  const char* keyName;    ///< Empty for none, as SDLK_UNKNOWN is.
  SDL_Keycode key;
  void (*run)(const ViewTarget& target);
  bool (*isOn)(const ViewTarget& target) = nullptr;  ///< Of what is on or off, or chosen.
  unsigned modifiers = 0;  ///< Of WindowEvent, with the key; see FindViewCommand for SHIFT.
};

/// In the order of the panel and the menus; the panel has the views and the tools in two columns.
std::span<const ViewCommand> GetViewCommands();
/// Null for a key that none has, with just these of CONTROL and ALT. One that asks for SHIFT as well comes
/// before one that does not, which a function key is not with SHIFT.
const ViewCommand* FindViewCommand(SDL_Keycode key, unsigned modifiers = 0);
/// As it was chosen.
const zovhost::NavigationStyle& GetNavigationStyle(const ViewTarget& target);
/// A key besides those of the commands.
struct OtherKey {
  SDL_Keycode key;
  unsigned modifiers;
  const char* keyName;
  std::string_view command;
};
std::span<const OtherKey> GetOtherKeys();
/// What comes of the command depends on the view in which it begins, so it is to wait until the camera has
/// arrived where it is travelling.
bool StartsFromRest(const ViewCommand& command);
/// Null for no command's name.
const ViewCommand* FindViewCommand(std::string_view name);

// The camera travels in all of these, which is one entry of the rewind history; what moved it before ends.

/// Begins a move: a shot of the hub's, or a change of the camera.
bool Travel(const ViewTarget& target, const std::function<bool(Korvane::CameraOperations&)>& begin);

void GoHome(const ViewTarget& target);
void FitAll(const ViewTarget& target);
/// The whole model when nothing is selected.
void FitSelection(const ViewTarget& target);
/// Upright, with the selection or else the whole model fitted, as all standard views.
void ShowFront(const ViewTarget& target);
void ShowBack(const ViewTarget& target);
void ShowLeft(const ViewTarget& target);
void ShowRight(const ViewTarget& target);
void ShowTop(const ViewTarget& target);
void ShowBottom(const ViewTarget& target);
/// From the corner of the front, the right and the top.
void ShowIsometric(const ViewTarget& target);
/// The view direction laid flat, upright.
void LevelView(const ViewTarget& target);
/// A change that is under way turns round.
void ToggleProjection(const ViewTarget& target);

void ClearSelection(const ViewTarget& target);
void ToggleSnapping(const ViewTarget& target);
/// For the orbit tool and the discs.
void ToggleKeepUp(const ViewTarget& target);

/// Brings what the model shows at a viewport pixel, origin at the bottom left, to the middle of the view.
/// False beside the model.
bool CentreOnPixel(const ViewTarget& target, int x, int y);

}  // namespace zovview
