#pragma once

#include <SDL_keycode.h>

#include <span>

#include "korvane/box2.h"
#include "korvane/vector3.h"
#include "selection.h"
#include "viewer_hub.h"

namespace zovview {

/// What a command acts on.
struct ViewTarget {
  ViewerHub& hub;
  Selection& selection;
};

/// Something that a key does and, with a place on it, the panel.
struct ViewCommand {
  enum class Place : int { Views, Settings, Nowhere };

  Place place;
  const char* label;
  const char* keyName;
  SDL_Keycode key;
  void (*run)(const ViewTarget& target);
  bool (*isOn)(const ViewTarget& target) = nullptr;  ///< Of a setting.
};

/// In the order of the panel, where the views stand in two columns.
std::span<const ViewCommand> GetViewCommands();
/// Null for a key that none has.
const ViewCommand* FindViewCommand(SDL_Keycode key);

// The camera travels in all of these; what moved it before ends.

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
/// A change that is under way turns round.
void ToggleProjection(const ViewTarget& target);

void ClearSelection(const ViewTarget& target);
void ToggleSnapping(const ViewTarget& target);
void ToggleKeepUp(const ViewTarget& target);

/// Brings what the model shows at a viewport pixel, origin at the bottom left, to the middle of the view.
/// False beside the model.
bool CentreOnPixel(const ViewTarget& target, int x, int y);
/// Flies to where a rectangle of the viewport, in pixels from the bottom left, fills the view at the depth of
/// what the model shows in its middle, or else of the centre of the view. False for one without size.
bool ZoomIntoRectangle(const ViewTarget& target, const Korvane::Box2& rectangle);

}  // namespace zovview
