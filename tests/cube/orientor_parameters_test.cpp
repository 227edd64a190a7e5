#include "korvane/orientor_parameters.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace Korvane;

const OrientorParameters DEFAULTS;

TEST(OrientorParameters, number_the_corners_and_the_sizes) {
  EXPECT_EQ(OrientorParameters::LOCATION_TOP_RIGHT, 0);
  EXPECT_EQ(OrientorParameters::LOCATION_BOTTOM_RIGHT, 1);
  EXPECT_EQ(OrientorParameters::LOCATION_TOP_LEFT, 2);
  EXPECT_EQ(OrientorParameters::LOCATION_BOTTOM_LEFT, 3);
  EXPECT_EQ(OrientorParameters::SIZE_AUTOMATIC, 0);
  EXPECT_EQ(OrientorParameters::SIZE_TINY, 1);
  EXPECT_EQ(OrientorParameters::SIZE_SMALL, 2);
  EXPECT_EQ(OrientorParameters::SIZE_NORMAL, 3);
  EXPECT_EQ(OrientorParameters::SIZE_LARGE, 4);
}

TEST(OrientorParameters, begin_automatic_in_the_top_right_corner) {
  EXPECT_EQ(int{DEFAULTS.size}, 0);
  EXPECT_EQ(int{DEFAULTS.screen_location}, 0);
}

TEST(OrientorParameters, have_their_defaults_for_the_switches) {
  struct Row {
    bool OrientorParameters::*field;
    bool value;
  };
  const Row rows[] = {
      {&OrientorParameters::visible, true},
      {&OrientorParameters::disabled, false},
      {&OrientorParameters::autohide_ucs_menu, false},
      {&OrientorParameters::draw_overlay, true},
      {&OrientorParameters::draw_home_button, true},
      {&OrientorParameters::draw_ucs_menu, false},
      {&OrientorParameters::draw_labels, true},
      {&OrientorParameters::draw_selected_face, true},
      {&OrientorParameters::draw_closest_face, true},
      {&OrientorParameters::draw_compass, false},
      {&OrientorParameters::select_parts, true},
      {&OrientorParameters::select_faces_only, false},
      {&OrientorParameters::overlay_always_on, false},
      {&OrientorParameters::drag_enable, true},
      {&OrientorParameters::drag_snap, true},
      {&OrientorParameters::drag_snap_smooth, true},
      {&OrientorParameters::zoom_to_fit_scene, true},
      {&OrientorParameters::preserve_scene_up, true},
      {&OrientorParameters::preserve_scene_up_on_click, false},
      {&OrientorParameters::use_preserve_scene_up_on_click, false},
      {&OrientorParameters::orient_to_ucs, true},
  };
  int row = 0;
  for (const Row& each : rows) EXPECT_EQ(DEFAULTS.*each.field, each.value) << row++;
}

TEST(OrientorParameters, have_their_defaults_for_the_pixels) {
  struct Row {
    int OrientorParameters::*field;
    int value;
  };
  const Row rows[] = {
      {&OrientorParameters::large_screen_size, 170}, {&OrientorParameters::normal_screen_size, 120},
      {&OrientorParameters::small_screen_size, 70},  {&OrientorParameters::tiny_screen_size, 35},
      {&OrientorParameters::drag_dead_zone, 4},      {&OrientorParameters::screen_offset_x, 0},
      {&OrientorParameters::screen_offset_y, 0},
  };
  int row = 0;
  for (const Row& each : rows) EXPECT_EQ(DEFAULTS.*each.field, each.value) << row++;
}

TEST(OrientorParameters, have_their_defaults_for_the_lengths_opacities_and_times) {
  struct Row {
    float OrientorParameters::*field;
    float value;
  };
  const Row rows[] = {
      {&OrientorParameters::min_opacity, 0.5F},
      {&OrientorParameters::auto_screen_size, 0.17F},
      {&OrientorParameters::compass_select_radius, 1.03F},
      {&OrientorParameters::face_size, 0.06F},
      {&OrientorParameters::edge_size, 0.035F},
      {&OrientorParameters::gap_size, 0.0F},
      {&OrientorParameters::arrow_size, 0.025F},
      {&OrientorParameters::arrow_offset, 0.035F},
      {&OrientorParameters::shadow_size, 0.0625F},
      {&OrientorParameters::shadow_offset, 0.0175F},
      {&OrientorParameters::compass_size, 0.2F},
      {&OrientorParameters::compass_offset, 0.1F},
      {&OrientorParameters::compass_angle, 0.0F},
      {&OrientorParameters::overlay_arrow_size, 0.5F},
      {&OrientorParameters::overlay_home_size, 0.14F},
      {&OrientorParameters::overlay_home_offset_x, 0.77F},
      {&OrientorParameters::overlay_home_offset_y, 0.125F},
      {&OrientorParameters::overlay_home_offset_compass_x, 1.2F},
      {&OrientorParameters::overlay_home_offset_compass_y, 0.125F},
      {&OrientorParameters::overlay_lock_size, 0.14F},
      {&OrientorParameters::overlay_home_offset_lock_x, 0.91F},
      {&OrientorParameters::overlay_home_offset_lock_y, 0.125F},
      {&OrientorParameters::overlay_home_offset_compass_lock_x, 1.34F},
      {&OrientorParameters::overlay_home_offset_compass_lock_y, 0.125F},
      {&OrientorParameters::overlay_context_size, 0.12F},
      {&OrientorParameters::overlay_context_offset_x, 0.125F},
      {&OrientorParameters::overlay_context_offset_y, 0.77F},
      {&OrientorParameters::overlay_context_offset_compass_x, 0.125F},
      {&OrientorParameters::overlay_context_offset_compass_y, 1.2F},
      {&OrientorParameters::overlay_ucs_offset_x, 0.45F},
      {&OrientorParameters::overlay_ucs_offset_y, 0.86F},
      {&OrientorParameters::overlay_ucs_offset_compass_x, 0.675F},
      {&OrientorParameters::overlay_ucs_offset_compass_y, 1.4F},
      {&OrientorParameters::opacity_shadow, 0.5F},
      {&OrientorParameters::opacity_compass, 1.0F},
      {&OrientorParameters::opacity_text, 0.75F},
      {&OrientorParameters::transition_duration, 0.5F},
      {&OrientorParameters::drag_multiplier, 10.0F},
      {&OrientorParameters::view_fov, 15.0F},
      {&OrientorParameters::view_scale, 0.9F},
      {&OrientorParameters::view_offset_x, -0.05F},
      {&OrientorParameters::view_offset_y, -0.05F},
      {&OrientorParameters::view_scale_compass, 1.5F},
      {&OrientorParameters::opacity_step, 0.01F},
  };
  int row = 0;
  for (const Row& each : rows) EXPECT_EQ(DEFAULTS.*each.field, each.value) << row++;
}

TEST(OrientorParameters, have_their_defaults_for_the_colours) {
  struct Row {
    float (OrientorParameters::*field)[3];
    float value[3];
  };
  const Row rows[] = {
      {&OrientorParameters::colour_face, {0.89F, 0.89F, 0.89F}},
      {&OrientorParameters::colour_face_selected, {0.71F, 0.84F, 0.95F}},
      {&OrientorParameters::colour_face_closest, {0.74F, 0.77F, 0.81F}},
      {&OrientorParameters::colour_edge, {0.44F, 0.44F, 0.44F}},
      {&OrientorParameters::colour_edge_selected, {0.0F, 0.38F, 0.75F}},
      {&OrientorParameters::colour_edge_closest, {0.71F, 0.71F, 0.71F}},
      {&OrientorParameters::colour_text, {0.14F, 0.17F, 0.21F}},
      {&OrientorParameters::colour_compass_text, {0.88235295F, 0.88235295F, 0.88235295F}},
      {&OrientorParameters::colour_compass_text_selected, {0.5058824F, 0.7490196F, 0.9960785F}},
  };
  int row = 0;
  for (const Row& each : rows) {
    for (int i = 0; i < 3; ++i) EXPECT_EQ((DEFAULTS.*each.field)[i], each.value[i]) << row << ", " << i;
    ++row;
  }
}

TEST(OrientorParameters, keep_what_only_the_host_reads) {
  EXPECT_EQ(DEFAULTS.size_to_view_x, 0.5);
  EXPECT_EQ(DEFAULTS.size_to_view_y, 0.5);
  EXPECT_TRUE((std::is_same_v<decltype(DEFAULTS.size_to_view_x), double>));
  EXPECT_TRUE((std::is_same_v<decltype(DEFAULTS.size_to_view_y), double>));
}

// Hosts that fill the record by its layout rely on the order.
TEST(OrientorParameters, stand_in_their_order) {
  const auto at = [](const auto& field) { return reinterpret_cast<const char*>(&field); };
  const OrientorParameters& p = DEFAULTS;
  const char* const fields[] = {
      at(p.size),
      at(p.size_to_view_x),
      at(p.size_to_view_y),
      at(p.screen_location),
      at(p.min_opacity),
      at(p.visible),
      at(p.disabled),
      at(p.autohide_ucs_menu),
      at(p.large_screen_size),
      at(p.normal_screen_size),
      at(p.small_screen_size),
      at(p.tiny_screen_size),
      at(p.auto_screen_size),
      at(p.draw_overlay),
      at(p.draw_home_button),
      at(p.draw_ucs_menu),
      at(p.draw_labels),
      at(p.draw_selected_face),
      at(p.draw_closest_face),
      at(p.draw_compass),
      at(p.select_parts),
      at(p.select_faces_only),
      at(p.overlay_always_on),
      at(p.drag_enable),
      at(p.drag_snap),
      at(p.drag_snap_smooth),
      at(p.drag_dead_zone),
      at(p.compass_select_radius),
      at(p.face_size),
      at(p.edge_size),
      at(p.gap_size),
      at(p.arrow_size),
      at(p.arrow_offset),
      at(p.shadow_size),
      at(p.shadow_offset),
      at(p.compass_size),
      at(p.compass_offset),
      at(p.compass_angle),
      at(p.overlay_arrow_size),
      at(p.overlay_home_size),
      at(p.overlay_home_offset_x),
      at(p.overlay_home_offset_y),
      at(p.overlay_home_offset_compass_x),
      at(p.overlay_home_offset_compass_y),
      at(p.overlay_lock_size),
      at(p.overlay_home_offset_lock_x),
      at(p.overlay_home_offset_lock_y),
      at(p.overlay_home_offset_compass_lock_x),
      at(p.overlay_home_offset_compass_lock_y),
      at(p.overlay_context_size),
      at(p.overlay_context_offset_x),
      at(p.overlay_context_offset_y),
      at(p.overlay_context_offset_compass_x),
      at(p.overlay_context_offset_compass_y),
      at(p.overlay_ucs_offset_x),
      at(p.overlay_ucs_offset_y),
      at(p.overlay_ucs_offset_compass_x),
      at(p.overlay_ucs_offset_compass_y),
      at(p.colour_face),
      at(p.colour_face_selected),
      at(p.colour_face_closest),
      at(p.colour_edge),
      at(p.colour_edge_selected),
      at(p.colour_edge_closest),
      at(p.colour_text),
      at(p.colour_compass_text),
      at(p.colour_compass_text_selected),
      at(p.opacity_shadow),
      at(p.opacity_compass),
      at(p.opacity_text),
      at(p.transition_duration),
      at(p.drag_multiplier),
      at(p.zoom_to_fit_scene),
      at(p.preserve_scene_up),
      at(p.preserve_scene_up_on_click),
      at(p.use_preserve_scene_up_on_click),
      at(p.orient_to_ucs),
      at(p.view_fov),
      at(p.view_scale),
      at(p.view_offset_x),
      at(p.view_offset_y),
      at(p.view_scale_compass),
      at(p.screen_offset_x),
      at(p.screen_offset_y),
      at(p.opacity_step),
  };
  for (std::size_t i = 1; i < std::size(fields); ++i) EXPECT_LT(fields[i - 1], fields[i]) << i;
}

}  // namespace
