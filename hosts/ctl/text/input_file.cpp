// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ldap/file_descriptor.h"

namespace pelora::ctl {
namespace {

[[noreturn]] void Fail(const std::string& path) {
  throw WrongUsage(InputName(path) + ": " + std::generic_category().message(errno));
}

}  // namespace

std::string InputName(const std::string& path) { return path == "-" ? "standard input" : path; }

std::string ReadInput(const std::string& path) {
  ldap::FileDescriptor file;
  int descriptor = STDIN_FILENO;
  if (path != "-") {
    file = ldap::FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    descriptor = file.get();
    if (descriptor < 0) Fail(path);
  }
  std::string text;
  std::array<char, 1 << 16> block{};
  while (true) {
    const ssize_t taken = read(descriptor, block.data(), block.size());
    if (taken < 0 && errno == EINTR) continue;
    if (taken < 0) Fail(path);
    if (taken == 0) return text;
    text.append(block.data(), static_cast<std::size_t>(taken));
  }
}

}  // namespace pelora::ctl
