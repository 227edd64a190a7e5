#pragma once

#include <cstdint>

/// How often the calling thread has allocated through `operator new` since this was made. A program that
/// uses it has the global operators replaced.
class AllocationCounter {
 public:
  AllocationCounter();

  std::uint64_t GetAllocations() const;
  std::uint64_t GetDeallocations() const;
  /// What is allocated and has not been since this was made; negative where more was given back.
  std::int64_t GetLive() const;
  std::int64_t GetLiveBytes() const;

 private:
  std::uint64_t allocationsBefore;
  std::uint64_t deallocationsBefore;
  std::int64_t bytesBefore;
};

/// For as long as it lives, allocations of the calling thread fail: the one of a number, counted from 1, and
/// so many from there on. One at a time. Those of host code are not counted and never fail.
class AllocationFault {
 public:
  AllocationFault(std::uint64_t first, std::uint64_t count);
  ~AllocationFault();
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;

  /// Of those that were counted; at least `first` when one has failed.
  std::uint64_t GetCounted() const;
};

/// A stretch of the host's own code within a call of the library.
class HostCode {
 public:
  HostCode();
  ~HostCode();
  HostCode(const HostCode&) = delete;
  HostCode& operator=(const HostCode&) = delete;
};
