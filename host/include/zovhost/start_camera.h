#pragma once

#include "korvane/camera_parameters.h"
#include "korvane/fit_margins.h"
#include "korvane/vector3.h"

namespace zovhost {

class Scene;
class ViewHub;

/// The outward direction of the front of a model that stands on `up`, perpendicular to it: -y for a model
/// on the z axis, as buildings are drawn, and +z for one on the y axis. Unit length; `up` must have it too.
Korvane::Vector3 ChooseFront(const Korvane::Vector3& up);

/// A view from the front, the right and above, in which the model stays whole however a turntable orbit
/// turns it, for a viewport of `width` by `height`. The pivot is the model's centre, which stands in the
/// middle of what `margins` leave of the view, and the orthographic size shows what the perspective shows at
/// the depth of the centre. Margins that are not usable count as none.
Korvane::CameraParameters MakeStartCamera(const Scene& scene, double width, double height,
                                          const Korvane::FitMargins& margins = {});

/// What counts as up for the scene and the world, unit length; the front follows from it.
void SetUpDirection(ViewHub& hub, const Korvane::Vector3& up);

/// Makes the scene the one of the hub: directions, bounds, home camera and view, and the paces of a walk and
/// of the keys that move while looking, which follow its size. Home and view keep to the hub's margins of
/// fits. Whatever runs is ended.
void EnterScene(ViewHub& hub, const Scene& scene);

}  // namespace zovhost
