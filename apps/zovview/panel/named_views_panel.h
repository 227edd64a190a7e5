#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/view_commands.h"
#include "zovhost/keyboard_focus.h"

struct ImGuiListClipper;

namespace zovview {

class ViewList;

/// The list of named views, a row each: a click on the picture or the name flies there, buttons move the view
/// up and down, rename and delete it, which is asked about in their place. To be drawn in a window of the
/// Gui.
class NamedViewsPanel {
 public:
  enum class Part : int { Picture, Up, Down, Rename, Delete, Keep };
  static constexpr int FIRST_ID = 10'000'000;  ///< Of what takes the focus; all are above.
  /// Of the last item, something that takes the focus. True when keys have pressed it.
  using NoteItem = std::function<bool(int id, const std::string& name, bool enabled)>;
  struct Place {
    float x = 0.0F;  // points from the top left of the window
    float y = 0.0F;
  };

  /// Under its heading. `width`: of the list, in points. `focused`: what is under the focus.
  void Draw(ViewList& list, const ViewTarget& target, float width, std::optional<int> focused,
            const NoteItem& noteItem);
  /// What an arrow leads to within the list, from what is in it; none: out of it.
  std::optional<int> Steer(int id, zovhost::FocusStep step) const;
  /// A row as a whole, not one of its buttons, that has not scrolled away.
  bool IsRowInSight(int id) const;
  /// What the focus is to go to, as what it was on is no more.
  std::optional<int> TakeNextFocus() { return std::exchange(nextFocus, std::nullopt); }
  /// Before the heading. True when it is to open.
  bool TakeNews(ViewList& list);
  /// At the end of what is under the heading: what is new comes into sight.
  void ScrollToNews();
  bool IsRenaming() const { return renamed.has_value(); }
  /// The middle of a part of a row, as it was drawn last; nothing where it was not.
  std::optional<Place> FindPart(std::size_t index, Part part) const;

 private:
  // What a row asks for; it is done when all are drawn.
  struct Wish {
    Part part;
    std::size_t index;
  };
  struct DrawnPart {
    std::size_t index;
    Part part;
    Place place;
    int id;
    bool enabled;
    bool inSight;
  };
  // Of the frame that is being drawn.
  struct Focus {
    std::optional<int> id;
    const NoteItem* noteItem;
  };

  void DrawRows(ViewList& list, const ViewTarget& target, int count);
  void AddRowsOfKeys(const ViewList& list, int last, ImGuiListClipper& clipper);
  void DrawRow(ViewList& list, const ViewTarget& target, std::size_t index, float width);
  void DrawName(ViewList& list, std::size_t index, float width);
  void DrawButtons(std::size_t index, std::size_t count);
  void DrawQuestion(std::size_t index);
  bool DrawButton(std::size_t index, Part part, bool enabled);
  bool Note(std::size_t index, Part part, const std::string& name, bool enabled = true);
  int MakeId(Part part) const;
  bool HasFocus() const;
  void Fulfil(ViewList& list);
  void EndRenaming(ViewList& list);
  void EndUnseen(ViewList& list);
  void FocusBeside(const ViewList& list, std::size_t index);

  std::vector<DrawnPart> drawn;
  Focus focus{};
  int row = 0;           // the number of the row that is being drawn
  bool isAsked = false;  // of that row: whether it is to be deleted
  std::optional<int> nextFocus;
  std::optional<Wish> wish;
  std::optional<std::string> renamed;  // by its identifier
  std::string name;                    // as it is typed
  std::optional<std::string> doomed;   // likewise: whether it is to be deleted is asked
  bool focuses = false;
  bool nameDrawn = false;
  int frame = 0;  // that it was drawn in
  std::optional<std::size_t> news;
  int framesOfNews = 0;
};

}  // namespace zovview
