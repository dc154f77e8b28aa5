// SPDX-License-Identifier: Apache-2.0
// Takes any bytes for what somebody types: to find objects by, for the name of a new one, for a
// number. Whatever is made of them is well-formed and means them. The first byte says which.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "directory/utf.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/check/search_query.h"
#include "hosts/session/distinguished_name.h"
#include "hosts/session/find/find_text.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/text.h"
#include "hosts/session/typed/typed_address.h"
#include "hosts/session/typed/typed_number.h"
#include "hosts/session/typed/typed_query.h"
#include "hosts/session/utf8_check.h"

namespace {

using namespace pelora;

void Require(bool holds) {
  if (!holds) std::abort();
}

constexpr std::string_view kDigits = "0123456789abcdef";

/// Every byte as `\xx`.
std::string InHexadecimal(std::string_view text) {
  std::string written;
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    written += {'\\', kDigits[code >> 4U], kDigits[code & 0xFU]};
  }
  return written;
}

/// What a filter's value stands for.
std::string Unescaped(std::string_view value) {
  std::string bytes;
  for (std::size_t at = 0; at < value.size(); ++at) {
    if (value[at] != '\\') {
      Require(value[at] != '(' && value[at] != ')' && value[at] != '*' && value[at] != '\0');
      bytes += value[at];
      continue;
    }
    Require(at + 2 < value.size());
    const std::size_t high = kDigits.find(value[at + 1]);
    const std::size_t low = kDigits.find(value[at + 2]);
    Require(high != kDigits.npos && low != kDigits.npos);
    bytes += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return bytes;
}

/// Somebody who types anything but divisions looks for something.
void FeedFind(const std::string& text) {
  const session::FindText find(text);
  const bool asks = text.find_first_not_of(" \t\r\n\v\f;,\"<>\\") != std::string::npos;
  const std::string trimmed = session::Trimmed(text);
  if (asks && !trimmed.empty()) Require(!find.IsEmpty());
  if (!find.words().empty()) {
    Require(session::IsSearchQuery(session::FilterOfWords(find.words())));
  }
  Require(find.items().size() <= session::FindText::kMostItems);
  for (const session::FindText::Item& item : find.items()) {
    Require(!item.given.empty() && item.is_dn == item.names.empty());
    if (!item.is_dn) {
      Require(session::IsSearchQuery("(|" + session::FilterOfNames(item) + ")"));
    }
  }
}

void FeedFilters(const std::string& text) {
  Require(Unescaped(session::EscapeFilterValue(text)) == text);
  Require(session::IsSearchQuery(session::WithoutHidden(session::ContainerFilter())));
}

/// The name of a new object lies where it is to, and is the one that was typed.
void FeedName(const std::string& text) {
  const std::string folder = "OU=x,DC=y";
  const std::string name = ldap::ChildName(folder, "user", text);
  Require(session::ParentName(name) == folder);
  Require(session::IsDistinguishedName(name));
  Require(ldap::NameKey(name) == ldap::NameKey("cn=" + InHexadecimal(text) + ", ou=X , dc=Y"));
  Require(ldap::NameKey(name) != ldap::NameKey(ldap::ChildName(folder, "user", text + "z")));
}

void FeedNumber(const std::string& text) {
  if (const auto number = session::NumberOfDigits(text)) {
    Require(*number >= 0 && *number <= session::kLargestNumber);
    Require(session::NumberOfDigits(std::to_string(*number)) == number);
  }
  if (const auto megabytes = session::MegabytesOf(text)) {
    Require(*megabytes >= 0 && *megabytes <= session::kLargestNumber);
    Require(session::JudgeMegabytes(text).verdict != session::Verdict::kWrong);
  }
  const session::Judgement judgement = session::JudgeMegabytes(text);
  if (!judgement.meant.empty()) {
    Require(session::NumberOfDigits(judgement.meant) == session::MegabytesOf(text));
  }
  (void)session::JudgeNumber(text);
  (void)session::JudgePort(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  // A keyboard types characters.
  if (session::FirstInvalidByte(text)) return 0;
  switch (data[0] % 4) {
    case 0:
      FeedFind(text);
      break;
    case 1:
      FeedFilters(text);
      break;
    case 2:
      FeedName(text);
      break;
    default:
      FeedNumber(text);
      break;
  }
  return 0;
}
