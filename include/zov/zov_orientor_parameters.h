#pragma once

#include "korvane/orientor_parameters.h"
#include "zov/qmcore.h"
#include "zov/zov_enums.h"

/// The settings of the orientation cube. A window on those that a zovOrientor holds, valid as long as that;
/// the host reads and writes them as it likes, at any time between two frames.
///
/// Lengths of the cube's own geometry count in the cube's standard space, in which the eye stands
/// `view_scale` from the centre. Lengths of the overlay count in screen sizes: 1 is the cube's size in
/// pixels. Opacities are 0 to 1; colours are red, green, blue, 0 to 1, into and from an array of three, null
/// being ignored. A double is kept as a float where the library keeps a float, and reads so.
class zovOrientorParameters {
 public:
  /// Of settings of the library's own; borrowed. For a host that works with both layers.
  explicit zovOrientorParameters(Korvane::OrientorParameters& settings) : record(&settings) {}
  zovOrientorParameters(const zovOrientorParameters&) = delete;
  zovOrientorParameters& operator=(const zovOrientorParameters&) = delete;
  ~zovOrientorParameters() = default;

  zovOrientorSize size() const { return static_cast<zovOrientorSize>(record->size); }
  void set_size(zovOrientorSize value) {
    record->size = static_cast<Korvane::OrientorParameters::Size>(value);
  }
  /// Kept for the host; the cube does not read these two.
  double size_to_view_x() const { return record->size_to_view_x; }
  void set_size_to_view_x(double value) { record->size_to_view_x = value; }
  double size_to_view_y() const { return record->size_to_view_y; }
  void set_size_to_view_y(double value) { record->size_to_view_y = value; }
  zovOrientorLocation screen_location() const {
    return static_cast<zovOrientorLocation>(record->screen_location);
  }
  void set_screen_location(zovOrientorLocation value) {
    record->screen_location = static_cast<Korvane::OrientorParameters::Location>(value);
  }
  /// With the mouse far away.
  double min_opacity() const { return double{record->min_opacity}; }
  void set_min_opacity(double value) { record->min_opacity = static_cast<float>(value); }
  bool visible() const { return record->visible; }
  void set_visible(bool value) { record->visible = value; }
  /// Drawn, but does not react.
  bool disabled() const { return record->disabled; }
  void set_disabled(bool value) { record->disabled = value; }
  /// Kept for the host.
  bool autohide_ucs_menu() const { return record->autohide_ucs_menu; }
  void set_autohide_ucs_menu(bool value) { record->autohide_ucs_menu = value; }
  /// The four sizes are in pixels.
  int large_screen_size() const { return record->large_screen_size; }
  void set_large_screen_size(int value) { record->large_screen_size = value; }
  int normal_screen_size() const { return record->normal_screen_size; }
  void set_normal_screen_size(int value) { record->normal_screen_size = value; }
  int small_screen_size() const { return record->small_screen_size; }
  void set_small_screen_size(int value) { record->small_screen_size = value; }
  int tiny_screen_size() const { return record->tiny_screen_size; }
  void set_tiny_screen_size(int value) { record->tiny_screen_size = value; }
  /// Of the smaller side of the viewport.
  double auto_screen_size() const { return double{record->auto_screen_size}; }
  void set_auto_screen_size(double value) { record->auto_screen_size = static_cast<float>(value); }

  /// The screen-space controls.
  bool draw_overlay() const { return record->draw_overlay; }
  void set_draw_overlay(bool value) { record->draw_overlay = value; }
  bool draw_home_button() const { return record->draw_home_button; }
  void set_draw_home_button(bool value) { record->draw_home_button = value; }
  bool draw_ucs_menu() const { return record->draw_ucs_menu; }
  void set_draw_ucs_menu(bool value) { record->draw_ucs_menu = value; }
  /// The texts of the faces.
  bool draw_labels() const { return record->draw_labels; }
  void set_draw_labels(bool value) { record->draw_labels = value; }
  /// Highlight of the part under the mouse.
  bool draw_selected_face() const { return record->draw_selected_face; }
  void set_draw_selected_face(bool value) { record->draw_selected_face = value; }
  /// Highlight of the part that the view looks onto.
  bool draw_closest_face() const { return record->draw_closest_face; }
  void set_draw_closest_face(bool value) { record->draw_closest_face = value; }
  bool draw_compass() const { return record->draw_compass; }
  void set_draw_compass(bool value) { record->draw_compass = value; }
  /// Without it the mouse hits no part of the cube or the compass.
  bool select_parts() const { return record->select_parts; }
  void set_select_parts(bool value) { record->select_parts = value; }
  /// Edges and corners are not hit.
  bool select_faces_only() const { return record->select_faces_only; }
  void set_select_faces_only(bool value) { record->select_faces_only = value; }
  /// Draw the overlay with the mouse far away, too.
  bool overlay_always_on() const { return record->overlay_always_on; }
  void set_overlay_always_on(bool value) { record->overlay_always_on = value; }

  bool drag_enable() const { return record->drag_enable; }
  void set_drag_enable(bool value) { record->drag_enable = value; }
  /// Becomes `do_snap_orbit` during a drag of the cube.
  bool drag_snap() const { return record->drag_snap; }
  void set_drag_snap(bool value) { record->drag_snap = value; }
  /// Kept for the host.
  bool drag_snap_smooth() const { return record->drag_snap_smooth; }
  void set_drag_snap_smooth(bool value) { record->drag_snap_smooth = value; }
  /// Pixels, on each axis.
  int drag_dead_zone() const { return record->drag_dead_zone; }
  void set_drag_dead_zone(int value) { record->drag_dead_zone = value; }

  /// Scale of the ring when hit testing.
  double compass_select_radius() const { return double{record->compass_select_radius}; }
  void set_compass_select_radius(double value) { record->compass_select_radius = static_cast<float>(value); }
  /// Half the size of a face panel.
  double face_size() const { return double{record->face_size}; }
  void set_face_size(double value) { record->face_size = static_cast<float>(value); }
  /// Width of the rim of edges and corners.
  double edge_size() const { return double{record->edge_size}; }
  void set_edge_size(double value) { record->edge_size = static_cast<float>(value); }
  /// Between the parts.
  double gap_size() const { return double{record->gap_size}; }
  void set_gap_size(double value) { record->gap_size = static_cast<float>(value); }
  double arrow_size() const { return double{record->arrow_size}; }
  void set_arrow_size(double value) { record->arrow_size = static_cast<float>(value); }
  /// Of a face arrow from the cube.
  double arrow_offset() const { return double{record->arrow_offset}; }
  void set_arrow_offset(double value) { record->arrow_offset = static_cast<float>(value); }
  /// Beyond the cube.
  double shadow_size() const { return double{record->shadow_size}; }
  void set_shadow_size(double value) { record->shadow_size = static_cast<float>(value); }
  double shadow_offset() const { return double{record->shadow_offset}; }
  void set_shadow_offset(double value) { record->shadow_offset = static_cast<float>(value); }
  /// Of the ring beyond the cube.
  double compass_size() const { return double{record->compass_size}; }
  void set_compass_size(double value) { record->compass_size = static_cast<float>(value); }
  /// Of the letters beyond the cube.
  double compass_offset() const { return double{record->compass_offset}; }
  void set_compass_offset(double value) { record->compass_offset = static_cast<float>(value); }
  /// Degrees that the compass is turned.
  qmAngle compass_angle() const { return {double{record->compass_angle}, qmAngleDegrees}; }
  void set_compass_angle(const qmAngle& value) {
    record->compass_angle = static_cast<float>(value.angle(qmAngleDegrees));
  }

  double overlay_arrow_size() const { return double{record->overlay_arrow_size}; }
  void set_overlay_arrow_size(double value) { record->overlay_arrow_size = static_cast<float>(value); }
  double overlay_home_size() const { return double{record->overlay_home_size}; }
  void set_overlay_home_size(double value) { record->overlay_home_size = static_cast<float>(value); }
  double overlay_home_offset_x() const { return double{record->overlay_home_offset_x}; }
  void set_overlay_home_offset_x(double value) { record->overlay_home_offset_x = static_cast<float>(value); }
  double overlay_home_offset_y() const { return double{record->overlay_home_offset_y}; }
  void set_overlay_home_offset_y(double value) { record->overlay_home_offset_y = static_cast<float>(value); }
  double overlay_home_offset_compass_x() const { return double{record->overlay_home_offset_compass_x}; }
  void set_overlay_home_offset_compass_x(double value) {
    record->overlay_home_offset_compass_x = static_cast<float>(value);
  }
  double overlay_home_offset_compass_y() const { return double{record->overlay_home_offset_compass_y}; }
  void set_overlay_home_offset_compass_y(double value) {
    record->overlay_home_offset_compass_y = static_cast<float>(value);
  }
  double overlay_lock_size() const { return double{record->overlay_lock_size}; }
  void set_overlay_lock_size(double value) { record->overlay_lock_size = static_cast<float>(value); }
  /// The home button when the lock shows.
  double overlay_home_offset_lock_x() const { return double{record->overlay_home_offset_lock_x}; }
  void set_overlay_home_offset_lock_x(double value) {
    record->overlay_home_offset_lock_x = static_cast<float>(value);
  }
  double overlay_home_offset_lock_y() const { return double{record->overlay_home_offset_lock_y}; }
  void set_overlay_home_offset_lock_y(double value) {
    record->overlay_home_offset_lock_y = static_cast<float>(value);
  }
  double overlay_home_offset_compass_lock_x() const {
    return double{record->overlay_home_offset_compass_lock_x};
  }
  void set_overlay_home_offset_compass_lock_x(double value) {
    record->overlay_home_offset_compass_lock_x = static_cast<float>(value);
  }
  double overlay_home_offset_compass_lock_y() const {
    return double{record->overlay_home_offset_compass_lock_y};
  }
  void set_overlay_home_offset_compass_lock_y(double value) {
    record->overlay_home_offset_compass_lock_y = static_cast<float>(value);
  }
  double overlay_context_size() const { return double{record->overlay_context_size}; }
  void set_overlay_context_size(double value) { record->overlay_context_size = static_cast<float>(value); }
  double overlay_context_offset_x() const { return double{record->overlay_context_offset_x}; }
  void set_overlay_context_offset_x(double value) {
    record->overlay_context_offset_x = static_cast<float>(value);
  }
  double overlay_context_offset_y() const { return double{record->overlay_context_offset_y}; }
  void set_overlay_context_offset_y(double value) {
    record->overlay_context_offset_y = static_cast<float>(value);
  }
  double overlay_context_offset_compass_x() const { return double{record->overlay_context_offset_compass_x}; }
  void set_overlay_context_offset_compass_x(double value) {
    record->overlay_context_offset_compass_x = static_cast<float>(value);
  }
  double overlay_context_offset_compass_y() const { return double{record->overlay_context_offset_compass_y}; }
  void set_overlay_context_offset_compass_y(double value) {
    record->overlay_context_offset_compass_y = static_cast<float>(value);
  }
  double overlay_ucs_offset_x() const { return double{record->overlay_ucs_offset_x}; }
  void set_overlay_ucs_offset_x(double value) { record->overlay_ucs_offset_x = static_cast<float>(value); }
  double overlay_ucs_offset_y() const { return double{record->overlay_ucs_offset_y}; }
  void set_overlay_ucs_offset_y(double value) { record->overlay_ucs_offset_y = static_cast<float>(value); }
  double overlay_ucs_offset_compass_x() const { return double{record->overlay_ucs_offset_compass_x}; }
  void set_overlay_ucs_offset_compass_x(double value) {
    record->overlay_ucs_offset_compass_x = static_cast<float>(value);
  }
  double overlay_ucs_offset_compass_y() const { return double{record->overlay_ucs_offset_compass_y}; }
  void set_overlay_ucs_offset_compass_y(double value) {
    record->overlay_ucs_offset_compass_y = static_cast<float>(value);
  }

  void colour_face(double rgb[3]) const { take(record->colour_face, rgb); }
  void set_colour_face(const double rgb[3]) { put(rgb, record->colour_face); }
  void colour_face_selected(double rgb[3]) const { take(record->colour_face_selected, rgb); }
  void set_colour_face_selected(const double rgb[3]) { put(rgb, record->colour_face_selected); }
  void colour_face_closest(double rgb[3]) const { take(record->colour_face_closest, rgb); }
  void set_colour_face_closest(const double rgb[3]) { put(rgb, record->colour_face_closest); }
  void colour_edge(double rgb[3]) const { take(record->colour_edge, rgb); }
  void set_colour_edge(const double rgb[3]) { put(rgb, record->colour_edge); }
  void colour_edge_selected(double rgb[3]) const { take(record->colour_edge_selected, rgb); }
  void set_colour_edge_selected(const double rgb[3]) { put(rgb, record->colour_edge_selected); }
  void colour_edge_closest(double rgb[3]) const { take(record->colour_edge_closest, rgb); }
  void set_colour_edge_closest(const double rgb[3]) { put(rgb, record->colour_edge_closest); }
  void colour_text(double rgb[3]) const { take(record->colour_text, rgb); }
  void set_colour_text(const double rgb[3]) { put(rgb, record->colour_text); }
  void colour_compass_text(double rgb[3]) const { take(record->colour_compass_text, rgb); }
  void set_colour_compass_text(const double rgb[3]) { put(rgb, record->colour_compass_text); }
  void colour_compass_text_selected(double rgb[3]) const { take(record->colour_compass_text_selected, rgb); }
  void set_colour_compass_text_selected(const double rgb[3]) {
    put(rgb, record->colour_compass_text_selected);
  }

  double opacity_shadow() const { return double{record->opacity_shadow}; }
  void set_opacity_shadow(double value) { record->opacity_shadow = static_cast<float>(value); }
  double opacity_compass() const { return double{record->opacity_compass}; }
  void set_opacity_compass(double value) { record->opacity_compass = static_cast<float>(value); }
  double opacity_text() const { return double{record->opacity_text}; }
  void set_opacity_text(double value) { record->opacity_text = static_cast<float>(value); }

  /// Seconds.
  double transition_duration() const { return double{record->transition_duration}; }
  void set_transition_duration(double value) { record->transition_duration = static_cast<float>(value); }
  /// Becomes `orbit_multiplier` during a drag of the cube.
  double drag_multiplier() const { return double{record->drag_multiplier}; }
  void set_drag_multiplier(double value) { record->drag_multiplier = static_cast<float>(value); }
  /// A click fits the scene into the view.
  bool zoom_to_fit_scene() const { return record->zoom_to_fit_scene; }
  void set_zoom_to_fit_scene(bool value) { record->zoom_to_fit_scene = value; }
  /// A drag, and a click, keep the scene upright.
  bool preserve_scene_up() const { return record->preserve_scene_up; }
  void set_preserve_scene_up(bool value) { record->preserve_scene_up = value; }
  /// The same for a click alone, with the next field.
  bool preserve_scene_up_on_click() const { return record->preserve_scene_up_on_click; }
  void set_preserve_scene_up_on_click(bool value) { record->preserve_scene_up_on_click = value; }
  bool use_preserve_scene_up_on_click() const { return record->use_preserve_scene_up_on_click; }
  void set_use_preserve_scene_up_on_click(bool value) { record->use_preserve_scene_up_on_click = value; }
  bool orient_to_ucs() const { return record->orient_to_ucs; }
  void set_orient_to_ucs(bool value) { record->orient_to_ucs = value; }

  /// Degrees, half angle of the cube's own camera.
  qmAngle view_fov() const { return {double{record->view_fov}, qmAngleDegrees}; }
  void set_view_fov(const qmAngle& value) {
    record->view_fov = static_cast<float>(value.angle(qmAngleDegrees));
  }
  /// Distance of the cube's eye from its centre.
  double view_scale() const { return double{record->view_scale}; }
  void set_view_scale(double value) { record->view_scale = static_cast<float>(value); }
  /// In screen sizes; below 0 toward the corner.
  double view_offset_x() const { return double{record->view_offset_x}; }
  void set_view_offset_x(double value) { record->view_offset_x = static_cast<float>(value); }
  double view_offset_y() const { return double{record->view_offset_y}; }
  void set_view_offset_y(double value) { record->view_offset_y = static_cast<float>(value); }
  /// The pass is larger by this with the compass.
  double view_scale_compass() const { return double{record->view_scale_compass}; }
  void set_view_scale_compass(double value) { record->view_scale_compass = static_cast<float>(value); }
  /// Pixels, right and up.
  int screen_offset_x() const { return record->screen_offset_x; }
  void set_screen_offset_x(int value) { record->screen_offset_x = value; }
  int screen_offset_y() const { return record->screen_offset_y; }
  void set_screen_offset_y(int value) { record->screen_offset_y = value; }
  /// The smallest change of opacity that is redrawn.
  double opacity_step() const { return double{record->opacity_step}; }
  void set_opacity_step(double value) { record->opacity_step = static_cast<float>(value); }

  const Korvane::OrientorParameters& korvane() const { return *record; }

 private:
  static void take(const float (&within)[3], double rgb[3]) {
    for (int i = 0; rgb != nullptr && i < 3; ++i) rgb[i] = double{within[i]};
  }
  static void put(const double rgb[3], float (&within)[3]) {
    for (int i = 0; rgb != nullptr && i < 3; ++i) within[i] = static_cast<float>(rgb[i]);
  }

  Korvane::OrientorParameters* record;
};
