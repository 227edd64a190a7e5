#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "zovhost/picture.h"
#include "zovhost/read_image.h"

namespace zovtest {

// Drivers differ in how they cover and blend the pixels along an edge, and font versions in the edges of
// glyphs. A pixel is off when a channel is off by more than this; a picture fails when too many are.
inline constexpr int channelTolerance = 24;        // of 255
inline constexpr double mostPixelsOff = 0.0008;    // of all
inline constexpr int grossTolerance = 110;         // of 255
inline constexpr double mostPixelsGross = 0.0003;  // of all

inline int GetDifference(const zovhost::Image& a, const zovhost::Image& b, std::size_t pixel) {
  int largest = 0;
  for (std::size_t i = 4 * pixel; i < 4 * pixel + 3; ++i) {
    largest = std::max(largest, std::abs(int{a.rgba[i]} - int{b.rgba[i]}));
  }
  return largest;
}

struct Comparison {
  double off = 0.0;            // share of the pixels
  double gross = 0.0;          // likewise
  zovhost::Image differences;  // black where equal, red where off
};

inline Comparison Compare(const zovhost::Image& a, const zovhost::Image& b) {
  Comparison result;
  result.differences = {a.width, a.height, std::vector<std::uint8_t>(a.rgba.size())};
  const std::size_t count = a.rgba.size() / 4;
  for (std::size_t pixel = 0; pixel < count; ++pixel) {
    const int difference = GetDifference(a, b, pixel);
    result.off += difference > channelTolerance ? 1.0 / static_cast<double>(count) : 0.0;
    result.gross += difference > grossTolerance ? 1.0 / static_cast<double>(count) : 0.0;
    std::uint8_t* out = result.differences.rgba.data() + 4 * pixel;
    out[0] = difference > channelTolerance ? 255 : static_cast<std::uint8_t>(difference);
    out[1] = out[2] = static_cast<std::uint8_t>(difference);
    out[3] = 255;
  }
  return result;
}

inline bool IsSimilar(const Comparison& comparison) {
  return comparison.off <= mostPixelsOff && comparison.gross <= mostPixelsGross;
}

/// Holds a picture to the stored one of this name. With ZOV_KEEP_PICTURES=1 in the environment, as
/// scripts/pictures --keep sets it, the picture is stored anew first: look at it, and at the differences that
/// version control shows, before it is kept. A failure leaves two pictures beside the test program.
inline void ExpectStored(const zovhost::Image& drawn, const std::string& folder, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(ZOV_TEST_PICTURES) / folder / (name + ".png");
  std::string error;
  if (std::getenv("ZOV_KEEP_PICTURES") != nullptr) {
    std::filesystem::create_directories(path.parent_path());
    ASSERT_TRUE(zovhost::WritePng(path, drawn, error)) << error;
  }
  zovhost::Image stored;
  ASSERT_TRUE(zovhost::ReadImage(path, stored, error)) << error;
  ASSERT_EQ(drawn.width, stored.width);
  ASSERT_EQ(drawn.height, stored.height);
  const Comparison comparison = Compare(drawn, stored);
  EXPECT_LE(comparison.off, mostPixelsOff);
  EXPECT_LE(comparison.gross, mostPixelsGross);
  if (IsSimilar(comparison)) return;
  zovhost::WritePng(folder + "-" + name + "-drawn.png", drawn, error);
  zovhost::WritePng(folder + "-" + name + "-differences.png", comparison.differences, error);
}

}  // namespace zovtest
