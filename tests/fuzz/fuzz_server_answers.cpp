// SPDX-License-Identifier: Apache-2.0
// Feeds the readers of what servers publish: whatever comes, they read nothing outside and give
// nothing that makes no sense. The first byte chooses the reader.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/network/server_name.h"
#include "hosts/ldap/network/service_records.h"
#include "hosts/ldap/network/subschema.h"
#include "hosts/ldap/network/value_ranges.h"

namespace {

using namespace pelora::ldap;

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Each attribute that is taken in can be found, by any case.
void FeedSubschema(const std::string& text) {
  const Schema schema = ReadSubschema({text}, {text});
  for (const auto& [name, type] : schema.types()) {
    Require(!name.empty() && schema.Find(name).has_value());
    Require(schema.SpellingOf(name) == name);
  }
}

void FeedRecords(std::span<const std::uint8_t> bytes) {
  std::vector<ServiceRecord> records = ReadServiceRecords(bytes);
  const std::size_t count = records.size();
  OrderServiceRecords(records, [](std::uint32_t most) { return most / 2; });
  Require(records.size() == count);
  for (std::size_t at = 1; at < count; ++at) {
    Require(records[at - 1].priority <= records[at].priority);
  }
}

/// A name that was read can be read again, and stays the same.
void FeedServerName(const std::string& text) {
  const auto server = ParseServerName(text);
  if (server) Require(ParseServerName(server->Text()) == server);
}

/// Nothing gets lost, and no mark of a range is left.
void FeedRanges(const std::string& text) {
  AttributeMap attributes = {{text, {"value"}}, {"member", {"first"}}};
  std::vector<UnfinishedAttribute> unfinished;
  if (!FileRanges(attributes, 0, unfinished)) return;
  std::size_t count = 0;
  for (const auto& [name, values] : attributes) count += values.size();
  Require(count >= 1 && unfinished.size() <= 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::span<const std::uint8_t> bytes(data + 1, size - 1);
  const std::string text(bytes.begin(), bytes.end());
  switch (data[0] % 4) {
    case 0:
      FeedSubschema(text);
      break;
    case 1:
      FeedRecords(bytes);
      break;
    case 2:
      FeedServerName(text);
      break;
    default:
      FeedRanges(text);
      break;
  }
  return 0;
}
