#pragma once

#include <cstddef>

namespace zovhost {

/// A place in the buffer that is bound, as the calls take it that would otherwise be given an address.
inline const void* BufferOffset(std::size_t bytes) {
  return reinterpret_cast<const void*>(bytes);  // NOLINT(performance-no-int-to-ptr): what GL asks for
}

}  // namespace zovhost
