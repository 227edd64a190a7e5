#pragma once

namespace Korvane {

/// The settings of the orientation cube. The host writes the fields as it likes, at any time between two
/// frames.
///
/// Lengths of the cube's own geometry count in the cube's standard space, in which the eye stands
/// `view_scale` from the centre. Lengths of the overlay count in screen sizes: 1 is the cube's size in
/// pixels. Colours are red, green, blue, 0 to 1; opacities 0 to 1.
struct OrientorParameters {
  /// The corner of the viewport.
  enum Location : int {
    LOCATION_TOP_RIGHT = 0,
    LOCATION_BOTTOM_RIGHT = 1,
    LOCATION_TOP_LEFT = 2,
    LOCATION_BOTTOM_LEFT = 3,
  };
  /// Automatic goes by the viewport, between tiny and normal.
  enum Size : int { SIZE_AUTOMATIC = 0, SIZE_TINY = 1, SIZE_SMALL = 2, SIZE_NORMAL = 3, SIZE_LARGE = 4 };

  Size size = SIZE_AUTOMATIC;
  double size_to_view_x = 0.5;  ///< Kept for the host; the cube does not read these two.
  double size_to_view_y = 0.5;
  Location screen_location = LOCATION_TOP_RIGHT;
  float min_opacity = 0.5F;  ///< With the mouse far away.
  bool visible = true;
  bool disabled = false;           ///< Drawn, but does not react.
  bool autohide_ucs_menu = false;  ///< Kept for the host.
  int large_screen_size = 170;     ///< The four sizes are in pixels.
  int normal_screen_size = 120;
  int small_screen_size = 70;
  int tiny_screen_size = 35;
  float auto_screen_size = 0.17F;  ///< Of the smaller side of the viewport.

  bool draw_overlay = true;  ///< The screen-space controls.
  bool draw_home_button = true;
  bool draw_ucs_menu = false;
  bool draw_labels = true;         ///< The texts of the faces.
  bool draw_selected_face = true;  ///< Highlight of the part under the mouse.
  bool draw_closest_face = true;   ///< Highlight of the part that the view looks onto.
  bool draw_compass = false;
  bool select_parts = true;        ///< Without it the mouse hits no part of the cube or the compass.
  bool select_faces_only = false;  ///< Edges and corners are not hit.
  bool overlay_always_on = false;  ///< Draw the overlay with the mouse far away, too.

  bool drag_enable = true;
  bool drag_snap = true;         ///< Becomes `do_snap_orbit` during a drag of the cube.
  bool drag_snap_smooth = true;  ///< Kept for the host.
  int drag_dead_zone = 4;        ///< Pixels, on each axis.

  float compass_select_radius = 1.03F;  ///< Scale of the ring when hit testing.
  float face_size = 0.06F;              ///< Half the size of a face panel.
  float edge_size = 0.035F;             ///< Width of the rim of edges and corners.
  float gap_size = 0.0F;                ///< Between the parts.
  float arrow_size = 0.025F;
  float arrow_offset = 0.035F;  ///< Of a face arrow from the cube.
  float shadow_size = 0.0625F;  ///< Beyond the cube.
  float shadow_offset = 0.0175F;
  float compass_size = 0.2F;    ///< Of the ring beyond the cube.
  float compass_offset = 0.1F;  ///< Of the letters beyond the cube.
  float compass_angle = 0.0F;   ///< Degrees that the compass is turned.

  float overlay_arrow_size = 0.5F;
  float overlay_home_size = 0.14F;
  float overlay_home_offset_x = 0.77F;
  float overlay_home_offset_y = 0.125F;
  float overlay_home_offset_compass_x = 1.2F;
  float overlay_home_offset_compass_y = 0.125F;
  float overlay_lock_size = 0.14F;
  float overlay_home_offset_lock_x = 0.91F;  ///< The home button when the lock shows.
  float overlay_home_offset_lock_y = 0.125F;
  float overlay_home_offset_compass_lock_x = 1.34F;
  float overlay_home_offset_compass_lock_y = 0.125F;
  float overlay_context_size = 0.12F;
  float overlay_context_offset_x = 0.125F;
  float overlay_context_offset_y = 0.77F;
  float overlay_context_offset_compass_x = 0.125F;
  float overlay_context_offset_compass_y = 1.2F;
  float overlay_ucs_offset_x = 0.45F;
  float overlay_ucs_offset_y = 0.86F;
  float overlay_ucs_offset_compass_x = 0.675F;
  float overlay_ucs_offset_compass_y = 1.4F;

  float colour_face[3] = {0.89F, 0.89F, 0.89F};
  float colour_face_selected[3] = {0.71F, 0.84F, 0.95F};
  float colour_face_closest[3] = {0.74F, 0.77F, 0.81F};
  float colour_edge[3] = {0.44F, 0.44F, 0.44F};
  float colour_edge_selected[3] = {0.0F, 0.38F, 0.75F};
  float colour_edge_closest[3] = {0.71F, 0.71F, 0.71F};
  float colour_text[3] = {0.14F, 0.17F, 0.21F};
  // 225 of 255; 129, 191 and 254 of 255, the last rounded up by one unit of a float.
  float colour_compass_text[3] = {0.88235295F, 0.88235295F, 0.88235295F};
  float colour_compass_text_selected[3] = {0.5058824F, 0.7490196F, 0.9960785F};

  float opacity_shadow = 0.5F;
  float opacity_compass = 1.0F;
  float opacity_text = 0.75F;

  float transition_duration = 0.5F;         ///< Seconds.
  float drag_multiplier = 10.0F;            ///< Becomes `orbit_multiplier` during a drag of the cube.
  bool zoom_to_fit_scene = true;            ///< A click fits the scene into the view.
  bool preserve_scene_up = true;            ///< A drag, and a click, keep the scene upright.
  bool preserve_scene_up_on_click = false;  ///< The same for a click alone, with the next field.
  bool use_preserve_scene_up_on_click = false;
  bool orient_to_ucs = true;

  float view_fov = 15.0F;        ///< Degrees, half angle of the cube's own camera.
  float view_scale = 0.9F;       ///< Distance of the cube's eye from its centre.
  float view_offset_x = -0.05F;  ///< In screen sizes; below 0 toward the corner.
  float view_offset_y = -0.05F;
  float view_scale_compass = 1.5F;  ///< The pass is larger by this with the compass.
  int screen_offset_x = 0;          ///< Pixels, right and up.
  int screen_offset_y = 0;
  float opacity_step = 0.01F;  ///< The smallest change of opacity that is redrawn.
};

}  // namespace Korvane
