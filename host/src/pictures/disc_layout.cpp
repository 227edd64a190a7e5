#include "pictures/disc_layout.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zovhost {

namespace {

constexpr double leastPointsForCaptions = 100.0;
constexpr double smallestCaps = 6.0;  // points
constexpr double usualCaps = 6.75;    // points, on a disc of the usual size
constexpr double growth = 0.6;        // with the size of the disc, as a power: less than the disc
constexpr double gap = 2.5;           // units, between glyph and caption
constexpr double lineStep = 1.45;     // heights of capitals, from line to line
constexpr double border = 1.75;       // units, that a caption keeps to the border of its wedge
constexpr double sampleStep = 0.25;   // units
constexpr double shrink = 0.98;       // of the captions, from try to try

struct Room {
  double left = 0.0;
  double right = 0.0;

  double GetWidth() const { return right - left; }
};

// How far a row of the wedge reaches to both sides of a point in it.
Room FindRow(const Sector& sector, const DiscPoint& from) {
  const auto reach = [&](double step) {
    double x = from.x;
    while (sector.Contains({x + step, from.y})) x += step;
    return x;
  };
  if (!sector.Contains(from)) return {from.x, from.x};
  return {reach(-sampleStep), reach(sampleStep)};
}

// What all rows of a line have in common. In units.
Room FindRoom(const Sector& sector, const DiscPoint& middle, double height) {
  Room room = {-discUnits, discUnits};
  for (int i = -2; i <= 2; ++i) {
    const Room row = FindRow(sector, {middle.x, middle.y + i * height / 4.0});
    room.left = std::max(room.left, row.left + border);
    room.right = std::min(room.right, row.right - border);
  }
  return room;
}

double GetUsualCaps(const DiscSize& size) {
  return usualCaps * std::pow(size.points / discUnits, growth) * size.scale;
}

class Composer {
 public:
  Composer(const DiscSize& discSize, const CaptionSetter& captionSetter)
      : size(discSize), setter(captionSetter) {}

  // The lines of a caption below its glyph, at a height of the capitals in pixels; none when they lack room.
  std::optional<WedgeContent> Compose(const DiscWedge& wedge, const std::vector<std::string>& lines,
                                      double capHeight) const {
    const double caps = capHeight / size.GetUnit();
    const double step = caps * lineStep;
    const double textHeight = caps + step * (static_cast<double>(lines.size()) - 1.0);
    const DiscPoint at = wedge.GetContent();
    const double top = at.y - (wedge.glyphSize + gap + textHeight) / 2.0;
    WedgeContent content = PlaceGlyph(wedge, {at.x, top + wedge.glyphSize / 2.0}, wedge.glyphSize);
    double y = top + wedge.glyphSize + gap + caps / 2.0;
    for (const std::string& line : lines) {
      const Room room = FindRoom(wedge.sector, {at.x, y}, caps);
      const double width = setter.GetWidth(line, capHeight) / size.GetUnit();
      if (width > room.GetWidth()) return {};
      const double x = std::clamp(at.x, room.left + width / 2.0, room.right - width / 2.0);
      content.caption.push_back({line, ToPixels({x, y})});
      y += step;
    }
    return content;
  }

  WedgeContent ComposeAlone(const DiscWedge& wedge) const {
    return PlaceGlyph(wedge, wedge.GetContent(), wedge.loneGlyphSize);
  }

 private:
  DiscPoint ToPixels(const DiscPoint& point) const {
    const double half = discUnits / 2.0;
    return {(point.x + half) * size.GetUnit(), (point.y + half) * size.GetUnit()};
  }

  WedgeContent PlaceGlyph(const DiscWedge& wedge, const DiscPoint& middle, double glyphSize) const {
    return {&wedge, wedge.action, ToPixels(middle), glyphSize * size.GetUnit(), {}};
  }

  const DiscSize& size;
  const CaptionSetter& setter;
};

// In two where it may be parted, the parts as equal as can be; empty for a text in one piece.
std::vector<std::string> Break(const std::string& text) {
  std::vector<std::string> best;
  std::size_t longest = text.size();
  for (std::size_t at = text.find_first_of(" -/"); at != std::string::npos;
       at = text.find_first_of(" -/", at + 1)) {
    const std::size_t head = text[at] == ' ' ? at : at + 1;
    const std::size_t tail = at + 1;
    const std::size_t length = std::max(head, text.size() - tail);
    if (head == 0 || tail == text.size() || length >= longest) continue;
    longest = length;
    best = {text.substr(0, head), text.substr(tail)};
  }
  return best;
}

using Lines = std::vector<std::string>;

std::string FindCaption(const DiscWedge& wedge, const FindText& findText) {
  const int number = GetDiscSign(wedge.action).caption;
  return number >= 0 && findText ? findText(number) : std::string();
}

// None for a caption that finds no room even at the smallest size.
Lines ChooseLines(const Composer& composer, const DiscWedge& wedge, const std::string& text,
                  double smallest) {
  for (const Lines& lines : {Lines{text}, Break(text)}) {
    const bool isText = !lines.empty() && !lines.front().empty();
    if (isText && composer.Compose(wedge, lines, smallest)) return lines;
  }
  return {};
}

}  // namespace

DiscLayout LayOutDisc(const DiscPlan& plan, const DiscSize& size, const FindText& findText,
                      const CaptionSetter& setter) {
  const bool captioned = plan.IsLarge() && size.points >= leastPointsForCaptions;
  const Composer composer(size, setter);
  const double smallest = smallestCaps * size.scale;
  DiscLayout layout;
  layout.capHeight = std::max(smallest, GetUsualCaps(size));
  std::vector<Lines> captions;
  for (const DiscWedge& wedge : plan.wedges) {
    const std::string text = captioned ? FindCaption(wedge, findText) : std::string();
    const Lines& lines = captions.emplace_back(ChooseLines(composer, wedge, text, smallest));
    while (layout.capHeight > smallest && !composer.Compose(wedge, lines, layout.capHeight)) {
      layout.capHeight = std::max(smallest, layout.capHeight * shrink);
    }
  }
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const DiscWedge& wedge = plan.wedges[i];
    layout.contents.push_back(captions[i].empty() ? composer.ComposeAlone(wedge)
                                                  : *composer.Compose(wedge, captions[i], layout.capHeight));
  }
  return layout;
}

}  // namespace zovhost
