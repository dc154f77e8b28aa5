// SPDX-License-Identifier: Apache-2.0
#include "directory/attribute_writer.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace pelora {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

bool CanBeWritten(const AttributeChange& change) {
  switch (change.type) {
    case ChangeType::kMultiValued:
      return !change.variant.IsEmpty();
    case ChangeType::kInteger:
    case ChangeType::kString:
      return true;
  }
  return false;
}

HRESULT WriteList(IADs& object, AttributeChange& change) {
  // The array belongs to the change and goes with its first write.
  const Variant values = std::exchange(change.variant, Variant());
  return object.Put(change.name, values);
}

HRESULT WriteText(IADs& object, const AttributeChange& change, bool clear_empty) {
  const bool is_integer = change.type == ChangeType::kInteger;
  const Variant value =
      is_integer ? Variant::Integer(ParseUnsigned(change.value)) : Variant::String(change.value);
  if (!change.value.empty()) return object.Put(change.name, value);
  if (!clear_empty) return S_OK;
  return object.PutEx(ADS_PROPERTY_CLEAR, change.name, value);
}

}  // namespace

std::int32_t ParseUnsigned(std::string_view text) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::uint64_t number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') break;
    number = number * 10 + static_cast<std::uint64_t>(digit - '0');
    if (number > kLargest) return static_cast<std::int32_t>(static_cast<std::uint32_t>(kLargest));
  }
  const auto bits = static_cast<std::uint32_t>(number);
  return static_cast<std::int32_t>(negative ? 0U - bits : bits);
}

HRESULT WriteAttribute(IADs& object, AttributeChange& change, bool clear_empty) {
  if (change.skip) return S_OK;
  if (!CanBeWritten(change)) return S_ADS_ERRORSOCCURRED;
  const HRESULT status = change.type == ChangeType::kMultiValued
                             ? WriteList(object, change)
                             : WriteText(object, change, clear_empty);
  // The directory's own success codes, that of the refusal above among them, stop nothing.
  return FAILED(status) ? status : S_OK;
}

}  // namespace pelora
