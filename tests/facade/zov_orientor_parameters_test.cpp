#include "zov/zov_orientor_parameters.h"

#include <gtest/gtest.h>

#include <limits>

#include "facade/field_walk.h"

namespace {

using Record = Korvane::OrientorParameters;
using Facade = zovOrientorParameters;

FieldRow<Facade, Record> ColourField(const char* name, float (Record::*member)[3],
                                     void (Facade::*get)(double*) const, void (Facade::*set)(const double*)) {
  const auto write = [=](Facade& facade, const Record& record) {
    const double colour[3] = {0.125, 0.25, 0.0625};
    (facade.*set)(colour);
    (facade.*set)(nullptr);
    double back[3] = {};
    (facade.*get)(back);
    (facade.*get)(nullptr);
    const auto& within = record.*member;
    bool same = true;
    for (int i = 0; i < 3; ++i) same = same && back[i] == colour[i] && double{within[i]} == colour[i];
    return same;
  };
  return {name, write, [=](const Record& a, const Record& b) { return SameValue(a.*member, b.*member); }};
}

#define FIELD(name) Field(#name, &Record::name, &Facade::name, &Facade::set_##name)
#define ANGLE(name) AngleField(#name, &Record::name, qmAngleDegrees, &Facade::name, &Facade::set_##name)
#define COLOUR(name) ColourField(#name, &Record::name, &Facade::name, &Facade::set_##name)

std::vector<FieldRow<Facade, Record>> Rows() {
  return {
      FIELD(size),
      FIELD(size_to_view_x),
      FIELD(size_to_view_y),
      FIELD(screen_location),
      FIELD(min_opacity),
      FIELD(visible),
      FIELD(disabled),
      FIELD(autohide_ucs_menu),
      FIELD(large_screen_size),
      FIELD(normal_screen_size),
      FIELD(small_screen_size),
      FIELD(tiny_screen_size),
      FIELD(auto_screen_size),
      FIELD(draw_overlay),
      FIELD(draw_home_button),
      FIELD(draw_ucs_menu),
      FIELD(draw_labels),
      FIELD(draw_selected_face),
      FIELD(draw_closest_face),
      FIELD(draw_compass),
      FIELD(select_parts),
      FIELD(select_faces_only),
      FIELD(overlay_always_on),
      FIELD(drag_enable),
      FIELD(drag_snap),
      FIELD(drag_snap_smooth),
      FIELD(drag_dead_zone),
      FIELD(compass_select_radius),
      FIELD(face_size),
      FIELD(edge_size),
      FIELD(gap_size),
      FIELD(arrow_size),
      FIELD(arrow_offset),
      FIELD(shadow_size),
      FIELD(shadow_offset),
      FIELD(compass_size),
      FIELD(compass_offset),
      ANGLE(compass_angle),
      FIELD(overlay_arrow_size),
      FIELD(overlay_home_size),
      FIELD(overlay_home_offset_x),
      FIELD(overlay_home_offset_y),
      FIELD(overlay_home_offset_compass_x),
      FIELD(overlay_home_offset_compass_y),
      FIELD(overlay_lock_size),
      FIELD(overlay_home_offset_lock_x),
      FIELD(overlay_home_offset_lock_y),
      FIELD(overlay_home_offset_compass_lock_x),
      FIELD(overlay_home_offset_compass_lock_y),
      FIELD(overlay_context_size),
      FIELD(overlay_context_offset_x),
      FIELD(overlay_context_offset_y),
      FIELD(overlay_context_offset_compass_x),
      FIELD(overlay_context_offset_compass_y),
      FIELD(overlay_ucs_offset_x),
      FIELD(overlay_ucs_offset_y),
      FIELD(overlay_ucs_offset_compass_x),
      FIELD(overlay_ucs_offset_compass_y),
      COLOUR(colour_face),
      COLOUR(colour_face_selected),
      COLOUR(colour_face_closest),
      COLOUR(colour_edge),
      COLOUR(colour_edge_selected),
      COLOUR(colour_edge_closest),
      COLOUR(colour_text),
      COLOUR(colour_compass_text),
      COLOUR(colour_compass_text_selected),
      FIELD(opacity_shadow),
      FIELD(opacity_compass),
      FIELD(opacity_text),
      FIELD(transition_duration),
      FIELD(drag_multiplier),
      FIELD(zoom_to_fit_scene),
      FIELD(preserve_scene_up),
      FIELD(preserve_scene_up_on_click),
      FIELD(use_preserve_scene_up_on_click),
      FIELD(orient_to_ucs),
      ANGLE(view_fov),
      FIELD(view_scale),
      FIELD(view_offset_x),
      FIELD(view_offset_y),
      FIELD(view_scale_compass),
      FIELD(screen_offset_x),
      FIELD(screen_offset_y),
      FIELD(opacity_step),
  };
}

#undef FIELD
#undef ANGLE
#undef COLOUR

TEST(ZovOrientorParameters, reach_every_field_of_the_record_and_no_other) {
  WalkFields(Rows(), FieldsBetween("orientor_parameters.h", "  Size size = SIZE_AUTOMATIC;", "\n};"),
             [](const auto& use) {
               Record record;
               Facade settings(record);
               use(settings, record);
             });
}

TEST(ZovOrientorParameters, read_a_float_as_the_double_that_it_is) {
  Record record;
  Facade settings(record);
  EXPECT_EQ(settings.min_opacity(), 0.5);
  EXPECT_EQ(settings.face_size(), static_cast<double>(0.06F));
  settings.set_face_size(0.1);
  EXPECT_EQ(settings.face_size(), static_cast<double>(0.1F));
  EXPECT_EQ(settings.view_fov().angle(qmAngleDegrees), 15.0);
  double colour[3] = {};
  settings.colour_text(colour);
  EXPECT_EQ(colour[2], static_cast<double>(0.21F));
}

}  // namespace
