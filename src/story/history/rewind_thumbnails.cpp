#include "story/history/rewind_thumbnails.h"

#include <utility>

#include "foundation/out_of_memory.h"
#include "foundation/truncate.h"
#include "korvane/icon2d.h"

namespace Korvane {

namespace {

void Destroy(const Borrowed<Renderer>& maker, DynamicIcon2D* icon) {
  Renderer* const held = maker.Get();
  if (held != nullptr && icon != nullptr) held->DestroyIcon(icon);
}

}  // namespace

// Pictures that a host has given before there was a renderer stay, and go to the first one.
void RewindThumbnails::SetRenderer(Elements& elements, Renderer* value) {
  if (value != nullptr && value == renderer.Get()) return;
  const Borrowed<Renderer> last(renderer.Get());
  std::vector<DynamicIcon2D*> icons;
  if (hasMaker) OrFail([&] { icons = TakeAll(elements); });
  renderer.Set(value);
  const bool hadMaker = std::exchange(hasMaker, value != nullptr);
  for (DynamicIcon2D* const icon : icons) Destroy(last, icon);
  // Where there was no memory to take them together, one by one.
  for (std::size_t i = 0; hadMaker && icons.empty() && i < elements.size(); ++i) {
    Destroy(last, std::exchange(elements[i].thumbnail, nullptr));
  }
}

std::vector<DynamicIcon2D*> RewindThumbnails::TakeAll(Elements& elements) {
  std::vector<DynamicIcon2D*> icons;
  icons.reserve(elements.size());
  for (Element& element : elements) icons.push_back(std::exchange(element.thumbnail, nullptr));
  return icons;
}

// A scene that is drawn for a picture asks for no further one.
void RewindThumbnails::Make(Elements& elements, Lifeline& cameras, float size) {
  if (std::exchange(making, true)) return;
  std::size_t index = 0;
  while (index < elements.size() && MakeOne(elements, index, cameras, Truncate(size))) ++index;
  making = false;
}

// False where the elements are no longer those of before, or the renderer.
bool RewindThumbnails::MakeOne(Elements& elements, std::size_t index, Lifeline& cameras, int size) {
  const Borrowed<Renderer> maker(renderer.Get());
  if (maker.Get() == nullptr) return false;
  if (elements[index].thumbnail != nullptr) return true;
  const Lifeline::Watch same(cameras);
  const CameraParameters camera = elements[index].camera;
  DynamicIcon2D* const icon = maker.Get()->CreateSceneScreenshot(size, size, camera);
  const bool wanted = same && maker.Get() != nullptr && maker.Get() == renderer.Get();
  if (icon == nullptr) return wanted;
  if (!wanted || elements[index].thumbnail != nullptr) {
    Destroy(maker, icon);
    return false;
  }
  elements[index].thumbnail = icon;
  Place(elements[index]);
  return true;
}

void RewindThumbnails::Place(const Element& element) const {
  if (element.thumbnail != nullptr && !IsLost()) element.thumbnail->SetBounds(element.bounds);
}

void RewindThumbnails::GiveBack(DynamicIcon2D* icon) const {
  const Borrowed<Renderer> maker(renderer.Get());
  Destroy(maker, icon);
}

// To the renderer of now, whoever takes over meanwhile.
void RewindThumbnails::GiveBack(const Elements& leaving) const {
  const Borrowed<Renderer> maker(renderer.Get());
  for (const Element& each : leaving) Destroy(maker, each.thumbnail);
}

}  // namespace Korvane
