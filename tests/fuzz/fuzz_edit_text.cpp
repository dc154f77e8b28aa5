// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as settings in an editor; what was read is written and read again, and holds the
// same values. Messages above lines change nothing of what is read.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hosts/ctl/text/edit_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pelora::ctl;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<EditObject> read;
  const auto fault = ReadEditText(text, read);
  const EditFault told{fault ? fault->line : 1, "told\nin two lines"};
  std::vector<EditObject> with_faults;
  if (ReadEditText(WithFaults(text, std::vector{told}), with_faults).has_value() !=
      fault.has_value()) {
    std::abort();
  }
  if (fault) return 0;
  std::vector<EditObject> again;
  if (ReadEditText(WriteEditText(read), again) || again.size() != read.size()) std::abort();
  for (std::size_t object = 0; object < read.size(); ++object) {
    const bool is_same =
        std::ranges::equal(read[object].fields, again[object].fields,
                           [](const EditField& left, const EditField& right) {
                             return left.name == right.name && left.values == right.values;
                           });
    if (!is_same) std::abort();
  }
  return 0;
}
