#pragma once

#include <span>

#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/resource_ids.h"
#include "korvane/vector3.h"

namespace Korvane {

/// What a region does.
enum class DiscListenerKind {
  Null,
  Center,
  Close,
  Forward,
  Height,
  Look,
  LookMove,
  Menu,
  Orbit,
  Pan,
  PivotPick,
  Rewind,
  Roll,
  Walk,
  Zoom,
};

/// A kind and what its listener is made with; of which there are fewer, the first count.
struct DiscListener {
  DiscListenerKind kind = DiscListenerKind::Null;
  StringID texts[3] = {STRING_NONE, STRING_NONE, STRING_NONE};
  bool switches[2] = {false, false};
};

/// A text, or, where a switch decides, that for the switch on and that for off.
struct DiscTooltip {
  constexpr DiscTooltip(int text)  // NOLINT(google-explicit-constructor)
      : on(static_cast<StringID>(text)), off(on) {}
  constexpr DiscTooltip(bool HelmDiscParameters::*which, int textOn, int textOff)
      : choice(which), on(static_cast<StringID>(textOn)), off(static_cast<StringID>(textOff)) {}

  StringID Choose(const HelmDiscParameters& parameters) const {
    return choice == nullptr || parameters.*choice ? on : off;
  }

  bool HelmDiscParameters::*choice = nullptr;
  StringID on;
  StringID off;
};

struct DiscRegion {
  Vector3 colour;
  DiscListener listener;
  int icon;   // a TextureID
  int label;  // a StringID, as the two that follow
  DiscTooltip tooltip;
  int note;    // of a drag
  int cursor;  // a CursorID
  int zone;    // a HelmDiscZone; -1 for none
  unsigned flags = 0;
};
constexpr unsigned REGION_DISABLED = 1;
constexpr unsigned REGION_UNWRAPPED = 2;
constexpr unsigned REGION_STICKY = 4;

/// A kind of disc. Its regions stand in the order in which keys and menus count them.
struct DiscTable {
  int regionMap;  // a TextureID
  int overlay;    // a TextureID; TEXTURE_NONE for none
  MenuID menu;
  DiscRegion disabled;
  std::span<const DiscRegion> regions;
};

constexpr int DISC_KIND_COUNT = 7;

/// Whether a disc of this kind can be open.
constexpr bool IsDiscKind(DiscType type) {
  return static_cast<int>(type) >= 0 && static_cast<int>(type) < DISC_KIND_COUNT;
}

/// For a kind of which a disc can be open.
const DiscTable& GetDiscTable(DiscType type);

/// While a key is down, one region gives way to another of its colour, on all discs at once.
struct DiscKeyFlip {
  KeyID key;
  DiscType disc;
  int off;
  int on;
  bool turnsScene;  // not while the scene is kept upright
};
std::span<const DiscKeyFlip> GetDiscKeyFlips();

}  // namespace Korvane
