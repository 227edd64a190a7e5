// The welcome screen.
#include <utility>

#include "disc/helm_disc_parts.h"
#include "foundation/truncate.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/pixel_icon2d.h"
#include "render/display_scale.h"

namespace Korvane {

namespace {

void AddRegions(TrackMenu& menu) {
  const Lifeline::Watch alive(menu.GetLifeline());
  for (const WelcomeArea& area : GetWelcomeAreas()) {
    TrackMenu::Region region;
    region.color = area.colour;
    if (alive) menu.AddRegion(region);
  }
  if (alive) menu.SetDisabledRegion(TrackMenu::Region());
}

// As large as its image, counted in points.
void SizeMap(TrackMenu& menu, double scale) {
  const PixelIcon2D* const map = menu.GetRegionMap();
  if (map == nullptr) return;
  menu.SetSize(Truncate(map->GetImageWidth() * scale), Truncate(map->GetImageHeight() * scale));
}

// The maps of both pages, and the place of the screen before it is given one.
void PutUp(TrackMenu& menu) {
  constexpr int MIDDLE = WelcomeScreen::SIZE / 2;
  const Lifeline::Watch alive(menu.GetLifeline());
  menu.SetSizeIsFixed(false);
  menu.SetUseSingleIconForDraw(true);
  menu.SetRegionMap(TEXTURE_WELCOME_ADVANCED_MAP);
  if (alive) menu.SetAlternateRegionMap(TEXTURE_WELCOME_BASIC_MAP);
  if (!alive) return;
  menu.SetLocked(true);
  menu.SetLocation(MIDDLE, MIDDLE);
  if (alive) menu.SetVisible(true);
}

}  // namespace

// ---- life ----

bool HelmDisc::CreateWelcome() {
  WelcomeScreen& screen = parts->welcome;
  const bool wanted =
      !parameters.suppressWelcome && (!parameters.welcomeSeen || parameters.alwaysShowWelcome);
  if (!wanted) screen.Drop();
  if (screen.menu == nullptr) return true;
  screen.menu->Create();
  screen.menu->SetSizeIsFixed(false);
  return InitWelcome();
}

// A screen that is filled a second time begins anew.
bool HelmDisc::InitWelcome() {
  WelcomeScreen& screen = parts->welcome;
  if (screen.menu == nullptr) return false;
  const Lifeline::Watch alive(screen.menu->GetLifeline());
  HelmDiscParts::HideMenu(*screen.menu);
  if (alive) screen.menu->Destroy();
  if (alive) screen.Reset();
  if (alive) PutUp(*screen.menu);
  if (alive) AddRegions(*screen.menu);
  if (!alive) return false;
  const bool advanced = parameters.welcomeStartsAdvanced;
  TurnWelcomePage(advanced, ChooseWelcomePicture(advanced, nullptr));
  return true;
}

void HelmDisc::SetWelcomeMenuPosition(int x, int y) {
  WelcomeScreen& screen = parts->welcome;
  screen.x = x;
  screen.y = y;
  const double scale = PixelsPerPoint(GetKorvane());
  const bool resized = std::exchange(screen.scale, scale) != scale;
  screen.wasResized = screen.wasResized || resized;
  if (screen.menu == nullptr || screen.menu->GetRegionMap() == nullptr) return;
  const Vector2 middle = screen.GetMiddle();
  if (screen.shown != nullptr) {
    screen.shown->SetSize(screen.GetSize(), screen.GetSize());
    screen.shown->SetPosition(middle);
  }
  if (resized) SizeMap(*screen.menu, scale);
  screen.menu->SetLocation(Truncate(middle.x), Truncate(middle.y));
}

bool HelmDisc::IsOverWelcome() const { return parts->welcome.over && parts->welcome.IsVisible(); }

// ---- what it shows ----

void HelmDisc::TurnWelcomePage(bool advanced, WelcomePicture picture) {
  WelcomeScreen& screen = parts->welcome;
  screen.advancedPage = advanced;
  screen.menu->UseAlternateRegionMap(!advanced);
  if (screen.wasResized) SizeMap(*screen.menu, screen.scale);
  ChangeWelcomeIcon(&screen.GetIcon(picture));
}

// The menu holds the count of the picture, for as long as it is active.
void HelmDisc::ChangeWelcomeIcon(ResourceIcon2D* icon) {
  WelcomeScreen& screen = parts->welcome;
  if (screen.menu == nullptr || icon == nullptr || icon == screen.shown) return;
  screen.shown = icon;
  icon->SetSize(screen.GetSize(), screen.GetSize());
  icon->SetPosition(screen.GetMiddle());
  icon->SetVisible(true);
  screen.menu->ExchangeSingleIconForDraw(icon);
  const Lifeline::Watch alive(parts->lifeline);
  if (Renderer* const renderer = GetRenderer()) renderer->ApplyTextureUsage();
  if (alive) parts->RequestUpdate();
}

// ---- the mouse ----

// The cursor comes to the screen over its ground or its title only; over what is neither that nor a choice it
// has left.
void HelmDisc::UpdateWelcome() {
  WelcomeScreen& screen = parts->welcome;
  if (screen.menu == nullptr) return;
  const WelcomeArea* const area = screen.FindArea();
  const bool enters = area != nullptr && area->isEntry;
  if (!enters && !screen.over) return;
  const WelcomePicture picture = ChooseWelcomePicture(screen.advancedPage, area);
  screen.over = picture != ChooseWelcomePicture(screen.advancedPage, nullptr);
  const Lifeline::Watch alive(parts->lifeline);
  if (picture != WelcomePicture::Keep) ChangeWelcomeIcon(&screen.GetIcon(picture));
  if (alive) TellWelcomeCrossing();
}

void HelmDisc::TellWelcomeCrossing() {
  WelcomeScreen& screen = parts->welcome;
  const bool entered = screen.over;
  if (screen.toldOver == entered) return;
  screen.toldOver = entered;
  if (entered) parameters.welcomeSeen = true;
  parts->partners.observers.Notify([entered](HelmDiscObserver& each) {
    if (entered) {
      each.OnWelcomeEntered();
    } else {
      each.OnWelcomeExited();
    }
  });
}

bool HelmDisc::PressWelcome(int x, int y) {
  WelcomeScreen& screen = parts->welcome;
  if (!screen.IsVisible()) return false;
  const Lifeline::Watch alive(parts->lifeline);
  screen.menu->OnLeftMouseDown(x, y);
  return alive && ClickWelcome();
}

// A disc that an observer chooses stays; the release belongs to the click all the same.
bool HelmDisc::ClickWelcome() {
  HelmDiscParts& now = *parts;
  const Lifeline::Watch alive(now.lifeline);
  const std::optional<WelcomeClick> click = TakeWelcomeClick();
  if (!alive || !click) return click.has_value();
  const Lifeline::Watch current(now.choice);
  now.partners.observers.Notify([&](HelmDiscObserver& each) { each.OnWelcomeClicked(click->part); });
  if (click->disc == DiscType::None) return true;
  if (current) SetActiveDisc(click->disc);
  if (alive) now.welcome.clickPending = now.press.captured = true;
  return true;
}

// A switch turns the page; beside the switches it is the picture that tells.
std::optional<WelcomeClick> HelmDisc::TakeWelcomeClick() {
  WelcomeScreen& screen = parts->welcome;
  if (screen.menu == nullptr || !screen.over) return std::nullopt;
  const WelcomeArea* const area = screen.FindArea();
  if (area == nullptr || !area->turn) return screen.FindClick();
  TurnWelcomePage(area->turn->toAdvanced, area->turn->title);
  return WelcomeClick{area->turn->part};
}

}  // namespace Korvane
