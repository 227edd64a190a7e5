#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zovhost {

// What a panel needs beside imgui.h to show texts of any language. All within a frame of the Gui, which
// mirrors its panels in a language that is read from the right: panels are put together as if they were read
// from the left, and so are the places that imgui.h tells.

/// A text that is no phrase, as the name of a file, ready to be drawn: with its letters joined, and its
/// characters in the font from the next frame on. A field that a text is typed in shows the text itself,
/// whose characters are there as well.
std::string ToPanelText(std::string_view text);

/// Whether the panels are mirrored in this frame: for what shows a direction in the room.
bool ArePanelsMirrored();

/// The horizontal place on the panels of a point of the window, in points from its left; and back.
float MirrorPlace(float x);

/// Where the next panel stands, in points from the top left of the window: that fraction of its width and
/// height from its left and its top lies there. `always`, or else when it appears.
void PlaceNextPanel(float x, float y, float fractionX, float fractionY, bool always);

/// The panel that is being put together lies above all others, but what asks something, and menus.
void RaisePanel();

/// The keys go to the item that is drawn next, and from there through its panel by arrows, until they are
/// given back, by Escape too, or the pointer presses beside it. Tab, where no text is typed, takes them from
/// it and is an event of the window.
void TakeKeys();
void GiveKeysBack();

/// As TakeKeys, of the last item, if keys are what the user has used last, as for opening the panel, or if
/// they are asked for. False: neither.
bool FollowKeys(bool asked = false);
/// Escape has just taken the keys from the panel that is being put together; told once.
bool TakeEscape();
/// The panel that is being put together has the keys.
bool HasKeys();

/// Scrolls the panel, and what it lies in, so that the last item shows.
void BringItemIntoSight();

/// The item of imgui.h with that name, in the panel that is being put together, is pressed in the next frame.
void PressItem(const char* name);

/// The last item is one that Tab leads to, in a question that has the window to itself, after those that were
/// told of before it. `first`: it is marked from the beginning, so that keys show where they are; to be what
/// Enter means then.
void NoteTabStop(bool first = false);

// English phrases are drawn in the language of the process.

/// The width of the widest of these phrases, in points.
float MeasureWidest(std::span<const char* const> phrases);
/// The column of what stands beside these names of fields, from the left of the panel, with the least one
/// that looks well.
float FindFieldColumn(std::span<const char* const> names, float least);
/// The name of a field; the next item follows to the right of it, and fills the line.
void DrawFieldName(const char* name, float column);

/// An item of imgui.h that is not mirrored in itself: what is typed, and what is dragged to the right for
/// more. To live just around the call that draws it, when its width is known: SetNextItemWidth.
class UprightItem {
 public:
  UprightItem();
  ~UprightItem();
  UprightItem(const UprightItem&) = delete;
  UprightItem& operator=(const UprightItem&) = delete;

 private:
  void TurnPointer() const;

  bool mirrored;
  float left = 0.0F;
  float right = 0.0F;
  int firstVertex = 0;
};

}  // namespace zovhost
