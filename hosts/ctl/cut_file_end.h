// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <signal.h>

namespace pelora::ctl {

/// Ends the program with a line and `kExitNotAll` when somebody cuts the directory file short while
/// it is mapped into memory: what is behind the cut cannot be read any more, and nothing that is
/// told of it would be so. What has been reported and noted to be taken back is on the disk by
/// then.
///
/// As long as the object lives; one at a time.
class CutFileEnd {
 public:
  CutFileEnd();
  CutFileEnd(const CutFileEnd&) = delete;
  CutFileEnd& operator=(const CutFileEnd&) = delete;
  ~CutFileEnd();

 private:
  struct sigaction before_ {};
};

}  // namespace pelora::ctl
