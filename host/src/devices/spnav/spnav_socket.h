#pragma once

#include <iosfwd>
#include <string>

namespace zovhost {

/// Whether somebody listens where the client library looks for the daemon. Never waits. The client library
/// itself loses a little memory with each attempt that fails.
///
/// Whoever sets the environment variable SPNAV_SOCKET wants that daemon and no other.
bool IsDaemonThere();

/// The value of `socket` in the daemon's settings, of which each line is `key = value`; empty without.
std::string ReadSocketPath(std::istream& settings);

}  // namespace zovhost
