#pragma once

namespace zovhost {

/// The keys of a page, a panel that Tab leads into from elsewhere: arrows go through it, and Tab leads on.
/// All but Take and Leave within a frame of the Gui, while the page is put together.
class PageKeys {
 public:
  /// With the next frame keys go to its first item.
  void Take() { entering = true; }
  /// Tab has led on from it, which is told by true; keys are no longer its own.
  bool Leave();
  bool AreHere() const { return here; }

  /// The last item is the first of the page. `follow`: it has the keys as well if keys are what the user has
  /// used last.
  void NoteFirstItem(bool follow);
  /// All items are drawn. True when Escape has just taken the keys from the page.
  bool End();
  /// In place of the two, in a frame without the page.
  void Skip();

 private:
  bool entering = false;
  bool here = false;
};

}  // namespace zovhost
