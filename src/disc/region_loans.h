#pragma once

#include "korvane/renderer_loans.h"
#include "korvane/track_menu.h"

namespace Korvane {

/// The pictures and texts that a region holds in the renderer while its menu is active. What was taken is
/// given back once, to whom it was taken from, at the latest with the end of this.
class RegionLoans {
 public:
  RegionLoans() = default;
  RegionLoans(const RegionLoans&) = delete;
  RegionLoans& operator=(const RegionLoans&) = delete;
  ~RegionLoans() { CountTexturesBack(); }

  /// Nothing that is held is taken again. The host, who makes the texts, may give all of it back meanwhile,
  /// or destroy it with the region.
  void Take(Renderer* renderer, TrackMenu::Region& region);
  void GiveBack(TrackMenu::Region& region);

 private:
  void CountTexturesBack();

  Borrowed<Renderer> lender;  // of the textures
  TextureID textures[2] = {TEXTURE_NONE, TEXTURE_NONE};
  StringLoan texts[3];
  Lifeline taking;
};

}  // namespace Korvane
