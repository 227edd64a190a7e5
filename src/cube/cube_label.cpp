#include "cube/cube_label.h"

#include "korvane/icon2d.h"

namespace Korvane {

namespace {

void GiveBack(Renderer& renderer, const Borrowed<DynamicIcon2D>& borrowed) {
  DynamicIcon2D* icon = borrowed.Get();
  if (icon != nullptr) renderer.DestroyIcon(icon);
}

}  // namespace

// What is made anew meanwhile is not touched.
void CubeLabel::DestroyIcons(Renderer& renderer) {
  const Borrowed<DynamicIcon2D> first(GetPlain());
  const Borrowed<DynamicIcon2D> second(GetHighlighted());
  plain.Set(nullptr);
  highlighted.Set(nullptr);
  GiveBack(renderer, first);
  GiveBack(renderer, second);
}

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
  return parameters.draw_ucs_menu != (GetPlain() != nullptr);
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
  DestroyIcons(renderer);
  if (!wanted || !parameters.draw_ucs_menu) return;
  const std::wstring first = activeName;
  const std::wstring second = ShowsSecondName(parameters) ? defaultName : std::wstring();
  const int width = layout.GetLabelWidth(parameters);
  const Borrowed<DynamicIcon2D> madePlain(
      renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), false, width));
  const Borrowed<DynamicIcon2D> madeLit(
      renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), true, width));
  if (!wanted) {
    GiveBack(renderer, madePlain);
    GiveBack(renderer, madeLit);
    return;
  }
  maker.Set(&renderer);
  plain.Set(madePlain.Get());
  highlighted.Set(madeLit.Get());
}

void CubeLabel::Destroy(Renderer& renderer) {
  ForsakeMaking();
  DestroyIcons(renderer);
}

DynamicIcon2D* CubeLabel::Find(const OrientorParameters& parameters, bool lit) const {
  if (!parameters.draw_ucs_menu) return nullptr;
  return lit ? GetHighlighted() : GetPlain();
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
