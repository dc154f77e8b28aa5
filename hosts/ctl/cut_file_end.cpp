// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/cut_file_end.h"

#include <unistd.h>

#include <string_view>

#include "hosts/ctl/ctl_error.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kLine =
    "peloractl: somebody has cut the directory file short while it was in use; the report and the "
    "undo file, where there are any, say what was done\n";

/// Nothing is left to be called but the system.
void End(int signal, siginfo_t* info, void* /*context*/) {
  // A page that is not there any more; any other reason is a fault of the program or the machine.
  if (info->si_code != BUS_ADRERR) {
    ::signal(signal, SIG_DFL);
    raise(signal);
    return;
  }
  // Nothing can be done about a line that nobody hears.
  const ssize_t told = write(STDERR_FILENO, kLine.data(), kLine.size());
  static_cast<void>(told);
  _exit(kExitNotAll);
}

}  // namespace

CutFileEnd::CutFileEnd() {
  struct sigaction action {};
  action.sa_sigaction = &End;
  action.sa_flags = SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  sigaction(SIGBUS, &action, &before_);
}

CutFileEnd::~CutFileEnd() { sigaction(SIGBUS, &before_, nullptr); }

}  // namespace pelora::ctl
