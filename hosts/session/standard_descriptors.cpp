// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace pelora::session {

void OpenStandardDescriptors() {
  for (const int descriptor : std::array{STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    // Those below it are open: it gets the lowest number that is free.
    if (open("/dev/null", O_RDWR) != descriptor) std::abort();
  }
}

}  // namespace pelora::session
