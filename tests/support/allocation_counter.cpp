#include "support/allocation_counter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocations = 0;
thread_local std::uint64_t deallocations = 0;

void* Allocate(std::size_t size) noexcept {
  ++allocations;
  return std::malloc(size != 0 ? size : 1);
}

// aligned_alloc wants a size that is a multiple of the alignment.
void* Allocate(std::size_t size, std::align_val_t alignment) noexcept {
  ++allocations;
  const auto step = static_cast<std::size_t>(alignment);
  return std::aligned_alloc(step, (size + step - 1) / step * step);
}

void* OrThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  ++deallocations;
  std::free(memory);
}

}  // namespace

AllocationCounter::AllocationCounter() : allocationsBefore(allocations), deallocationsBefore(deallocations) {}

std::uint64_t AllocationCounter::GetAllocations() const { return allocations - allocationsBefore; }
std::uint64_t AllocationCounter::GetDeallocations() const { return deallocations - deallocationsBefore; }

// Every form is replaced, so that no pair mixes two allocators.
void* operator new(std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return OrThrow(Allocate(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return Allocate(size, alignment);
}
void* operator new[](std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return OrThrow(Allocate(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return Allocate(size, alignment);
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept { Free(memory); }
