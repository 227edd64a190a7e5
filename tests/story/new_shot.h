#pragma once

#include <memory>
#include <string>

#include "korvane/shot_specification.h"
#include "support/cameras.h"

/// A shot of that name, the caller's.
inline Korvane::ShotSpecification* NewShot(const std::wstring& name) {
  auto shot = std::make_unique<Korvane::ShotSpecification>(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0}));
  shot->SetName(name);
  return shot.release();
}
