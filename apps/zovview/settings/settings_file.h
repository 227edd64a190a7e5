#pragma once

#include <cstddef>
#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "commands/bar_places.h"
#include "settings/kept_cube.h"
#include "settings/kept_devices.h"
#include "views/preferences.h"

namespace Korvane {
class HelmDisc;
}

namespace zovview {

/// What outlives the program: the settings of the discs, the kind that was open last, whether their welcome
/// screen has been seen, where the bars stand, how the cube looks, what six-axis devices do, and what was
/// chosen for the program as a whole. Kept in a file of the user's, as JSON.
///
/// Several views begin alike, and what is chosen in one of them is kept. What another program has written
/// into the file meanwhile stays there, but where the same was changed here.
///
/// A file that is broken is set aside under the name FindAside gives when a setting changes; one of a newer
/// version of the program stays, and nothing is kept then.
class SettingsFile {
 public:
  /// In the folder of the user's configurations; empty where there is none.
  static std::filesystem::path FindPlace();
  /// Where what is kept of one model goes, if not beside it; empty where there is none.
  std::filesystem::path GetModelFolder() const;

  /// Where a broken file goes, in place of one that went there before.
  static std::filesystem::path FindAside(const std::filesystem::path& file);

  explicit SettingsFile(std::filesystem::path place) : file(std::move(place)) {}

  /// Before the disc is created. False, with one line in `error` and the disc as it was, for a file that is
  /// there and of no use: a single wrong value makes it so.
  bool Read(Korvane::HelmDisc& disc, std::string& error);
  /// Those that were read, or of a first start; and to be brought up to date before Keep.
  BarPlaces& GetBarPlaces() { return bars; }
  /// To be filled before Read as on a first start.
  KeptDevices& GetDevices() { return devices; }
  /// Those that were read, or of a first start; and to be brought up to date before Keep.
  KeptCube& GetCube() { return cube; }
  /// Those that were read, or of a first start; and to be brought up to date before Keep.
  Choices& GetChoices() { return choices; }
  /// Pixels for one point of the disc that is given to Keep; the file has points.
  void SetScale(double pixelsForPoint) { scale = pixelsForPoint; }
  /// Writes the file when a setting of a view, that of the disc, the devices, the bars and the cube, is
  /// another than the last time for this `view`, a small number; or a choice. False, with one line in
  /// `error`, when it cannot be written; it is not tried again then.
  bool Keep(const Korvane::HelmDisc& disc, std::string& error, std::size_t view = 0);

 private:
  std::string FormatNow(const Korvane::HelmDisc& disc, double pixelsForPoint) const;
  nlohmann::ordered_json ReadPresent();
  void SetAside() const;
  bool WriteText(const std::string& text, std::string& error) const;

  std::filesystem::path file;
  BarPlaces bars;
  KeptDevices devices;
  KeptCube cube;
  Choices choices;
  double scale = 1.0;
  std::string kept;               // as it was last read or written
  std::string first;              // as each view began
  std::vector<std::string> seen;  // of each view, the last time
  bool broken = false;
  bool closed = false;
};

}  // namespace zovview
