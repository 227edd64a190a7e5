#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "zovhost/named_views.h"

namespace zovhost {

/// Named views in files: JSON, of which docs/named-views.md tells each field. Numbers come back bit for bit.
///
/// Views with the same name, or the same identifier, and a name of nothing are mended as they are read, as by
/// NamedViews::Add. Everything else that is wrong makes the whole file wrong.

/// False, with `views` as they were, puts one line into `error`.
bool ParseNamedViews(std::string_view text, NamedViews& views, std::string& error);
std::string FormatNamedViews(const NamedViews& views);

/// Where the views of one model are kept: in MODEL.views.json beside it, or in a file of the user's own where
/// that cannot be written. Views that another program has added to the file meanwhile stay in it.
///
/// The file of the user's own counts where there is one, and what was changed goes back to where it came
/// from. A file that is broken, or of a newer version of the program, is never written over; nothing is kept
/// then until the file has gone.
class NamedViewsFile {
 public:
  /// Either may be empty: the first for a model that is in no file, the second for nobody's own. Without
  /// both nothing is read or kept.
  NamedViewsFile(const std::filesystem::path& model, const std::filesystem::path& ownFolder);

  /// MODEL.views.json beside the model; empty for no model.
  static std::filesystem::path FindPlaceBeside(const std::filesystem::path& model);
  /// In `ownFolder`: one for each model, by its name and place; empty for no folder.
  static std::filesystem::path FindOwnPlace(const std::filesystem::path& model,
                                            const std::filesystem::path& ownFolder);

  /// Where there is no file there are no views. False puts one line that names the file into `error`; there
  /// are no views then either.
  bool Read(NamedViews& views, std::string& error);
  /// After Read. Writes the views where they are others than the last time; the file appears whole or not at
  /// all. False puts one line into `error`; it is not tried again before the views change once more.
  bool Keep(const NamedViews& views, std::string& error);

  /// Where they were read, or written last; empty for nowhere yet.
  const std::filesystem::path& GetPlace() const { return place; }

 private:
  bool Write(const std::filesystem::path& to, const std::string& text, std::string& error);

  std::filesystem::path beside;
  std::filesystem::path own;
  std::filesystem::path place;
  std::string kept;  // as the views were last read or written, or failed to be
  bool closed = false;
};

}  // namespace zovhost
