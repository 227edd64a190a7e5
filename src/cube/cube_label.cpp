#include "cube/cube_label.h"

#include "korvane/icon2d.h"

namespace Korvane {

namespace {

// What is made anew meanwhile is not touched.
void DestroyIcons(Renderer& renderer, Borrowed<DynamicIcon2D>& first, Borrowed<DynamicIcon2D>& second) {
  const Borrowed<DynamicIcon2D> gone[] = {Borrowed(first.Get()), Borrowed(second.Get())};
  first.Set(nullptr);
  second.Set(nullptr);
  for (const auto& each : gone) {
    DynamicIcon2D* icon = each.Get();
    if (icon != nullptr) renderer.DestroyIcon(icon);
  }
}

}  // namespace

bool CubeLabel::SetName(const wchar_t* name) {
  const std::wstring given = name != nullptr ? name : L"";
  if (activeName == given) return false;
  activeName = given;
  return true;
}

bool CubeLabel::ShowsSecondName(const OrientorParameters& parameters) const {
  return !parameters.orient_to_ucs && activeName != defaultName;
}

bool CubeLabel::IsMismatched(const OrientorParameters& parameters) const {
  return parameters.draw_ucs_menu != (plain.Get() != nullptr);
}

bool CubeLabel::IsOutdated(const OrientorParameters& parameters, const CubeLayout& layout,
                           int sizeBefore) const {
  if (IsMismatched(parameters)) return true;
  return parameters.draw_ucs_menu &&
         (layout.screenSize != sizeBefore || parameters.draw_compass != madeWithCompass);
}

// Whoever gives another name while these are made has made newer ones, and whoever takes the label or the
// renderer away wants none.
void CubeLabel::Make(Renderer& renderer, const OrientorParameters& parameters, const CubeLayout& layout) {
  ForsakeMaking();
  const Lifeline::Watch wanted(making);
  DestroyIcons(renderer, plain, highlighted);
  if (!wanted || !parameters.draw_ucs_menu) return;
  const std::wstring first = activeName;
  const std::wstring second = ShowsSecondName(parameters) ? defaultName : std::wstring();
  const int width = layout.GetLabelWidth(parameters);
  Borrowed<DynamicIcon2D> madePlain(renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), false, width));
  Borrowed<DynamicIcon2D> madeLit(renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), true, width));
  if (!wanted) {
    DestroyIcons(renderer, madePlain, madeLit);
    return;
  }
  plain.Set(madePlain.Get());
  highlighted.Set(madeLit.Get());
}

void CubeLabel::Destroy(Renderer& renderer) {
  ForsakeMaking();
  DestroyIcons(renderer, plain, highlighted);
}

DynamicIcon2D* CubeLabel::Find(const OrientorParameters& parameters, bool lit) const {
  if (!parameters.draw_ucs_menu) return nullptr;
  return (lit ? highlighted : plain).Get();
}

void CubeLabel::Place(DynamicIcon2D& icon, const OrientorParameters& parameters, const CubeLayout& layout,
                      double opacity) {
  Vector2 centre = layout.GetOverlayPosition(parameters, CubeLayout::GetUCSOffset(parameters));
  centre.y += layout.mirror.scaleY * icon.GetHeight() / 2.0;
  icon.SetPosition(centre);
  icon.SetOpacity(opacity);
}

void CubeLabel::Offer(const DynamicIcon2D& icon, QuadSink& sink) {
  float vertices[12];
  icon.GetBounds().ToArray(vertices, 0.0F);
  sink.Take(ID, 4, vertices, nullptr);
}

}  // namespace Korvane
