#include "window/x_settings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zovhost {

namespace {

constexpr double DOTS_OF_ONE = 96.0 * 1024.0;  // an inch, at a scale of 1
constexpr double MOST = 100.0;
constexpr unsigned char BIG_END_FIRST = 1;

enum Kind : std::uint32_t { NUMBER, TEXT, COLOUR };
constexpr std::size_t COLOUR_BYTES = 8;

// Takes one value after the other. Past the end everything is 0, and it has failed.
class Taker {
 public:
  explicit Taker(std::span<const unsigned char> from) : rest(from) {
    const auto order = Take(4);  // and what fills up
    bigEndFirst = !order.empty() && order[0] == BIG_END_FIRST;
  }

  bool HasFailed() const { return failed; }
  std::uint32_t TakeNumber(std::size_t size) {
    const auto bytes = Take(size);
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      number = number << 8U | bytes[bigEndFirst ? i : bytes.size() - 1 - i];
    }
    return number;
  }
  std::string_view TakeText(std::size_t size) {
    const auto bytes = Take(size);
    Take((4 - size % 4) % 4);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  void Skip(std::size_t size) { Take(size); }

 private:
  std::span<const unsigned char> Take(std::size_t size) {
    failed = failed || size > rest.size();
    if (failed) return {};
    const auto taken = rest.first(size);
    rest = rest.subspan(size);
    return taken;
  }

  std::span<const unsigned char> rest;
  bool bigEndFirst = false;
  bool failed = false;
};

// Of one setting, 0 for those that mean something else.
double TakeScale(Taker& settings) {
  const std::uint32_t kind = settings.TakeNumber(1);
  settings.Skip(1);
  const std::string_view name = settings.TakeText(settings.TakeNumber(2));
  settings.Skip(4);  // when it was changed
  if (kind == TEXT) settings.TakeText(settings.TakeNumber(4));
  if (kind == COLOUR) settings.Skip(COLOUR_BYTES);
  if (kind > COLOUR) settings.Skip(SIZE_MAX);
  if (kind != NUMBER) return 0.0;
  const double number = static_cast<std::int32_t>(settings.TakeNumber(4));
  const double one = name == "Xft/DPI" ? DOTS_OF_ONE : name == "Gdk/WindowScalingFactor" ? 1.0 : 0.0;
  const double scale = one > 0.0 ? number / one : 0.0;
  return scale > 0.0 && scale <= MOST ? scale : 0.0;
}

}  // namespace

double ParseXSettings(std::span<const unsigned char> bytes) {
  Taker settings(bytes);
  settings.Skip(4);  // how often they have changed
  double scale = 0.0;
  for (std::uint32_t left = settings.TakeNumber(4); left > 0 && !settings.HasFailed(); --left) {
    scale = std::max(scale, TakeScale(settings));
  }
  return settings.HasFailed() ? 0.0 : scale;
}

}  // namespace zovhost
