#include "korvane/navigation_bar.h"

#include "korvane/toolbar.h"

namespace Korvane {

NavigationBar::NavigationBar() = default;
NavigationBar::~NavigationBar() = default;

void NavigationBar::SetViewportSize(int width, int height) {
  if (toolbar != nullptr) toolbar->SetViewportSize(width, height);
}

void NavigationBar::SetOrientorIsVisible(bool /*value*/) {}
void NavigationBar::SetActiveHelmDisc(DiscType /*type*/) {}

void NavigationBar::SetLinkedToOrientor(bool linked) {
  if (linked == (location == LOCATION_LINKED)) return;
  location = linked ? LOCATION_LINKED : LOCATION_RIGHT;
}

bool NavigationBar::Create() { return true; }
bool NavigationBar::Destroy() { return true; }

void NavigationBar::Draw() {
  if (toolbar != nullptr) toolbar->Draw();
}

bool NavigationBar::OnMouseMove(int x, int y) { return toolbar != nullptr && toolbar->OnMouseMove(x, y); }
bool NavigationBar::OnLeftMouseDown(int x, int y) {
  return toolbar != nullptr && toolbar->OnLeftMouseDown(x, y);
}
bool NavigationBar::OnLeftMouseUp(int x, int y) { return toolbar != nullptr && toolbar->OnLeftMouseUp(x, y); }
bool NavigationBar::OnRightMouseDown(int x, int y) {
  return toolbar != nullptr && toolbar->OnRightMouseDown(x, y);
}
bool NavigationBar::OnRightMouseUp(int x, int y) {
  return toolbar != nullptr && toolbar->OnRightMouseUp(x, y);
}

bool NavigationBar::SetItemSelected(int /*tag*/, bool /*selected*/) { return false; }

void NavigationBar::SetVisible(bool value) {
  visible = value;
  if (toolbar != nullptr) toolbar->SetVisible(value);
}

bool NavigationBar::IsMouseInRegion() const { return toolbar != nullptr && toolbar->IsMouseInRegion(); }
bool NavigationBar::IsMouseDownOnItem() const { return toolbar != nullptr && toolbar->IsMouseDownOnItem(); }

const std::wstring& NavigationBar::GetTooltip() const {
  return toolbar != nullptr ? toolbar->GetTooltip() : emptyTooltip;
}

}  // namespace Korvane
