// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/objects/object_finder.h"
#include "hosts/ctl/text/byte_order_mark.h"
#include "hosts/ctl/text/input_file.h"
#include "hosts/ctl/text/without_blanks.h"
#include "hosts/session/utf8_check.h"

namespace pelora::ctl {
std::vector<std::string> ReadNames(const std::string& path) {
  const std::string text = ReadInput(path);
  std::string_view left = WithoutByteOrderMark(text);
  std::vector<std::string> names;
  for (std::size_t line = 1; !left.empty(); ++line) {
    const std::size_t length = std::min(left.find('\n'), left.size());
    const std::string_view name = WithoutBlanks(left.substr(0, length));
    left.remove_prefix(std::min(length + 1, left.size()));
    if (session::FirstInvalidByte(name)) {
      throw WrongUsage(InputName(path) + ", line " + std::to_string(line) + ": this is not UTF-8");
    }
    if (!name.empty() && !name.starts_with('#')) names.emplace_back(name);
  }
  return names;
}

}  // namespace pelora::ctl
