#pragma once

#include <memory>

#include "korvane/export.h"
#include "zov/qu_observer_ptr.h"
#include "zov/zov_enums.h"

namespace Korvane {
class OrientorObserver;
}
class zovOrientor;
class zovOrientorObserverP;

/// Is told what the user does with an orientation cube. The cube that it has been added to shares it.
///
/// While it is being told it may begin and end moves, add and remove observers, itself included - then it
/// goes, if nobody else holds it, when it has been told, by whatever pointer it was added - change the
/// settings and hide the cube. It must not end the cube.
class ZOVTOOLS_API zovOrientorObserver : public std::enable_shared_from_this<zovOrientorObserver> {
 public:
  /// Only keeps the cube; zovOrientor::add_observer makes the two known to each other.
  explicit zovOrientorObserver(zovOrientor& orientor);
  zovOrientorObserver(const zovOrientorObserver&) = delete;
  zovOrientorObserver& operator=(const zovOrientorObserver&) = delete;

  /// A press and release within the dead zone; the move that follows from it has not begun.
  virtual void on_clicked(zovOrientorPart part) = 0;
  virtual void on_drag_begin(zovOrientorPart part) = 0;
  virtual void on_drag_end() = 0;
  /// The cube has gone to another corner.
  virtual void on_position_change(zovOrientorLocation location) = 0;
  virtual ~zovOrientorObserver();

  /// The observer within, for a host that works with both layers.
  Korvane::OrientorObserver& korvane() const;

 protected:
  /// Null once the cube is gone.
  [[nodiscard]] quObserverPtr<zovOrientor> get_orientor() const;

 private:
  friend class zovOrientor;
  std::unique_ptr<zovOrientorObserverP> inner;
};
