#include "scene_loader.h"

#include <utility>

namespace zovview {

namespace {

constexpr double LEAST_NEWS = 0.01;  // of the whole

}  // namespace

SceneLoader::SceneLoader(std::function<void()> wakeWindow) : wake(std::move(wakeWindow)) {}

SceneLoader::~SceneLoader() {
  if (worker.joinable()) worker.join();
}

void SceneLoader::Start(const ModelSource& source) {
  if (loading.has_value()) {
    waiting = source;
    return;
  }
  if (worker.joinable()) worker.join();
  loading = source;
  fraction = 0.0;
  step = "reading";
  worker = std::thread([this, source] { Load(source); });
}

void SceneLoader::Load(const ModelSource& source) {
  LoadedModel model = LoadModel(source, [this](double part, const char* what) { Report(part, what); });
  {
    const std::lock_guard lock(mutex);
    done = std::move(model);
  }
  wake();
}

void SceneLoader::Report(double part, const char* what) {
  {
    const std::lock_guard lock(mutex);
    if (part - fraction < LEAST_NEWS && step == what) return;
    fraction = part;
    step = what;
  }
  wake();
}

SceneLoader::Status SceneLoader::GetStatus() const {
  const std::lock_guard lock(mutex);
  return {fraction, step, loading.has_value() ? loading->GetName() : std::string()};
}

std::optional<LoadedModel> SceneLoader::TakeModel() {
  std::optional<LoadedModel> model;
  {
    const std::lock_guard lock(mutex);
    model = std::exchange(done, std::nullopt);
  }
  if (!model.has_value()) return model;
  loading.reset();
  if (waiting.has_value()) Start(*std::exchange(waiting, std::nullopt));
  return model;
}

}  // namespace zovview
