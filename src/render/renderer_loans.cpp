#include "korvane/renderer_loans.h"

#include "render/texture_counts.h"

namespace Korvane {

DynamicIcon2D* StringLoan::Take(Renderer* renderer, StringID id) {
  if (Get() != nullptr && lender.Get() == renderer && text == id) return icon;
  GiveBack();
  if (renderer == nullptr) return nullptr;
  const Lifeline::Watch wanted(taking);
  DynamicIcon2D* const taken = renderer->GetStringTexture(id);
  if (taken == nullptr) return nullptr;
  if (!wanted) {
    renderer->ReleaseStringTexture(id);
    return nullptr;
  }
  lender.Set(renderer);
  text = id;
  icon = taken;
  return icon;
}

void StringLoan::GiveBack() {
  taking.Cut();
  Renderer* const held = lender.Get();
  lender.Set(nullptr);
  icon = nullptr;
  if (held != nullptr) held->ReleaseStringTexture(text);
}

void TextureLoan::Take(Renderer* renderer) {
  if (renderer == nullptr) return GiveBack();
  if (lender.Get() == renderer) return;
  Want(renderer);
  renderer->ApplyTextureUsage();
}

void TextureLoan::Want(Renderer* renderer) {
  if (lender.Get() == renderer) return;
  CountDown();
  lender.Set(renderer != nullptr && CountTexturesUp(*renderer, ids) ? renderer : nullptr);
}

void TextureLoan::GiveBack() {
  Renderer* const held = lender.Get();
  if (held == nullptr) return;
  CountDown();
  lender.Set(nullptr);
  held->ApplyTextureUsage();
}

void TextureLoan::CountDown() {
  if (Renderer* const held = lender.Get()) CountTexturesDown(*held, ids);
}

}  // namespace Korvane
