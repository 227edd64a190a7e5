#include "zovhost/named_views.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <random>

#include "zovhost/wide_text.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Vector3;

namespace {

constexpr std::size_t NONE = static_cast<std::size_t>(-1);
constexpr const char* USUAL_NAME = "View";
constexpr double FARTHEST = 1e15;       // from the origin, and across: beyond it doubles have gaps
constexpr double LEAST_SINE = 1e-9;     // between the view and its up
constexpr double WIDEST_ANGLE = 179.9;  // degrees, of both sides of the axis
constexpr std::array<std::size_t, 5> GUID_GROUPS = {8, 4, 4, 4, 12};

bool IsNear(const Vector3& point) {
  return std::max({std::abs(point.x), std::abs(point.y), std::abs(point.z)}) <= FARTHEST;
}

bool Opens(double oneSide, double other) {
  return oneSide + other > 0.0 && oneSide + other <= WIDEST_ANGLE && std::max(oneSide, other) < 90.0;
}

bool HasSize(double across) { return across > 0.0 && across <= FARTHEST; }

bool IsControl(wchar_t character) { return character < L' ' || character == L'\x7F'; }

// On one line, without blanks around it, and well-formed.
std::string Clean(std::string_view name) {
  std::wstring wide = Utf8ToWide(name.substr(0, NamedViews::LONGEST_NAME * 4));
  std::replace_if(wide.begin(), wide.end(), IsControl, L' ');
  while (WideToUtf8(wide).size() > NamedViews::LONGEST_NAME) wide.pop_back();
  wide.erase(0, std::min(wide.size(), wide.find_first_not_of(L' ')));
  wide.erase(wide.find_last_not_of(L' ') + 1);
  return WideToUtf8(wide);
}

template <class Match>
std::optional<std::size_t> Find(const std::vector<NamedView>& views, Match match) {
  const auto found = std::find_if(views.begin(), views.end(), match);
  if (found == views.end()) return std::nullopt;
  return static_cast<std::size_t>(found - views.begin());
}

}  // namespace

bool CanShowView(const CameraParameters& camera) {
  if (!camera.IsFinite() || !IsNear(camera.eye) || !IsNear(camera.centre) || !IsNear(camera.pivot) ||
      !IsNear(camera.up)) {
    return false;
  }
  const Vector3 forward = (camera.centre - camera.eye).Normalize();
  const bool stands = forward.Cross(camera.up.Normalized()).Length() > LEAST_SINE;
  return stands && Opens(camera.left_fov, camera.right_fov) && Opens(camera.top_fov, camera.bottom_fov) &&
         HasSize(camera.ortho_width) && HasSize(camera.ortho_height);
}

// ---- identifiers ----

std::string MakeGuid() {
  constexpr const char* DIGITS = "0123456789abcdef";
  constexpr std::size_t VERSION_PLACE = 14;
  constexpr std::size_t VARIANT_PLACE = 19;
  std::random_device random;
  std::string guid;
  for (const std::size_t size : GUID_GROUPS) {
    if (!guid.empty()) guid += '-';
    for (std::size_t i = 0; i < size; ++i) guid += DIGITS[random() % 16];
  }
  guid[VERSION_PLACE] = '4';
  guid[VARIANT_PLACE] = "89ab"[random() % 4];
  return guid;
}

bool IsGuid(std::string_view text) {
  constexpr std::size_t LENGTH = 36;
  if (text.size() != LENGTH) return false;
  std::size_t at = 0;
  for (const std::size_t size : GUID_GROUPS) {
    if (at > 0 && text[at++] != '-') return false;
    if (text.substr(at, size).find_first_not_of("0123456789abcdef") != std::string_view::npos) return false;
    at += size;
  }
  return true;
}

// ---- the list ----

std::string NamedViews::MakeUnique(const std::string& wanted, std::size_t except) const {
  std::string name = wanted;
  const auto isTaken = [&] {
    const auto taken = FindName(name);
    return taken.has_value() && *taken != except;
  };
  for (int number = 2; isTaken(); ++number) name = wanted + " " + std::to_string(number);
  return name;
}

std::optional<std::size_t> NamedViews::Add(std::string_view name, const CameraParameters& camera,
                                           std::string_view guid) {
  if (views.size() >= MOST || !CanShowView(camera)) return std::nullopt;
  std::string wanted = Clean(name);
  if (wanted.empty()) wanted = USUAL_NAME + (" " + std::to_string(views.size() + 1));
  const bool isNew = IsGuid(guid) && !FindGuid(guid).has_value();
  views.push_back({MakeUnique(wanted, NONE), camera, isNew ? std::string(guid) : MakeGuid()});
  return views.size() - 1;
}

bool NamedViews::Rename(std::size_t index, std::string_view name) {
  const std::string wanted = Clean(name);
  if (index >= views.size() || wanted.empty() || wanted == views[index].name) return false;
  views[index].name = MakeUnique(wanted, index);
  return true;
}

bool NamedViews::SetCamera(std::size_t index, const CameraParameters& camera) {
  if (index >= views.size() || !CanShowView(camera)) return false;
  views[index].camera = camera;
  return true;
}

bool NamedViews::Move(std::size_t from, std::size_t to) {
  if (from >= views.size() || to >= views.size()) return false;
  const auto at = [this](std::size_t index) { return views.begin() + static_cast<std::ptrdiff_t>(index); };
  if (from < to) std::rotate(at(from), at(from + 1), at(to + 1));
  if (from > to) std::rotate(at(to), at(from), at(from + 1));
  return true;
}

bool NamedViews::Remove(std::size_t index) {
  if (index >= views.size()) return false;
  views.erase(views.begin() + static_cast<std::ptrdiff_t>(index));
  return true;
}

std::optional<std::size_t> NamedViews::FindName(std::string_view name) const {
  return Find(views, [name](const NamedView& view) { return view.name == name; });
}

std::optional<std::size_t> NamedViews::FindGuid(std::string_view guid) const {
  return Find(views, [guid](const NamedView& view) { return view.guid == guid; });
}

}  // namespace zovhost
