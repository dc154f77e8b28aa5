// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/read_bytes.h"

namespace pelora::ctl {
namespace {

[[noreturn]] void Fail(const std::string& path) {
  throw WrongUsage(InputName(path) + ": " + std::generic_category().message(errno));
}

}  // namespace

std::string InputName(const std::string& path) { return path == "-" ? "standard input" : path; }

std::string ReadInput(const std::string& path, std::size_t most) {
  ldap::FileDescriptor file;
  int descriptor = STDIN_FILENO;
  if (path != "-") {
    file = ldap::FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    descriptor = file.get();
    if (descriptor < 0) Fail(path);
  }
  std::string text;
  switch (ldap::ReadBytes(descriptor, most, text)) {
    case ldap::ReadEnd::kWhole:
      return text;
    case ldap::ReadEnd::kTooLong:
      throw WrongUsage(InputName(path) + ": it has no end within " + std::to_string(most >> 20) +
                       " MB, and no more than that is read");
    case ldap::ReadEnd::kFailed:
      break;
  }
  Fail(path);
}

}  // namespace pelora::ctl
