#pragma once

#include <span>
#include <string>

#include "sheet.h"
#include "zovhost/image.h"
#include "zovhost/resource_pack.h"

namespace zovsheets {

/// The pictures of a disc, by their numbers.
struct DiscKind {
  const char* name;    // of a file as well
  int overlay;         // the captions; -1: none
  int first;           // at rest
  int last;            // after it one number for each wedge under the pointer
  double usualPoints;  // the width at which it is shown as a rule
  double leastPoints;  // the smallest
};

std::span<const DiscKind> GetDiscKinds();

/// How the discs of a picture are shown.
struct DiscShow {
  double points = 128.0;  // the width of a disc
  double scale = 1.0;     // pixels for one point
  Ground ground = Ground::Gradient;
  int columns = 6;
};

/// All states of a disc side by side on a ground, at rest first. False when the pack has them not.
bool PaintDiscs(const zovhost::ResourcePack& pack, const DiscKind& kind, const DiscShow& show,
                zovhost::Image& image);

}  // namespace zovsheets
