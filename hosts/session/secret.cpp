// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/secret.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <mutex>

namespace pelora::session {
namespace {

/// What the process was like before the first guard; it belongs to the process as a whole.
struct Dumps {
  std::mutex mutex;
  int guards = 0;
  int was_dumpable = 1;
  rlimit limit_before{};
};

Dumps& DumpsOfTheProcess() {
  static Dumps dumps;
  return dumps;
}

}  // namespace

DumpGuard::DumpGuard() {
  Dumps& dumps = DumpsOfTheProcess();
  const std::lock_guard lock(dumps.mutex);
  if (dumps.guards++ > 0) return;
  dumps.was_dumpable = prctl(PR_GET_DUMPABLE);
  prctl(PR_SET_DUMPABLE, 0);
  getrlimit(RLIMIT_CORE, &dumps.limit_before);
  rlimit none = dumps.limit_before;
  none.rlim_cur = 0;
  setrlimit(RLIMIT_CORE, &none);
}

DumpGuard::~DumpGuard() {
  Dumps& dumps = DumpsOfTheProcess();
  const std::lock_guard lock(dumps.mutex);
  if (--dumps.guards > 0) return;
  setrlimit(RLIMIT_CORE, &dumps.limit_before);
  // Only what may be set by hand is set back.
  if (dumps.was_dumpable == 1) prctl(PR_SET_DUMPABLE, 1);
}

}  // namespace pelora::session
