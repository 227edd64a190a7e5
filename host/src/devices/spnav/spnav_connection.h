#pragma once

#include <optional>
#include <variant>

#include "zovhost/six_axis_source.h"

namespace zovhost {

struct SpnavDevice {
  bool present;  // one has come, or one has gone
};
using SpnavNews = std::variant<SixAxes, SixAxisButton, SpnavDevice>;

/// The one connection to the daemon that the client library knows. On one thread; to open it may wait for the
/// daemon. It never asks the daemon anything: the client library throws away what has come before it asks,
/// and does so for ever when the daemon has gone.
class SpnavConnection {
 public:
  enum class Arrival { Whole, Part, Nothing, Gone };

  SpnavConnection() = default;
  ~SpnavConnection() { Close(); }
  SpnavConnection(const SpnavConnection&) = delete;
  SpnavConnection& operator=(const SpnavConnection&) = delete;

  /// False while another has it, and while there is no daemon.
  bool Open();
  void Close();
  int GetDescriptor() const { return descriptor; }
  /// What the daemon has sent, which the client library itself does not tell from nothing.
  Arrival Look() const;
  /// The next news. Nothing for what is none.
  std::optional<SpnavNews> Take();

 private:
  int descriptor = -1;
};

}  // namespace zovhost
