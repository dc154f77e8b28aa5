// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace pelora::testing {

/// No file of this process may grow beyond a size while it lives, as on a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t largest_file) {
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit small{.rlim_cur = largest_file, .rlim_max = limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit limit_{};
  void (*handler_)(int) = nullptr;
};

}  // namespace pelora::testing
