#pragma once

#include <span>

#include "korvane/export.h"
#include "korvane/lifeline.h"
#include "korvane/renderer.h"

namespace Korvane {

/// The icon of a text, held for as long as its borrower needs it: counted up once when it is taken, and down
/// once when it is given back, at the latest with the end of the loan. A renderer that is gone is forgotten.
class ZOVTOOLS_API StringLoan {
 public:
  StringLoan() = default;
  StringLoan(const StringLoan&) = delete;
  StringLoan& operator=(const StringLoan&) = delete;
  ~StringLoan() { GiveBack(); }

  /// Gives back what is held, unless it is this very text of this renderer, and takes the text. Null gives
  /// back. Calls out to the host, who may give the loan back or destroy it meanwhile; null then, and where a
  /// text has no icon.
  DynamicIcon2D* Take(Renderer* renderer, StringID id);
  /// The icon stays in the renderer until it applies its counts.
  void GiveBack();
  /// Null when nothing is held.
  DynamicIcon2D* Get() const { return lender.Get() != nullptr ? icon : nullptr; }

 private:
  Borrowed<Renderer> lender;
  StringID text = STRING_NONE;
  DynamicIcon2D* icon = nullptr;
  Lifeline taking;
};

/// Textures held in the same way.
class ZOVTOOLS_API TextureLoan {
 public:
  /// `textures` is a constant table and outlives the loan.
  explicit TextureLoan(std::span<const TextureID> textures) : ids(textures) {}
  TextureLoan(const TextureLoan&) = delete;
  TextureLoan& operator=(const TextureLoan&) = delete;
  /// Counts down; the textures stay until the renderer applies its counts.
  ~TextureLoan() { CountDown(); }

  /// Takes all of them and lets the renderer load them; gives them back to another renderer before. Nothing
  /// when they are held. Null gives back. Where memory runs out none is held, and the next Take tries again.
  void Take(Renderer* renderer);
  /// The same for those whose owner applies the counts afterwards; null gives back.
  void Want(Renderer* renderer);
  /// Lets the renderer free what nobody else holds.
  void GiveBack();
  bool IsHeld() const { return lender.Get() != nullptr; }

 private:
  void CountDown();

  std::span<const TextureID> ids;
  Borrowed<Renderer> lender;
};

}  // namespace Korvane
