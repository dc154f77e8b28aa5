// SPDX-License-Identifier: Apache-2.0
// Feeds the resource file's reader and the dialog template's: whatever comes, they read nothing
// outside and either give something or say why not.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "hosts/resources/resource_file.h"

namespace {

template <class T>
void ExpectValueOrError(const pelora::resources::ReadResult<T>& result) {
  if (result.value.has_value() != result.error.empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
  ExpectValueOrError(pelora::resources::ReadDialogTemplate(bytes));
  const auto file = pelora::resources::ResourceFile::Read(bytes);
  ExpectValueOrError(file);
  if (!file.value) return 0;
  for (const pelora::resources::Resource& resource : file.value->resources()) {
    ExpectValueOrError(pelora::resources::ReadDialogTemplate(resource.data));
    const auto* number = std::get_if<std::uint16_t>(&resource.name);
    if (number != nullptr) (void)file.value->StringEntry(static_cast<std::uint16_t>(*number * 16));
  }
  return 0;
}
