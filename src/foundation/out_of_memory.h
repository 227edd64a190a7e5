#pragma once

#include <new>

namespace Korvane {

/// What a call answers; where memory runs out in it, what says that it has not done what it was asked: false,
/// null, nothing. Stands where the library makes something and where a host calls in, so that no exception of
/// its own goes through code that has something to put back, nor reaches the host.
template <class Call>
auto OrFail(const Call& call) -> decltype(call()) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    return decltype(call())();
  }
}

}  // namespace Korvane
