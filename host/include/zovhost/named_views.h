#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "korvane/camera_parameters.h"

namespace zovhost {

/// A view that was kept.
struct NamedView {
  std::string name;  ///< UTF-8, on one line, never empty, and of no other view in the list.
  Korvane::CameraParameters camera;
  std::string guid;  ///< By which other programs know it; of no other view in the list.
};

/// Whether anything can be seen by a camera: its numbers are finite, it looks somewhere, its up is not along
/// its view, its angles open and its orthographic size is above zero.
[[nodiscard]] bool CanShowView(const Korvane::CameraParameters& camera);

/// A new identifier: 32 random hexadecimal digits in five groups, as a UUID of version 4.
std::string MakeGuid();
/// Small hexadecimal digits in groups of 8, 4, 4, 4 and 12.
[[nodiscard]] bool IsGuid(std::string_view text);

/// Views by name, in the order of their user.
class NamedViews {
 public:
  static constexpr std::size_t MOST = 1000;
  static constexpr std::size_t LONGEST_NAME = 400;  ///< Bytes; longer ones are cut.

  const std::vector<NamedView>& Get() const { return views; }
  std::size_t GetCount() const { return views.size(); }

  /// At the end of the list; the index. A name that is taken gets a number behind it, an empty one is "View"
  /// with one; without a `guid`, or with one that is another view's or none at all, the view gets a new one.
  /// Nothing for a camera that shows nothing, and where there are MOST already.
  std::optional<std::size_t> Add(std::string_view name, const Korvane::CameraParameters& camera,
                                 std::string_view guid = {});
  /// As with Add a name that another has gets a number. False, with nothing changed, for an empty name, one
  /// that it has already, and an index beyond the end.
  bool Rename(std::size_t index, std::string_view name);
  /// Another camera under the same name. False for one that shows nothing, and an index beyond the end.
  bool SetCamera(std::size_t index, const Korvane::CameraParameters& camera);
  /// To the place that has the index `to` afterwards. False for indices beyond the end.
  bool Move(std::size_t from, std::size_t to);
  bool Remove(std::size_t index);
  void Clear() { views.clear(); }

  std::optional<std::size_t> FindName(std::string_view name) const;
  std::optional<std::size_t> FindGuid(std::string_view guid) const;

 private:
  std::string MakeUnique(const std::string& wanted, std::size_t except) const;

  std::vector<NamedView> views;
};

}  // namespace zovhost
