#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "korvane/storyboard.h"
#include "zovhost/keyboard_focus.h"

namespace Korvane {
class Renderer;
class Sequence;
class ShotSpecification;
}  // namespace Korvane

namespace zovhost {

/// The storyboard under a focus by keys, in three rows: the buttons of its title bar, the shots of the
/// sequence that is selected, and the sequences. Arrows to the side go along a row, through each slide and
/// its two buttons, and end at the slide that adds one; the others go to the row above or below.
///
/// On a shot, Delete deletes it and F2 types its name; Ctrl with an arrow moves a shot or a sequence along
/// its row. All of it works on slides that others lie on as well. What it works on is borrowed and outlives
/// it.
class StoryFocus {
 public:
  struct Partners {
    Korvane::Storyboard& board;
    Korvane::Renderer& renderer;
    std::function<void()> typeName;  ///< Of the shot in the editor of the board; empty: nobody can.
    /// Takes the focus along with what has moved.
    std::function<void(int id)> goTo;
    /// The pointer goes to a thing, whose menu is to be opened.
    std::function<void(const Korvane::Box2& bounds)> pointTo;
  };

  explicit StoryFocus(Partners with) : partners(std::move(with)) {}

  std::vector<FocusThing> List();
  std::optional<int> Steer(int id, FocusStep step);

 private:
  enum Row : int { TITLE, SHOTS, SEQUENCES };
  using Part = Korvane::Storyboard::SlidePart;

  // What a number stands for.
  struct Place {
    Row row;
    std::uint64_t index;
    Part part;
  };
  static int MakeId(const Place& place);
  static Place FindPlace(int id);

  FocusThing MakeThing(const Place& place, int text);
  void ListTitle(std::vector<FocusThing>& things);
  void ListShots(std::vector<FocusThing>& things);
  void ListSequences(std::vector<FocusThing>& things);
  std::uint64_t GetCount(Row row) const;
  Korvane::Sequence* GetSequence(std::uint64_t index) const;
  Korvane::ShotSpecification* GetShot(std::uint64_t index) const;
  std::string LoadText(int id) const;

  void Press(const Place& place);
  void PressTitle(std::uint64_t button);
  void PressShot(const Place& place);
  void PressSequence(const Place& place);
  void PlayOrPause(const std::function<void()>& play);
  bool OnKey(const Place& place, const WindowEvent& event);
  void Move(const Place& place, bool back);
  void TypeName(const Place& place);
  void OpenMenu(const Place& place);

  Partners partners;
};

}  // namespace zovhost
