#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "korvane/lifeline.h"
#include "korvane/shot_specification.h"
#include "korvane/story.h"
#include "stories/story_text.h"

namespace zovhost {

/// What a file says that is not known here, by the objects of which it says it. A new object may stand where
/// a deleted one stood in memory, so each is watched.
struct UnknownFields {
  template <class Object>
  struct Of {
    Korvane::Borrowed<Object> object;
    Json fields = Json::object();
  };
  struct OfElement {
    std::uint64_t place = 0;
    Korvane::ShotSpecification::RecordedElement read;
    Json fields = Json::object();
    Json camera = Json::object();
  };
  struct OfShot : Of<Korvane::ShotSpecification> {
    Json camera = Json::object();
    std::vector<OfElement> elements;
  };

  Json file = Json::object();
  std::unordered_map<const Korvane::Story*, Of<Korvane::Story>> stories;  // the one that was read
  std::unordered_map<const Korvane::Sequence*, Of<Korvane::Sequence>> sequences;
  std::unordered_map<const Korvane::ShotSpecification*, OfShot> shots;
};

/// What is kept in `kept` of an object; null for nothing.
template <class Map, class Object>
const typename Map::mapped_type* FindKept(const Map& kept, const Object& object) {
  const auto found = kept.find(&object);
  return found != kept.end() && found->second.object.Get() == &object ? &found->second : nullptr;
}

}  // namespace zovhost
