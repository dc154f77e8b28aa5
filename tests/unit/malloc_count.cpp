// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/malloc_count.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#ifdef PELORA_SANITIZED
#include <sanitizer/allocator_interface.h>
#endif

namespace {

constinit std::atomic<std::size_t> mallocs{0};

}  // namespace

#ifdef PELORA_SANITIZED

namespace {

/// A sanitizer has its own allocator, and tells of it.
[[maybe_unused]] const bool is_hooked =
    __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t) { ++mallocs; },
                                              [](const volatile void*) {}) > 0;

}  // namespace

#else

extern "C" {
// The system library's own, under the name that it keeps for this.
void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  ++mallocs;
  return __libc_malloc(size);
}
}

#endif

namespace pelora::testing {

std::size_t MallocsOf(const std::function<void()>& action) {
  const std::size_t before = mallocs;
  const auto counted = std::make_unique<std::size_t>(before);
  if (mallocs == *counted) throw std::runtime_error("requests for memory are not counted");
  action();
  return mallocs - before;
}

}  // namespace pelora::testing
