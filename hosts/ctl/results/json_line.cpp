// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/json_line.h"

#include <cstdint>

namespace pelora::ctl {

Json JsonOf(const FieldValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* list = std::get_if<std::vector<std::string>>(&value)) return *list;
  return {};
}

}  // namespace pelora::ctl
