#include "window/desktop_scale.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "window/settings_manager.h"

namespace zovhost {

namespace {

constexpr std::string_view RESOURCE = "Xft.dpi:";
constexpr double DOTS_OF_ONE = 96.0;  // an inch, at a scale of 1
constexpr double MOST_DOTS = 10'000.0;
constexpr double STEPS = 4.0;  // between a scale and the next whole one

double RoundScale(double scale) {
  return std::clamp(std::round(scale * STEPS) / STEPS, LEAST_DISPLAY_SCALE, LARGEST_DISPLAY_SCALE);
}

// 0 for what is no number above 0.
double ParseNumber(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return 0.0;
  text.remove_prefix(begin);
  double number = 0.0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  const std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
  const bool isWhole = failure == std::errc() && rest.find_first_not_of(" \t\r") == std::string_view::npos;
  return isWhole && number > 0.0 && number <= MOST_DOTS ? number : 0.0;
}

struct DisplayDeleter {
  void operator()(Display* display) const { XCloseDisplay(display); }
};

// A connection of its own: the resources that one gives are those of when it was made.
double FindByDisplay() {
  const std::unique_ptr<Display, DisplayDeleter> display(XOpenDisplay(nullptr));
  if (display == nullptr) return 0.0;
  const double managed = FindManagedScale(display.get());
  if (managed > 0.0) return RoundScale(managed);
  const char* const resources = XResourceManagerString(display.get());
  return resources != nullptr ? ParseDesktopScale(resources) : 0.0;
}

}  // namespace

double ParseDesktopScale(std::string_view resources) {
  while (!resources.empty()) {
    const std::string_view line = resources.substr(0, resources.find('\n'));
    resources.remove_prefix(std::min(resources.size(), line.size() + 1));
    if (line.substr(0, RESOURCE.size()) != RESOURCE) continue;
    const double dots = ParseNumber(line.substr(RESOURCE.size()));
    return dots > 0.0 ? RoundScale(dots / DOTS_OF_ONE) : 0.0;
  }
  return 0.0;
}

double FindDesktopScale() {
  const double scale = FindByDisplay();
  if (scale > 0.0) return scale;
  const char* const given = std::getenv("GDK_SCALE");  // NOLINT(concurrency-mt-unsafe): nothing writes it
  const double byEnvironment = given != nullptr ? ParseNumber(given) : 0.0;
  return byEnvironment > 0.0 ? RoundScale(byEnvironment) : 1.0;
}

}  // namespace zovhost
