// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/failing_allocator.h"

#include <cstdlib>
#include <new>

namespace {

struct Allocations {
  bool are_counted = false;
  std::size_t count = 0;
  std::size_t released = 0;
  std::size_t failing = 0;
  bool (*counts)(const void* code) = nullptr;

  [[nodiscard]] bool IsFailing(const void* code) {
    if (!are_counted || (counts != nullptr && !counts(code))) return false;
    return ++count == failing;
  }
};

/// Of this thread alone: what others do is nobody's business here.
thread_local constinit Allocations allocations;

/// For the code at that address.
void* Allocate(std::size_t size, const void* code) {
  if (allocations.IsFailing(code)) throw std::bad_alloc();
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Release(void* memory) noexcept {
  if (allocations.are_counted && memory != nullptr) ++allocations.released;
  std::free(memory);
}

void* AllocateOrNone(std::size_t size, const void* code) noexcept {
  try {
    return Allocate(size, code);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) { return Allocate(size, __builtin_return_address(0)); }
// A sanitizer has its own of those that are not replaced, and what those allocate is not freed
// here.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return AllocateOrNone(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return AllocateOrNone(size, __builtin_return_address(0));
}
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { Release(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Release(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { Release(memory); }

namespace pelora::testing {

FailingAllocations::FailingAllocations(std::size_t nth, bool (*counts)(const void* code)) {
  allocations = {.are_counted = true, .count = 0, .released = 0, .failing = nth, .counts = counts};
}

FailingAllocations::~FailingAllocations() { allocations.are_counted = false; }

std::size_t FailingAllocations::count() { return allocations.count; }

std::size_t FailingAllocations::count_with_releases() {
  return allocations.count + allocations.released;
}

}  // namespace pelora::testing
