// SPDX-License-Identifier: Apache-2.0
// Loaded before a program (LD_PRELOAD), counts how often it asks for memory, and adds a line with
// the number to the file that PELORA_ALLOCATIONS names when the program ends. A program that looks
// for `pelora_allocations` is told the number so far.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

extern "C" {
// The system library's own, under the names that it keeps for this.
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* memory, std::size_t size);      // NOLINT(bugprone-reserved-identifier)
}

namespace {

constinit std::atomic<unsigned long> allocations{0};

void Count() { allocations.fetch_add(1, std::memory_order_relaxed); }

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
  Count();
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  Count();
  return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
  Count();
  return __libc_realloc(memory, size);
}
}
