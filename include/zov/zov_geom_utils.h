#pragma once

#include "korvane/box2.h"
#include "korvane/box3.h"
#include "korvane/vector2.h"
#include "korvane/vector3.h"
#include "zov/qmcore.h"

/// The library's geometry as the host's and back. Points, vectors and directions keep every bit, a NaN and an
/// infinity among them, but a vector that becomes a unit vector takes its length, see qmUnitVec3.
///
/// A box is a centre with half extents on the one side and two corners on the other. There and back again its
/// centre c and half extent h are off by at most 2^-52 (|c| + |h|) on each axis, unless a corner is so near
/// to zero, below 2^-1021, that half of it has lost a bit, or |c| + |h| is beyond the largest double, so that
/// a corner is infinite. An axis with a corner that is not finite has no finite centre or no finite half
/// extent, and the other way round. A box of the library may be turned: its axes stay behind, and what comes
/// back stands along those of the world.
class zovGeomUtils {
 public:
  static constexpr qmPoint2 kvvec_to_qmpnt(const Korvane::Vector2& v) { return {v.x, v.y}; }
  static constexpr qmPoint3 kvvec_to_qmpnt(const Korvane::Vector3& v) { return {v.x, v.y, v.z}; }
  static constexpr Korvane::Vector2 qmpnt_to_kvvec(const qmPoint2& p) { return {p.x(), p.y()}; }
  static constexpr Korvane::Vector3 qmpnt_to_kvvec(const qmPoint3& p) { return {p.x(), p.y(), p.z()}; }

  static constexpr qmVector2 kvvec_to_qmvec(const Korvane::Vector2& v) { return {v.x, v.y}; }
  static constexpr qmVector3 kvvec_to_qmvec(const Korvane::Vector3& v) { return {v.x, v.y, v.z}; }
  static constexpr Korvane::Vector2 qmvec_to_kvvec(const qmVector2& v) { return {v.x(), v.y()}; }
  static constexpr Korvane::Vector3 qmvec_to_kvvec(const qmVector3& v) { return {v.x(), v.y(), v.z()}; }

  static qmUnitVec2 kvvec_to_qmuvc(const Korvane::Vector2& v) { return qmUnitVec2(kvvec_to_qmvec(v)); }
  static qmUnitVec3 kvvec_to_qmuvc(const Korvane::Vector3& v) { return qmUnitVec3(kvvec_to_qmvec(v)); }
  static constexpr Korvane::Vector2 qmuvc_to_kvvec(const qmUnitVec2& v) { return {v.x(), v.y()}; }
  static constexpr Korvane::Vector3 qmuvc_to_kvvec(const qmUnitVec3& v) { return {v.x(), v.y(), v.z()}; }

  static constexpr qmBox2 kvbox_to_qmbox(const Korvane::Box2& box) {
    return {kvvec_to_qmpnt(box.Min()), kvvec_to_qmpnt(box.Max())};
  }
  static qmBox3 kvbox_to_qmbox(const Korvane::Box3& box) {
    return {kvvec_to_qmpnt(box.GetCenter() - box.GetExtent()),
            kvvec_to_qmpnt(box.GetCenter() + box.GetExtent())};
  }

  // Halved before they are added, so that no corner is too far out.
  static constexpr Korvane::Box2 qmbox_to_kvbox(const qmBox2& box) {
    const Korvane::Vector2 low = qmpnt_to_kvvec(box.low()) * 0.5;
    const Korvane::Vector2 high = qmpnt_to_kvvec(box.high()) * 0.5;
    return {low + high, high - low};
  }
  static Korvane::Box3 qmbox_to_kvbox(const qmBox3& box) {
    const Korvane::Vector3 low = qmpnt_to_kvvec(box.low()) * 0.5;
    const Korvane::Vector3 high = qmpnt_to_kvvec(box.high()) * 0.5;
    return {low + high, high - low};
  }
};
