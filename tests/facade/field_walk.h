#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <regex>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "korvane/box3.h"
#include "korvane/vector3.h"
#include "zov/qmcore.h"
#include "zov/zov_camera_parameters.h"
#include "zov/zov_geom_utils.h"

// A walk over the fields of a record of the library and the accessors of the facade that stand for them. The
// names of the fields come out of the header, so that one that is added there and forgotten in the facade, or
// in the table of the test, is missed.

inline std::string ReadHeader(const std::string& name) {
  std::ifstream file(std::string(ZOV_HEADERS) + "/korvane/" + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// The data members that stand between two lines of a header, in order. A line that is neither one of them,
/// nor a comment, blank, a function or an enumeration of one line comes as it is, so that no table has it.
inline std::vector<std::string> FieldsBetween(const std::string& header, const std::string& from,
                                              const std::string& to) {
  const std::string text = ReadHeader(header);
  const std::size_t begin = text.find(from);
  std::istringstream lines(text.substr(begin, text.find(to, begin) - begin));
  const std::regex field(R"(^  [\w:]+ (\w+)(\[\d+\])?( = [^;]*)?;.*)");
  const std::regex passed(R"(\s*(//.*|enum .*;|\w+ \w+\([^()]*\)( const)?(;| \{.*\}))?)");
  std::vector<std::string> names;
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (std::regex_match(line, match, field)) {
      names.push_back(match[1]);
    } else if (!std::regex_match(line, passed)) {
      names.push_back(line);
    }
  }
  return names;
}

// ---- a value of each type that crosses, unlike any default, and what it must be within ----

template <class Outside>
Outside Sample(int n) {
  if constexpr (std::is_same_v<Outside, bool>) {
    return n % 2 != 0;
  } else if constexpr (std::is_same_v<Outside, int>) {
    return 1000 + n;
  } else if constexpr (std::is_same_v<Outside, double>) {
    return 1000.5 + n;
  } else if constexpr (std::is_same_v<Outside, qmPoint3>) {
    return qmPoint3(0.5 + n, -7.0, 1e6 + n);
  } else if constexpr (std::is_same_v<Outside, qmUnitVec3>) {
    return qmUnitVec3(qmVector3(1.0, 2.0, 3.0 + n));
  } else if constexpr (std::is_same_v<Outside, qmBox3>) {
    return qmBox3(qmPoint3(-4.0, 0.0, 8.0), qmPoint3(10.0 + 2.0 * n, 2.0, 32.0));
  } else {
    static_assert(std::is_enum_v<Outside>);
    return static_cast<Outside>(1 + n % 3);
  }
}

inline bool SameWithin(double outside, double within) { return outside == within; }
inline bool SameWithin(const qmPoint3& outside, const Korvane::Vector3& within) {
  return outside.x() == within.x && outside.y() == within.y && outside.z() == within.z;
}
inline bool SameWithin(const qmUnitVec3& outside, const Korvane::Vector3& within) {
  return outside.x() == within.x && outside.y() == within.y && outside.z() == within.z;
}
// The samples are such that halving loses nothing.
inline bool SameWithin(const qmBox3& outside, const Korvane::Box3& within) {
  const Korvane::Vector3 low = within.GetCenter() - within.GetExtent();
  const Korvane::Vector3 high = within.GetCenter() + within.GetExtent();
  return SameWithin(outside.low(), low) && SameWithin(outside.high(), high);
}
template <class Outside, class Within>
requires std::is_enum_v<Outside>
bool SameWithin(Outside outside, Within within) {
  return static_cast<int>(outside) == static_cast<int>(within);
}

template <class Within>
bool SameValue(const Within& a, const Within& b) {
  if constexpr (std::is_same_v<Within, Korvane::Box3>) {
    return a.GetCenter() == b.GetCenter() && a.GetExtent() == b.GetExtent();
  } else if constexpr (std::is_array_v<Within>) {
    return std::memcmp(a, b, sizeof(Within)) == 0;
  } else if constexpr (std::is_same_v<Within, Korvane::CameraParameters>) {
    return a.eye == b.eye && a.centre == b.centre && a.up == b.up && a.pivot == b.pivot &&
           a.left_fov == b.left_fov && a.right_fov == b.right_fov && a.top_fov == b.top_fov &&
           a.bottom_fov == b.bottom_fov && a.ortho_width == b.ortho_width &&
           a.ortho_height == b.ortho_height && a.projection_type == b.projection_type &&
           a.perspective_with_ortho == b.perspective_with_ortho &&
           a.projection_transition == b.projection_transition && a.page_scale == b.page_scale &&
           a.page_origin_x == b.page_origin_x && a.page_origin_y == b.page_origin_y;
  } else {
    return a == b;
  }
}

/// One field and its accessors. `set` writes a sample that differs from the default, and says whether the
/// field and the getter have it then; `same` compares the field of two records.
template <class Facade, class Record>
struct FieldRow {
  std::string name;
  std::function<bool(Facade&, const Record&)> set;
  std::function<bool(const Record&, const Record&)> same;
};

template <class Facade, class Record, class Within, class Outside, class Argument>
FieldRow<Facade, Record> Field(const char* name, Within Record::*member, Outside (Facade::*get)() const,
                               void (Facade::*set)(Argument)) {
  const auto write = [=](Facade& facade, const Record& record) {
    int n = 0;
    while (SameWithin(Sample<Outside>(n), record.*member)) ++n;
    const Outside sample = Sample<Outside>(n);
    (facade.*set)(sample);
    return SameWithin(sample, record.*member) && (facade.*get)() == sample;
  };
  return {name, write, [=](const Record& a, const Record& b) { return SameValue(a.*member, b.*member); }};
}

/// An angle, whose number within is of `unit`.
template <class Facade, class Record, class Within>
FieldRow<Facade, Record> AngleField(const char* name, Within Record::*member, qmAngleUnit unit,
                                    qmAngle (Facade::*get)() const, void (Facade::*set)(const qmAngle&)) {
  const auto write = [=](Facade& facade, const Record& record) {
    (facade.*set)(qmAngle(37.5, unit));
    const bool kept = record.*member == Within(37.5) && (facade.*get)().angle(unit) == 37.5;
    const qmAngleUnit other = unit == qmAngleDegrees ? qmAngleRadians : qmAngleDegrees;
    const double expected = qmAngle(0.25, other).angle(unit);
    (facade.*set)(qmAngle(0.25, other));
    return kept && record.*member == static_cast<Within>(expected);
  };
  return {name, write, [=](const Record& a, const Record& b) { return SameValue(a.*member, b.*member); }};
}

/// Each accessor reaches its own field and no other, and the table has the fields of the header. `make` gives
/// a facade over a record.
template <class Facade, class Record, class Make>
void WalkFields(const std::vector<FieldRow<Facade, Record>>& rows, const std::vector<std::string>& fields,
                Make make) {
  std::vector<std::string> names;
  for (const auto& row : rows) names.push_back(row.name);
  EXPECT_EQ(names, fields);
  for (const auto& row : rows) {
    const Record before;
    make([&](Facade& facade, const Record& record) {
      EXPECT_TRUE(row.set(facade, record)) << row.name;
      for (const auto& each : rows) {
        EXPECT_EQ(each.same(record, before), each.name != row.name)
            << row.name << " was set, " << each.name << " looked at";
      }
    });
  }
}
