// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/lab/lab.h"

namespace pelora::lab {

/// How much of the processor's time the lab's server has taken so far, in seconds: it is one
/// process with one thread.
[[nodiscard]] inline double ServerSeconds() {
  std::string number;
  const std::string name = Server();
  std::ifstream(Home() + "/" + name.substr(0, name.find('.')) + ".pid") >> number;
  // Nanoseconds on a processor, of its only thread. (What `stat` says is counted in hundredths.)
  double nanoseconds = 0;
  if (!(std::ifstream("/proc/" + number + "/schedstat") >> nanoseconds)) {
    throw std::runtime_error("the system does not say what the server took");
  }
  return nanoseconds / 1e9;
}

}  // namespace pelora::lab
