#include "pictures/label_styles.h"

#include <array>
#include <cstddef>

#include "zovhost/accent.h"

namespace zovhost {

namespace {

// Neutral plates, one accent; every text stands at better than 4.5 to 1 on what is put under it, whether
// the view below is white or black.
constexpr TextColour ink = {0.11, 0.13, 0.16, 1.0};
constexpr TextColour paper = {0.985, 0.985, 0.99, 0.97};
constexpr TextColour hairline = {0.0, 0.0, 0.0, 0.22};
constexpr TextColour slate = {0.13, 0.15, 0.18, 0.86};
constexpr TextColour slateLine = {1.0, 1.0, 1.0, 0.14};
constexpr TextColour white = {1.0, 1.0, 1.0, 1.0};
constexpr TextColour darkEdge = {0.07, 0.08, 0.10, 0.80};
constexpr TextColour lightEdge = {1.0, 1.0, 1.0, 0.90};
constexpr TextColour pivotGreen = {0.0, 0.36, 0.06, 1.0};
constexpr TextColour accent = {ACCENT_COLOUR[0], ACCENT_COLOUR[1], ACCENT_COLOUR[2], 1.0};
constexpr TextColour onAccent = {0.88, 0.94, 1.0, 1.0};
constexpr TextColour greyInk = {0.33, 0.36, 0.40, 1.0};

constexpr TextStyle tooltip = {.size = 12.0,
                               .text = ink,
                               .plate = paper,
                               .border = hairline,
                               .radius = 4.0,
                               .paddingX = 9.0,
                               .paddingY = 5.0,
                               .shadow = 4.0,
                               .wrapWidth = 280.0};

constexpr TextStyle tooltipHUD = {.size = 12.0,
                                  .text = white,
                                  .plate = slate,
                                  .border = slateLine,
                                  .radius = 5.0,
                                  .paddingX = 9.0,
                                  .paddingY = 5.0,
                                  .wrapWidth = 280.0};

constexpr TextStyle messageHUD = {.size = 14.0,
                                  .text = white,
                                  .plate = slate,
                                  .border = slateLine,
                                  .radius = 9.0,
                                  .paddingX = 18.0,
                                  .paddingY = 10.0};

// Its middle stands so near to the ball that the word has to stand higher.
constexpr TextStyle pivotLabel = {
    .size = 13.0, .bold = true, .text = pivotGreen, .edge = lightEdge, .edgeWidth = 2.5, .roomBelow = 28.0};

constexpr TextStyle miniWheelLabel = {
    .size = 12.0, .bold = true, .text = white, .edge = darkEdge, .edgeWidth = 2.5};

constexpr TextStyle plain = {.size = 10.0, .text = white, .edge = darkEdge, .edgeWidth = 1.5};

constexpr std::array<TextStyle, 6> styles = {tooltip,    tooltipHUD,     messageHUD,
                                             pivotLabel, miniWheelLabel, plain};

// The cube centres its label nearer to the border of the viewport than half of the room that it names.
constexpr double roomTaken = 0.85;

}  // namespace

const TextStyle& GetLabelStyle(LabelKind kind) { return styles[static_cast<std::size_t>(kind)]; }

TextStyle MakeMenuLabelStyle(bool highlighted, double width) {
  return {.size = 11.0,
          .text = highlighted ? white : ink,
          .secondSize = 9.0,
          .secondText = highlighted ? onAccent : greyInk,
          .plate = highlighted ? accent : TextColour{0.96, 0.965, 0.97, 0.90},
          .border = hairline,
          .radius = 8.0,
          .paddingX = 9.0,
          .paddingY = 2.0,
          .width = width * roomTaken,
          .hugs = true,
          .marker = true};
}

}  // namespace zovhost
