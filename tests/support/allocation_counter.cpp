#include "support/allocation_counter.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocations = 0;
thread_local std::uint64_t deallocations = 0;
thread_local std::int64_t bytes = 0;

struct Fault {
  std::uint64_t first = 0;  // 0: none
  std::uint64_t end = 0;
  std::uint64_t counted = 0;
  int hostDepth = 0;
};
thread_local Fault fault;

bool Fails() noexcept {
  if (fault.first == 0 || fault.hostDepth > 0) return false;
  ++fault.counted;
  return fault.counted >= fault.first && fault.counted < fault.end;
}

void* Count(void* memory) noexcept {
  if (memory == nullptr) return nullptr;
  ++allocations;
  bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
  return memory;
}

void* Allocate(std::size_t size) noexcept {
  return Fails() ? nullptr : Count(std::malloc(size != 0 ? size : 1));
}

// aligned_alloc wants a size that is a multiple of the alignment.
void* Allocate(std::size_t size, std::align_val_t alignment) noexcept {
  const auto step = static_cast<std::size_t>(alignment);
  return Fails() ? nullptr : Count(std::aligned_alloc(step, (size + step - 1) / step * step));
}

void* OrThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  ++deallocations;
  bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
  std::free(memory);
}

}  // namespace

AllocationCounter::AllocationCounter()
    : allocationsBefore(allocations), deallocationsBefore(deallocations), bytesBefore(bytes) {}

std::uint64_t AllocationCounter::GetAllocations() const { return allocations - allocationsBefore; }
std::uint64_t AllocationCounter::GetDeallocations() const { return deallocations - deallocationsBefore; }
std::int64_t AllocationCounter::GetLive() const {
  return static_cast<std::int64_t>(GetAllocations()) - static_cast<std::int64_t>(GetDeallocations());
}
std::int64_t AllocationCounter::GetLiveBytes() const { return bytes - bytesBefore; }

AllocationFault::AllocationFault(std::uint64_t first, std::uint64_t count) {
  const std::uint64_t end = count < ~first ? first + count : ~std::uint64_t{0};
  fault = {first, end, 0, 0};
}
AllocationFault::~AllocationFault() { fault = {}; }
std::uint64_t AllocationFault::GetCounted() const { return fault.counted; }

HostCode::HostCode() { ++fault.hostDepth; }
HostCode::~HostCode() { --fault.hostDepth; }

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
