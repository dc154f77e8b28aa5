// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/primary_group.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"

namespace pelora::session {
namespace {

/// The last part of a security identifier, lowest byte first, is an object's number in its domain.
constexpr std::size_t kNumberBytes = 4;
/// A version, a count and an authority stand before the parts.
constexpr std::size_t kHead = 8;

bool IsIdentifier(const std::string& sid) { return sid.size() >= kHead + kNumberBytes; }

std::string EscapedBytes(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char letter : bytes) {
    const auto byte = static_cast<unsigned char>(letter);
    text += {'\\', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
  }
  return text;
}

std::string DomainOf(ldap::IDirectoryStore& store) {
  ldap::Entry root;
  return store.ReadRoot(root).Ok() ? ldap::FirstValue(root, "defaultNamingContext") : std::string();
}

/// The first object that a filter finds in the domain; empty when there is none.
std::string FirstOf(ldap::IDirectoryStore& store, const std::string& filter) {
  std::string found;
  const ldap::SearchRequest request{.base = DomainOf(store),
                                    .scope = ldap::SearchScope::kSubtree,
                                    .filter = filter,
                                    .attributes = {"cn"}};
  (void)store.Search(request, [&found](ldap::Entry entry) {
    found = std::move(entry.dn);
    return false;
  });
  return found;
}

}  // namespace

std::string PrimaryGroupOf(ldap::IDirectoryStore& store, const std::string& dn) {
  const std::string attributes[] = {"primaryGroupID", "objectSid"};
  ldap::Entry entry;
  if (!store.Read(dn, attributes, entry).Ok()) return {};
  std::string sid = ldap::FirstValue(entry, "objectSid");
  const std::optional<std::int64_t> number =
      ldap::ParseLargeInteger(ldap::FirstValue(entry, "primaryGroupID"));
  if (!number || !IsIdentifier(sid)) return {};
  sid.resize(sid.size() - kNumberBytes);
  for (std::size_t byte = 0; byte < kNumberBytes; ++byte) {
    sid += static_cast<char>(static_cast<std::uint64_t>(*number) >> (8 * byte) & 0xFFU);
  }
  return FirstOf(store, "(objectSid=" + EscapedBytes(sid) + ")");
}

bool IsSomebodysPrimaryGroup(ldap::IDirectoryStore& store, const std::string& sid) {
  if (!IsIdentifier(sid)) return false;
  std::uint32_t number = 0;
  for (std::size_t byte = 0; byte < kNumberBytes; ++byte) {
    const char letter = sid[sid.size() - kNumberBytes + byte];
    number |= std::uint32_t{static_cast<unsigned char>(letter)} << (8 * byte);
  }
  return !FirstOf(store, "(primaryGroupID=" + std::to_string(number) + ")").empty();
}

}  // namespace pelora::session
