#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zovhost/scene_ground.h"

namespace zovview {

/// What the user has chosen for the viewer as a whole. A name that the program does not know, of a language
/// for instance, counts as none.
struct Choices {
  bool reducedMotion = false;
  std::string language;         ///< As in zovhost/languages.h; empty: that of the environment.
  std::string ground;           ///< Behind the model; empty: the program's own.
  std::string navigationStyle;  ///< As in zovhost/navigation_style.h; empty: the program's own.
  std::string pivotPolicy;      ///< As in zovhost/pivot_policy.h; empty: the last point.
  /// One of these two; empty: folded where it would take much of the view.
  std::string panel;
  static constexpr const char* PANEL_FOLDED = "folded";
  static constexpr const char* PANEL_OPEN = "open";
  std::vector<std::string> recentFiles;  ///< The latest first.
};

/// The first of the kit's for a name of none.
const zovhost::SceneGround& FindGround(std::string_view name);

/// The choices, and who is to apply them when one has changed.
class Preferences {
 public:
  const Choices& Get() const { return choices; }
  /// Tells the observer.
  void Set(Choices wanted) {
    choices = std::move(wanted);
    if (observer) observer();
  }
  template <class Change>
  void Edit(Change change) {
    Choices wanted = choices;
    change(wanted);
    Set(std::move(wanted));
  }
  /// In the place of the choice as long as the program runs, or until another is made; empty: none.
  void SetSessionLanguage(std::string tag) { sessionLanguage = std::move(tag); }
  const std::string& GetSessionLanguage() const { return sessionLanguage; }
  void SetObserver(std::function<void()> told) { observer = std::move(told); }

 private:
  Choices choices;
  std::string sessionLanguage;
  std::function<void()> observer;
};

}  // namespace zovview
