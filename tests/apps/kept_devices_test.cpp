// What is kept of six-axis devices, and what is made of texts that are not as it was left.
#include "settings/kept_devices.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "settings/device_settings.h"

namespace {

using Json = nlohmann::ordered_json;
using zovhost::SixAxisSettings;
using zovview::DeviceSetting;
using zovview::KeptDevices;

KeptDevices MakeKept() {
  KeptDevices kept;
  for (const char* const name : {"mode", "speed", "upright"}) {
    const DeviceSetting* const setting = zovview::FindDeviceSetting(name);
    kept.values.push_back({setting, setting->least});
  }
  kept.sources = {{"first", SixAxisSettings::ForDevice()}, {"second", SixAxisSettings()}};
  return kept;
}

TEST(KeptDevicesTest, are_read_as_they_were_kept) {
  KeptDevices kept = MakeKept();
  kept.values[0].value = 2.0;
  kept.values[1].value = 0.1 / 3.0;
  SixAxisSettings& settings = kept.sources[1].settings;
  settings.axes[2] = {5, true, 0.7};
  settings.axes[3].to = SixAxisSettings::NOWHERE;
  settings.locked[4] = true;
  settings.deadZone = 12.5;
  settings.commands[63] = 21;
  settings.commands[0] = 0;
  KeptDevices read = MakeKept();
  ASSERT_TRUE(read.Take(Json::parse(kept.Format().dump())));
  for (std::size_t i = 0; i < kept.values.size(); ++i)
    EXPECT_EQ(read.values[i].value, kept.values[i].value) << i;
  EXPECT_EQ(read.sources[0].settings, kept.sources[0].settings);
  EXPECT_EQ(read.sources[1].settings, settings);
}

TEST(KeptDevicesTest, what_is_missing_and_what_is_unknown_does_no_harm) {
  KeptDevices read = MakeKept();
  ASSERT_TRUE(
      read.Take(Json::parse(R"({"mode": 1, "colour": "red", "sources": {"third": 5, "first": {}}})")));
  EXPECT_EQ(read.values[0].value, 1.0);
  EXPECT_EQ(read.values[1].value, MakeKept().values[1].value);
  EXPECT_EQ(read.sources[0].settings, MakeKept().sources[0].settings);
}

TEST(KeptDevicesTest, buttons_that_are_not_there_do_nothing) {
  KeptDevices read = MakeKept();
  ASSERT_NE(read.sources[0].settings.commands[0], SixAxisSettings::NOTHING);
  ASSERT_TRUE(read.Take(Json::parse(R"({"sources": {"first": {"buttons": {"7": 15}}}})")));
  EXPECT_EQ(read.sources[0].settings.commands[0], SixAxisSettings::NOTHING);
  EXPECT_EQ(read.sources[0].settings.commands[7], 15);
}

class BrokenDevices : public testing::TestWithParam<const char*> {};

TEST_P(BrokenDevices, are_refused) {
  KeptDevices read = MakeKept();
  EXPECT_FALSE(read.Take(Json::parse(GetParam()))) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    each, BrokenDevices,
    testing::Values(
        "[]", "7", R"({"mode": 4})", R"({"mode": 0.5})", R"({"mode": "walk"})", R"({"speed": 0})",
        R"({"speed": 1})", R"({"upright": true})", R"({"sources": []})", R"({"sources": {"first": 1}})",
        R"({"sources": {"first": {"axes": []}}})", R"({"sources": {"first": {"axes": [1, 2, 3, 4, 5, 6]}}})",
        R"({"sources": {"first": {"axes": [{"to": 6}, {}, {}, {}, {}, {}]}}})",
        R"({"sources": {"first": {"axes": [{"to": 1.5}, {}, {}, {}, {}, {}]}}})",
        R"({"sources": {"first": {"axes": [{"scale": -1}, {}, {}, {}, {}, {}]}}})",
        R"({"sources": {"first": {"axes": [{"inverted": 1}, {}, {}, {}, {}, {}]}}})",
        R"({"sources": {"first": {"locked": [true]}}})", R"({"sources": {"first": {"deadZone": 1e9}}})",
        R"({"sources": {"first": {"deadZone": "x"}}})", R"({"sources": {"first": {"buttons": [1]}}})",
        R"({"sources": {"first": {"buttons": {"64": 1}}}})",
        R"({"sources": {"first": {"buttons": {"-1": 1}}}})",
        R"({"sources": {"first": {"buttons": {"1x": 1}}}})",
        R"({"sources": {"first": {"buttons": {"1": 22}}}})",
        R"({"sources": {"first": {"buttons": {"1": "fit"}}}})"));

}  // namespace
