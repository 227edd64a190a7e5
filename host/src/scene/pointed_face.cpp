#include "scene/pointed_face.h"

#include <algorithm>
#include <atomic>
#include <new>
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
  BackgroundWork work{[this](const std::atomic<bool>& stopped) { return Find(stopped); }};

  // Where memory is short there is none.
  bool Find(const std::atomic<bool>& stopped) try {
    return scene.FindFace(begin, found, stopped) || !stopped;
  } catch (const std::bad_alloc&) {
    found = {};
    return true;
  }
};

PointedFace::PointedFace() = default;
PointedFace::~PointedFace() = default;

// A search goes on although the pointer moves: most likely it stays on the face that is looked for.
bool PointedFace::Point(const Scene& scene, const Scene::Hit* hit) {
  if (hit == nullptr) {
    search.reset();
    return std::exchange(face, SceneFace()).part >= 0;
  }
  if (Has(face, *hit)) return false;
  const bool hadFace = face.part >= 0;
  face = {};
  if (search != nullptr) {
    search->wanted = *hit;
    return Update() || hadFace;
  }
  if (!scene.FindSmallFace(*hit, face)) search = std::make_unique<Search>(scene, *hit);
  return hadFace || face.part >= 0;
}

bool PointedFace::Update() {
  if (search == nullptr || !search->work.IsFinished()) return false;
  const std::unique_ptr<Search> done = std::move(search);
  face = std::move(done->found);
  if (face.part >= 0 && !Has(face, done->wanted)) Point(done->scene, &done->wanted);
  return face.part >= 0;
}

}  // namespace zovhost
