// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/output.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

constexpr std::size_t kEnough = 1 << 16;

}  // namespace

Output::Output(int descriptor) : descriptor_(descriptor), is_terminal_(isatty(descriptor) == 1) {}

void Output::Write(std::string_view text) {
  if (is_over_) return;
  waiting_ += text;
  if (waiting_.size() >= kEnough) Flush();
}

void Output::WriteLine(std::string_view text) {
  constexpr std::string_view kKept = "\t\n";
  Write(is_terminal_ ? session::VisibleText(text, kKept) : session::ValidText(text));
  Write("\n");
}

void Output::Flush() {
  std::string_view left = waiting_;
  while (!left.empty() && !is_over_) {
    const ssize_t written = write(descriptor_, left.data(), left.size());
    if (written >= 0) {
      left.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      is_over_ = true;
      if (errno != EPIPE) failure_ = std::generic_category().message(errno);
    }
  }
  waiting_.clear();
}

}  // namespace pelora::ctl
