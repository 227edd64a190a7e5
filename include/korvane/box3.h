#pragma once

#include "korvane/export.h"
#include "korvane/vector3.h"

namespace Korvane {

/// A box in space by centre, half extent and three axes, with its eight corners cached.
///
/// Corner 4a + 2b + c lies on the negative (0) or positive (1) side of the first (a), second (b) and third
/// (c) axis.
class ZOVTOOLS_API Box3 {
 public:
  /// The corner indices of the six faces.
  static const int facesLookUp[6][4];

  /// Centre zero, half extent (1, 1, 1), the world axes.
  Box3();
  /// The world axes. Any extent is stored as given; a negative one mirrors the corners.
  Box3(const Vector3& center, const Vector3& extent);

  const Vector3& GetCenter() const { return center; }
  const Vector3& GetExtent() const { return extent; }
  /// Axis 0, 1 or 2; an index out of range yields the zero vector.
  const Vector3& GetAxis(int index) const;

  void SetCenter(const Vector3& value);
  /// Half sizes along the three axes.
  void SetExtent(const Vector3& value);
  /// Renormalised on storing; an index out of range changes nothing.
  void SetAxis(int index, const Vector3& value);

  /// The cached corner, 0 to 7; an index out of range yields the zero vector.
  const Vector3& GetCorner(int index) const {
    return index >= 0 && index < 8 ? corners[index] : Vector3::Zero;
  }
  /// Overwrites a cached corner; centre and extent stay. An index out of range changes nothing.
  void SetCorner(int index, const Vector3& value);

  /// The length of the half extent is below the tolerance.
  bool IsEmpty() const { return extent.Length() < Math::EPSILON_VALUE; }

 private:
  void SetCorners();

  Vector3 center;
  Vector3 extent;
  Vector3 axes[3];
  Vector3 corners[8];
};

}  // namespace Korvane
