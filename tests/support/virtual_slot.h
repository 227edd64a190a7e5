#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

/// The place of a virtual operation in its class's table, counted from 0, read out of a pointer to it; -1
/// for an operation that is not virtual. A virtual destructor takes the places 0 and 1.
///
/// By the Itanium C++ ABI (section 2.3, "Member Function Pointers"), which GCC and Clang follow, such a
/// pointer is a pair of words: the first holds 1 plus the byte offset of the slot when the operation is
/// virtual, an address otherwise. The ARM variant keeps the 1 in the second word.
template <class Function>
int VirtualSlot(Function function) {
  static_assert(std::is_member_function_pointer_v<Function>);
  std::ptrdiff_t words[2] = {};
  static_assert(sizeof(function) == sizeof(words));
  std::memcpy(words, &function, sizeof(words));
#if defined(__arm__) || defined(__aarch64__)
  const bool isVirtual = (words[1] & 1) != 0;
  const std::ptrdiff_t offset = words[0];
#else
  const bool isVirtual = (words[0] & 1) != 0;
  const std::ptrdiff_t offset = words[0] - 1;
#endif
  return isVirtual ? static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void*))) : -1;
}
