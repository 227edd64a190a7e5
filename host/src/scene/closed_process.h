#pragma once

namespace zovhost {

/// From here on this process reaches no network, starts no program, reaches into no other process and writes
/// into no file; what it tries fails. It is not undone. Where the system has no such means, files are all
/// that is closed.
void CloseProcess();

}  // namespace zovhost
