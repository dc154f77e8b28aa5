// SPDX-License-Identifier: Apache-2.0
// Takes any bytes for a record of a directory file, as the library unpacks it, and feeds our
// readers with what it makes of that. The first byte chooses the form of the record: the two that
// the library knows begin with a number of their own.
#include <talloc.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/ldb_api.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/ldb_schema.h"

// The library offers it to its modules alone, whose header is not installed.
extern "C" int ldb_unpack_data(ldb_context* context, const ldb_val* data, ldb_message* message);

namespace {

using namespace pelora::ldap;

void Require(bool holds) {
  if (!holds) std::abort();
}

struct Free {
  void operator()(void* memory) const { talloc_free(memory); }
};

constexpr std::array<std::array<std::uint8_t, 4>, 2> kForms = {
    {{0x67, 0x19, 0x01, 0x26}, {0x68, 0x19, 0x01, 0x26}}};

/// Whatever stands in it, an entry is read, and is no attribute of the schema without a name.
void Read(const ldb_message& message) {
  const Entry entry = ToEntry(message);
  Schema schema;
  const StoreStatus status = AddToSchema(entry, schema);
  Require(status.Ok() == (schema.types().size() == 1));
  for (const auto& [name, type] : schema.types()) {
    Require(!name.empty() && schema.Find(name).has_value());
  }
  const Entry record = MakeAttributesRecord(schema);
  Require(record.attributes.size() <= schema.types().size());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // Sanitizers do not get along with the way in which the library binds its modules' symbols.
  return setenv("LDB_MODULES_DISABLE_DEEPBIND", "1", 1);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const std::unique_ptr<ldb_context, Free> kContext(ldb_init(nullptr, nullptr));
  std::vector<std::uint8_t> bytes(kForms[data[0] % 2].begin(), kForms[data[0] % 2].end());
  bytes.insert(bytes.end(), data + 1, data + size);
  const std::unique_ptr<ldb_message, Free> message(ldb_msg_new(kContext.get()));
  const ldb_val record{.data = bytes.data(), .length = bytes.size()};
  if (ldb_unpack_data(kContext.get(), &record, message.get()) == 0) Read(*message);
  return 0;
}
