#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "model_source.h"

namespace zovview {

/// Loads models on a thread of its own, one at a time, so that the view can be moved meanwhile.
class SceneLoader {
 public:
  /// `wake` is called from the loading thread whenever there is news.
  explicit SceneLoader(std::function<void()> wake);
  /// Waits for a load that is under way.
  ~SceneLoader();
  SceneLoader(const SceneLoader&) = delete;
  SceneLoader& operator=(const SceneLoader&) = delete;

  /// While another is loading, this one follows it; of several only the last.
  void Start(const ModelSource& source);
  bool IsLoading() const { return loading.has_value(); }

  struct Status {
    double fraction = 0.0;
    std::string step;
    std::string name;
  };
  Status GetStatus() const;
  /// The model of a load that has ended, once. Starts the one that waits.
  std::optional<LoadedModel> TakeModel();

 private:
  void Load(const ModelSource& source);
  void Report(double fraction, const char* step);

  std::function<void()> wake;
  std::thread worker;
  std::optional<ModelSource> loading;
  std::optional<ModelSource> waiting;

  mutable std::mutex mutex;  // of what follows
  double fraction = 0.0;
  std::string step;
  std::optional<LoadedModel> done;
};

}  // namespace zovview
