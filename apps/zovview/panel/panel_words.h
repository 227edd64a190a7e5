#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "commands/view_commands.h"

namespace zovview {

/// What the panel says, found and measured once for a language, a scale and a navigation style. In points,
/// within a frame of the Gui.
class PanelWords {
 public:
  /// Of a command.
  struct Words {
    const char* label;
    const char* item;  ///< The same with an identifier.
    std::string key;   ///< Empty for none.
    float keyWidth;
    std::string tip;  ///< The label with all keys.
    int picture;      ///< -1 for none.
  };
  struct Line {
    std::string keys;
    std::string action;
  };

  /// Anew where one of them is another than the last time; once a frame, before all else.
  void Update(const zovhost::NavigationStyle& style);
  /// How often they have come anew.
  int GetSerial() const { return serial; }

  /// Of the place in the list of the commands.
  const Words& Get(const ViewCommand& command) const;
  /// One for all buttons: of two columns, in which each fits, and wide enough for the settings, which are
  /// one.
  float GetButtonWidth() const { return buttonWidth; }
  /// Of what stands in the columns of buttons.
  float GetContentWidth() const { return contentWidth; }
  const std::vector<Line>& GetHelp() const { return help; }
  /// Where the actions begin, from the left of the panel.
  float GetHelpColumn() const { return helpColumn; }
  float GetLanguageColumn() const { return languageColumn; }
  /// A language by its own name, others as they are said.
  static std::string NameLanguage(const ViewCommand& command);

 private:
  void CollectWords();
  void MeasureButtons();
  void CollectHelp(const zovhost::NavigationStyle& style);

  const void* phrases = nullptr;
  const void* style = nullptr;
  float fontScale = 0.0F;
  int serial = 0;
  std::vector<Words> words;
  std::vector<Line> help;
  float buttonWidth = 0.0F;
  float contentWidth = 0.0F;
  float helpColumn = 0.0F;
  float languageColumn = 0.0F;
};

/// A text that is made once for what it tells of, and anew with other words.
class PanelText {
 public:
  /// Whether it is to be made: it was made of something else, or for other words.
  bool IsOld(const PanelWords& words, const std::string& from);
  void Set(std::string made) { text = std::move(made); }
  const std::string& Get() const { return text; }

 private:
  int serial = 0;
  std::string source;
  std::string text;
};

}  // namespace zovview
