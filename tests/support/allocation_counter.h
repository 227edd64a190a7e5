#pragma once

#include <cstdint>

/// How often the calling thread has allocated through `operator new` since this was made. A program that
/// uses it has the global operators replaced.
class AllocationCounter {
 public:
  AllocationCounter();

  std::uint64_t GetAllocations() const;
  std::uint64_t GetDeallocations() const;

 private:
  std::uint64_t allocationsBefore;
  std::uint64_t deallocationsBefore;
};
