#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "korvane/box2.h"
#include "zovhost/window.h"

namespace zovhost {

/// What a thing under the focus is, as a screen reader calls it.
enum class FocusRole : int { Button, ToggleButton, MenuButton, MenuItem, Heading };

/// Something that keys reach.
struct FocusThing {
  int id = 0;         ///< Within its group, and the same as long as it is the same thing.
  std::string group;  ///< What it is among: "Cube", "Disc". UTF-8, as the next.
  std::string name;
  FocusRole role = FocusRole::Button;
  bool on = false;       ///< Of what can be: it is chosen, open or in force.
  bool enabled = true;   ///< One that is not is passed, and does nothing.
  bool inSight = true;   ///< False for what others hide, such as the far side of a cube.
  Korvane::Box2 bounds;  ///< Where it shows; pixels or points, y upward, as all of its host.
  /// Enter or the space bar went down (true) or up. Empty: nothing.
  std::function<void(bool down)> press = {};
  /// While it is pressed, by arrow keys: steps to the right and up. Empty: nothing.
  std::function<void(int right, int up)> drag = {};
  /// Another key went down while it is under the focus: true when it was used. Those that move the focus come
  /// only with Ctrl or Alt. Empty: none is.
  std::function<bool(const WindowEvent& event)> key = {};
};

/// The four keys, as steps on the screen.
struct FocusStep {
  int right = 0;
  int up = 0;
};

/// Moves a visible focus by keys: Tab and Shift with Tab from group to group, arrows within one, to the
/// nearest thing on that side; Enter and the space bar press, Escape leaves. It draws nothing and knows of no
/// widget: groups list their things anew whenever that is needed.
///
/// Past the last group, and before the first, the focus leaves and the key is not used, so that a host can
/// lead it on. Within what it calls a host may do anything but destroy it.
class KeyboardFocus {
 public:
  using List = std::function<std::vector<FocusThing>()>;
  /// The identifier of the thing that an arrow leads to; none: the arrow does nothing.
  using Steer = std::function<std::optional<int>(int id, FocusStep step)>;
  /// Told of each change of what is under the focus, and of its state; null: nothing is.
  using Observer = std::function<void(const FocusThing* thing)>;

  KeyboardFocus();
  ~KeyboardFocus();
  KeyboardFocus(const KeyboardFocus&) = delete;
  KeyboardFocus& operator=(const KeyboardFocus&) = delete;

  /// In the order of Tab. An empty group is passed. Without `steer` an arrow leads to what is nearest there.
  void AddGroup(List list, Steer steer = {});
  void SetObserver(Observer value);

  /// True when the focus has used the event: keys only. A press of a button, a finger and the loss of the
  /// window's focus make it leave.
  bool OnEvent(const WindowEvent& event);
  /// On the first thing of the first group, or of the last. False when there is none.
  bool Enter(bool fromEnd);
  /// To a thing of the group that the focus is in. False when there is no such.
  bool GoTo(int id);
  /// What is pressed is let go of.
  void Leave();
  bool IsActive() const { return current.has_value(); }
  bool IsPressed() const { return pressed; }
  /// The number of the group that the focus is in, in the order of AddGroup; none while it is in none.
  std::optional<std::size_t> GetGroup() const {
    return IsActive() ? std::optional(currentGroup) : std::nullopt;
  }
  /// As it is now; null for nothing. Valid until the next call.
  const FocusThing* Get();

 private:
  struct Group {
    List list;
    Steer steer;
  };

  bool OnKeyDown(const WindowEvent& event);
  bool OnKeyUp(const WindowEvent& event);
  bool OnOtherKey(const WindowEvent& event);
  bool GoToGroup(std::size_t from, bool back);
  void Step(FocusStep step);
  void Press(bool down);
  void Take(std::size_t group, const FocusThing& thing);
  void Tell(const FocusThing* thing);
  std::vector<FocusThing> ListEnabled(std::size_t group) const;

  std::vector<Group> groups;
  Observer observer;
  std::optional<FocusThing> current;
  std::size_t currentGroup = 0;
  bool pressed = false;
};

/// The event is of a key that opens a menu, as desktops have it: the key of menus, or Shift with F10.
bool IsMenuKey(const WindowEvent& event);

/// The thing of the list that is nearest to a place on one side of it; null for none.
const FocusThing* FindOnSide(const std::vector<FocusThing>& things, const FocusThing& from, FocusStep step);

}  // namespace zovhost
