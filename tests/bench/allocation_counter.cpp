// SPDX-License-Identifier: Apache-2.0
// Loaded before a program (LD_PRELOAD), counts how often it asks for memory, and adds a line with
// the number to the file that PELORA_ALLOCATIONS names when the program ends. Memory comes from
// whichever allocator the program has. A program that looks for `pelora_allocations` is told the
// number so far.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

constinit std::atomic<unsigned long> allocations{0};

void Count() { allocations.fetch_add(1, std::memory_order_relaxed); }

/// The function of this name that the program would have without us.
template <class Function>
Function Next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

__attribute__((destructor)) void Tell() {
  const char* const path = std::getenv("PELORA_ALLOCATIONS");
  if (path == nullptr) return;
  char line[32];
  const int size = std::snprintf(line, sizeof line, "%lu\n", allocations.load());
  const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return;
  static_cast<void>(!write(file, line, static_cast<std::size_t>(size)));
  close(file);
}

}  // namespace

extern "C" {

unsigned long pelora_allocations() { return allocations.load(); }

void* malloc(std::size_t size) {
  static const auto next = Next<void* (*)(std::size_t)>("malloc");
  Count();
  return next(size);
}

void* calloc(std::size_t count, std::size_t size) {
  static const auto next = Next<void* (*)(std::size_t, std::size_t)>("calloc");
  Count();
  return next(count, size);
}

void* realloc(void* memory, std::size_t size) {
  static const auto next = Next<void* (*)(void*, std::size_t)>("realloc");
  Count();
  return next(memory, size);
}
}

// An allocator may bring its own of these, which ask nobody else.
void* operator new(std::size_t size) {
  void* const memory = malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { free(memory); }
void operator delete[](void* memory) noexcept { free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { free(memory); }
