#include "cube/cube_label.h"

#include "korvane/icon2d.h"

namespace Korvane {

namespace {

void DestroyIcons(Renderer& renderer, DynamicIcon2D*& first, DynamicIcon2D*& second) {
  for (DynamicIcon2D** const icon : {&first, &second}) {
    if (*icon != nullptr) renderer.DestroyIcon(*icon);
    *icon = nullptr;
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
  return parameters.draw_ucs_menu != (plain != nullptr);
}

bool CubeLabel::IsOutdated(const OrientorParameters& parameters, const CubeLayout& layout,
                           int sizeBefore) const {
  if (IsMismatched(parameters)) return true;
  return parameters.draw_ucs_menu &&
         (layout.screenSize != sizeBefore || parameters.draw_compass != madeWithCompass);
}

// Whoever gives another name while these are made has made newer ones.
void CubeLabel::Make(Renderer& renderer, const OrientorParameters& parameters, const CubeLayout& layout) {
  Destroy(renderer);
  if (!parameters.draw_ucs_menu) return;
  const std::wstring first = activeName;
  const std::wstring second = ShowsSecondName(parameters) ? defaultName : std::wstring();
  const int width = layout.GetLabelWidth(parameters);
  DynamicIcon2D* madePlain = renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), false, width);
  DynamicIcon2D* madeLit = renderer.CreateUCSMenuLabel(first.c_str(), second.c_str(), true, width);
  if (plain != nullptr || highlighted != nullptr) {
    DestroyIcons(renderer, madePlain, madeLit);
    return;
  }
  plain = madePlain;
  highlighted = madeLit;
}

void CubeLabel::Destroy(Renderer& renderer) { DestroyIcons(renderer, plain, highlighted); }

DynamicIcon2D* CubeLabel::Find(const OrientorParameters& parameters, bool lit) const {
  if (!parameters.draw_ucs_menu) return nullptr;
  return lit ? highlighted : plain;
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
