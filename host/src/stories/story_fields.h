#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/shot_specification.h"

namespace zovhost {

// What the fields of a file are called, and where they belong. The names are those of the records.

constexpr const char* FORMAT_MARK = "zovtools story";
constexpr int FORMAT_VERSION = 1;

namespace field {
constexpr const char* FORMAT = "format";
constexpr const char* VERSION = "version";
constexpr const char* STORY = "story";
constexpr const char* NAME = "name";
constexpr const char* SEQUENCES = "sequences";
constexpr const char* SHOTS = "shots";
constexpr const char* CAMERA = "camera";
constexpr const char* LOOK_AT_CENTRE = "lookAtCenterOfInterest";
constexpr const char* RECORDED_ELEMENTS = "recordedElements";
constexpr const char* TIME = "time";
constexpr const char* PERSPECTIVE_WITH_ORTHO = "perspective_with_ortho";
}  // namespace field

// ---- a camera ----

struct CameraPoint {
  const char* name;
  Korvane::Vector3 Korvane::CameraParameters::*place;
};
constexpr CameraPoint CAMERA_POINTS[] = {
    {"eye", &Korvane::CameraParameters::eye},
    {"centre", &Korvane::CameraParameters::centre},
    {"up", &Korvane::CameraParameters::up},
};
constexpr CameraPoint CAMERA_PIVOT = {"pivot", &Korvane::CameraParameters::pivot};

struct CameraNumber {
  const char* name;
  double Korvane::CameraParameters::*place;
};
constexpr CameraNumber CAMERA_NUMBERS[] = {
    {"left_fov", &Korvane::CameraParameters::left_fov},
    {"right_fov", &Korvane::CameraParameters::right_fov},
    {"top_fov", &Korvane::CameraParameters::top_fov},
    {"bottom_fov", &Korvane::CameraParameters::bottom_fov},
    {"ortho_width", &Korvane::CameraParameters::ortho_width},
    {"ortho_height", &Korvane::CameraParameters::ortho_height},
    {"projection_transition", &Korvane::CameraParameters::projection_transition},
    {"page_scale", &Korvane::CameraParameters::page_scale},
    {"page_origin_x", &Korvane::CameraParameters::page_origin_x},
    {"page_origin_y", &Korvane::CameraParameters::page_origin_y},
};

// ---- one of several, by name ----

/// `names` are in the order of the numbers, from 0.
template <class Object>
struct Choice {
  const char* name;
  const char* const* names;
  int count;
  int (*get)(const Object&);
  void (*set)(Object&, int);
};

constexpr const char* PROJECTION_NAMES[] = {"perspective", "orthographic"};
constexpr Choice<Korvane::CameraParameters> PROJECTION = {
    "projection_type", PROJECTION_NAMES, 2,
    [](const Korvane::CameraParameters& camera) { return static_cast<int>(camera.projection_type); },
    [](Korvane::CameraParameters& camera, int number) {
      camera.projection_type = static_cast<Korvane::CameraParameters::ProjectionType>(number);
    }};

constexpr const char* SHOT_TYPE_NAMES[Korvane::ShotSpecification::SHOT_TYPE_COUNT] = {
    "track-left", "track-right", "zoom-in",  "zoom-out", "crane-up",     "crane-down",
    "look",       "orbit",       "pan-zoom", "still",    "recorded-walk"};
constexpr const char* POSITION_NAMES[] = {"start", "middle", "end"};
constexpr const char* TRANSITION_NAMES[] = {"fade-through-black", "fade-through-white", "cut"};

// ---- a shot ----

constexpr Choice<Korvane::ShotSpecification> SHOT_CHOICES[] = {
    {"shotType", SHOT_TYPE_NAMES, Korvane::ShotSpecification::SHOT_TYPE_COUNT,
     [](const Korvane::ShotSpecification& shot) -> int { return shot.GetShotType(); },
     [](Korvane::ShotSpecification& shot, int number) {
       shot.SetShotType(static_cast<Korvane::ShotSpecification::ShotType>(number));
     }},
    {"cameraPosition", POSITION_NAMES, 3,
     [](const Korvane::ShotSpecification& shot) -> int { return shot.GetCameraPosition(); },
     [](Korvane::ShotSpecification& shot, int number) {
       shot.SetCameraPosition(static_cast<Korvane::TargetCamPos>(number));
     }},
    {"transitionType", TRANSITION_NAMES, 3,
     [](const Korvane::ShotSpecification& shot) -> int { return shot.GetTransitionType(); },
     [](Korvane::ShotSpecification& shot, int number) {
       shot.SetTransitionType(static_cast<Korvane::ShotSpecification::TransitionType>(number));
     }},
};

struct ShotNumber {
  const char* name;
  double (Korvane::ShotSpecification::*get)() const;
  void (Korvane::ShotSpecification::*set)(double);
};
constexpr ShotNumber SHOT_NUMBERS[] = {
    {"transitionDuration", &Korvane::ShotSpecification::GetTransitionDuration,
     &Korvane::ShotSpecification::SetTransitionDuration},
    {"duration", &Korvane::ShotSpecification::GetDuration, &Korvane::ShotSpecification::SetDuration},
    {"inOutDistance", &Korvane::ShotSpecification::GetInOutDistance,
     &Korvane::ShotSpecification::SetInOutDistance},
    {"leftRightDistance", &Korvane::ShotSpecification::GetLeftRightDistance,
     &Korvane::ShotSpecification::SetLeftRightDistance},
    {"upDownDistance", &Korvane::ShotSpecification::GetUpDownDistance,
     &Korvane::ShotSpecification::SetUpDownDistance},
    {"leftRightAngle", &Korvane::ShotSpecification::GetLeftRightAngle,
     &Korvane::ShotSpecification::SetLeftRightAngle},
    {"upDownAngle", &Korvane::ShotSpecification::GetUpDownAngle, &Korvane::ShotSpecification::SetUpDownAngle},
};

}  // namespace zovhost
