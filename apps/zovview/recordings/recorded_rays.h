#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "recordings/words.h"
#include "zovhost/scene.h"

namespace zovview {

/// A ray, and what it met.
struct RecordedRay {
  Korvane::Vector3 origin;
  Korvane::Vector3 direction;
  std::optional<zovhost::Scene::Hit> hit = {};  ///< None where there was nothing.
};

using RaysOfModel = std::vector<RecordedRay>;

/// What follows the name of a line. False for what is no ray.
bool ReadRay(Words& words, RecordedRay& ray);
std::string FormatRay(const RecordedRay& ray);

/// Answers the rays of a scene with what they met when they were recorded, so that a session comes out the
/// same however its model was imported. What was not recorded, or met what the scene has not, is asked of the
/// scene.
class RayBook : public zovhost::RayAnswers {
 public:
  /// The scene must outlive it. What is asked is noted only where it is wanted: an hour has very many rays.
  RayBook(zovhost::Scene& scene, const RaysOfModel& known, bool notesAsked);
  ~RayBook() override;
  RayBook(const RayBook&) = delete;
  RayBook& operator=(const RayBook&) = delete;

  bool Answer(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
              zovhost::Scene::Hit& hit) override;

  /// All that were asked, in the order in which each was asked first; none unless they are noted.
  const RaysOfModel& GetAsked() const { return asked; }

 private:
  using Key = std::array<std::uint64_t, 6>;
  static Key MakeKey(const Korvane::Vector3& origin, const Korvane::Vector3& direction);
  bool HasTriangle(const zovhost::Scene::Hit& hit) const;
  RecordedRay Find(const Key& key, const Korvane::Vector3& origin, const Korvane::Vector3& direction) const;

  zovhost::Scene& scene;
  const bool notes;
  std::map<Key, RecordedRay> known;
  std::set<Key> noted;
  RaysOfModel asked;
};

}  // namespace zovview
