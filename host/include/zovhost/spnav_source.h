#pragma once

#include <memory>

#include "zovhost/six_axis_source.h"

namespace zovhost {

/// Six-axis devices of the system's daemon, through its client library, libspnav.
///
/// A thread of its own waits for the daemon and for what it sends, so a Poll costs some hundred instructions
/// whether there is a daemon or not. A daemon that is not there yet, or goes and comes again, is found within
/// RETRY_SECONDS. Nothing is printed.
///
/// The client library knows one connection in a process. Of several sources the first that was made and still
/// stands has it, and the others have no device; a host that calls the client library itself has none of
/// these.
///
/// A kit that is built without the client library has this class too: there no device ever comes.
class SpnavSource : public SixAxisSource {
 public:
  static constexpr double RETRY_SECONDS = 2.0;

  /// Whether this kit was built with the client library.
  static bool IsAvailable();

  /// `retrySeconds` is how long it waits from one attempt to the next; 0.001 at least.
  explicit SpnavSource(double retrySeconds = RETRY_SECONDS);
  ~SpnavSource() override;

  void Poll() override;
  /// The daemon is there. It tells when a device goes, and is taken to have one until then, and again when
  /// one comes or moves.
  bool HasDevice() const override;
  SixAxisSettings GetDefaults() const override { return SixAxisSettings::ForDevice(); }
  void SetWake(std::function<void()> wake) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace zovhost
