#include "scene/pointed_face.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "scene/background_work.h"

namespace zovhost {

namespace {

bool Has(const SceneFace& face, const Scene::Hit& hit) {
  return face.part == hit.part &&
         std::binary_search(face.triangles.begin(), face.triangles.end(), hit.triangle);
}

}  // namespace

struct PointedFace::Search {
  Search(const Scene& in, const Scene::Hit& from) : scene(in), begin(from), wanted(from) {}

  const Scene& scene;
  const Scene::Hit begin;
  Scene::Hit wanted;  // where the pointer is by now
  SceneFace found;    // of the thread until it has finished
  BackgroundWork work{
      [this](const std::atomic<bool>& stopped) { return scene.FindFace(begin, found, stopped) || !stopped; }};
};

PointedFace::PointedFace() = default;
PointedFace::~PointedFace() = default;

// A search goes on while the pointer moves: most likely it stays on the face that is looked for.
bool PointedFace::Point(const Scene& scene, const Scene::Hit* hit) {
  if (hit != nullptr && Has(face, *hit)) return false;
  const bool hadFace = std::exchange(face, SceneFace()).part >= 0;
  if (hit == nullptr || scene.FindSmallFace(*hit, face)) {
    search.reset();
    return hadFace || hit != nullptr;
  }
  if (search == nullptr) search = std::make_unique<Search>(scene, *hit);
  search->wanted = *hit;
  return hadFace;
}

// Where memory or threads are short there is none, until the pointer moves on.
bool PointedFace::Update() {
  if (search == nullptr) return false;
  if (search->work.HasFailed()) search.reset();
  if (search == nullptr || !search->work.IsFinished()) return false;
  const std::unique_ptr<Search> done = std::move(search);
  face = std::move(done->found);
  if (face.part >= 0 && !Has(face, done->wanted)) Point(done->scene, &done->wanted);
  return face.part >= 0;
}

}  // namespace zovhost
