#include "disc/region_loans.h"

#include "korvane/icon2d.h"
#include "render/texture_counts.h"

namespace Korvane {

namespace {

using Region = TrackMenu::Region;

struct Text {
  StringID Region::*string;
  DynamicIcon2D* Region::*icon;
};
constexpr Text TEXTS[3] = {
    {&Region::labelString, &Region::label},
    {&Region::tooltipString, &Region::tooltip},
    {&Region::tooltipHUDString, &Region::tooltipHUD},
};

TextureID TextureOf(const ResourceIcon2D* icon) {
  return icon != nullptr ? icon->GetTextureResourceID() : TEXTURE_NONE;
}

}  // namespace

void RegionLoans::Take(Renderer* renderer, Region& region) {
  if (renderer == nullptr) return;
  if (lender.Get() != renderer) {
    CountTexturesBack();
    textures[0] = TextureOf(region.icon);
    textures[1] = TextureOf(region.overlayIcon);
    lender.Set(CountTexturesUp(*renderer, textures) ? renderer : nullptr);
  }
  const Lifeline::Watch wanted(taking);
  for (int i = 0; i < 3; ++i) {
    DynamicIcon2D* const icon = texts[i].Take(renderer, region.*TEXTS[i].string);
    if (!wanted) return;
    region.*TEXTS[i].icon = icon;
  }
}

void RegionLoans::GiveBack(Region& region) {
  taking.Cut();
  CountTexturesBack();
  lender.Set(nullptr);
  for (StringLoan& text : texts) text.GiveBack();
  for (const Text& text : TEXTS) region.*text.icon = nullptr;
}

void RegionLoans::CountTexturesBack() {
  if (Renderer* const held = lender.Get()) CountTexturesDown(*held, textures);
}

}  // namespace Korvane
