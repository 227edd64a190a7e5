// The scale that a desktop tells by the resources of its X display.
#include "src/window/desktop_scale.h"

#include <gtest/gtest.h>

namespace {

using zovhost::ParseDesktopScale;

TEST(DesktopScale, is_the_dots_of_an_inch_to_the_nearest_quarter) {
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t96\n"), 1.0);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t120\n"), 1.25);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t144\n"), 1.5);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi: 192"), 2.0);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t288\r\n"), 3.0);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t140.5\n"), 1.5);
}

TEST(DesktopScale, is_found_among_other_resources) {
  EXPECT_EQ(ParseDesktopScale("*customization:\t-color\nXft.antialias:\t1\nXft.dpi:\t192\nXft.hinting:\t1\n"),
            2.0);
}

TEST(DesktopScale, stays_within_one_and_four) {
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t48\n"), 1.0);
  EXPECT_EQ(ParseDesktopScale("Xft.dpi:\t9000\n"), 4.0);
}

TEST(DesktopScale, is_none_where_nothing_usable_stands) {
  for (const char* const resources :
       {"", "\n\n", "Xft.dpi:", "Xft.dpi:\t\n", "Xft.dpi:\tmany\n", "Xft.dpi:\t0\n", "Xft.dpi:\t-96\n",
        "Xft.dpi:\tnan\n", "Xft.dpi:\tinf\n", "Xft.dpi:\t1e30\n", "Xft.dpi:\t96 dots\n",
        "Xft.hinting:\t1\n"}) {
    EXPECT_EQ(ParseDesktopScale(resources), 0.0) << resources;
  }
}

}  // namespace
