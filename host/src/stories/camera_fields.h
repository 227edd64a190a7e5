#pragma once

#include <string>

#include "korvane/camera_parameters.h"
#include "stories/field_taker.h"

namespace zovhost {

/// The camera of an object of a file. What is left in the object is not known. False puts what is wrong, and
/// where, into `error`.
bool TakeCamera(Json& object, Korvane::CameraParameters& camera, std::string& error);

/// Puts the camera into `owner`, as the field of that name.
bool PutCameraField(const Korvane::CameraParameters& camera, OrderedJson& owner, std::string& error);

template <class Object>
bool PutChoice(const Choice<Object>& choice, const Object& from, OrderedJson& object, std::string& error) {
  const int number = choice.get(from);
  if (number < 0 || number >= choice.count) {
    return RefuseField(choice.name, "its number stands for nothing", error);
  }
  object[choice.name] = choice.names[number];
  return true;
}

}  // namespace zovhost
