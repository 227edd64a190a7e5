#pragma once

#include <span>
#include <vector>

#include "korvane/resource_ids.h"

namespace Korvane {
class DynamicIcon2D;
class Renderer;
class Tool;
}  // namespace Korvane

namespace zovview {

/// The tools of the left button, by the identifiers under which the view manager has them.
enum ToolID : int {
  TOOL_ORBIT = 101,
  TOOL_PAN,
  TOOL_ZOOM,
  TOOL_RECTANGLE,
  TOOL_LOOK,
  TOOL_LOOK_MOVE,
  TOOL_LOOK_AT,
  TOOL_CENTRE,
  TOOL_WALK,
};

/// Texts of the renderer, taken for as long as this lives.
class Notes {
 public:
  explicit Notes(Korvane::Renderer& renderer);
  ~Notes();
  Notes(const Notes&) = delete;
  Notes& operator=(const Notes&) = delete;

  /// Null for STRING_NONE, and for a text that the renderer makes nothing of.
  Korvane::DynamicIcon2D* Get(Korvane::StringID id);

 private:
  Korvane::Renderer& renderer;
  struct Note {
    Korvane::StringID id;
    Korvane::DynamicIcon2D* icon;  // of the renderer
  };
  std::vector<Note> taken;
};

/// A way of using the left button.
struct ViewTool {
  ToolID id;
  bool usesClicks;              ///< Otherwise a click is left to the viewer.
  Korvane::StringID mouseNote;  ///< Beside the pointer; STRING_NONE: none.
  Korvane::StringID viewNote;   ///< In the view.
  Korvane::Tool* (*make)();     ///< The caller owns the result.
  /// What only this kind shows; null: nothing.
  void (*addNotes)(Korvane::Tool& tool, Notes& notes);
};

std::span<const ViewTool> GetViewTools();
/// Null for none.
const ViewTool* FindViewTool(int id);

}  // namespace zovview
