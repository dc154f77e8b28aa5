// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/server_name.h"

#include <algorithm>
#include <charconv>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kHostLetters = "abcdefghijklmnopqrstuvwxyz0123456789-._";
constexpr std::string_view kAddressLetters = "abcdef0123456789:.";

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), AsciiLowerCase);
  return lower;
}

bool IsHost(std::string_view host) {
  if (host.starts_with('[') && host.ends_with(']')) {
    host = host.substr(1, host.size() - 2);
    return host.find(':') != std::string_view::npos &&
           host.find_first_not_of(kAddressLetters) == std::string_view::npos;
  }
  return !host.empty() && host.front() != '.' && host.back() != '.' &&
         host.find("..") == std::string_view::npos &&
         host.find_first_not_of(kHostLetters) == std::string_view::npos;
}

std::optional<std::uint16_t> ParsePort(std::string_view text) {
  std::uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, port);
  if (error != std::errc() || stop != end || port == 0) return std::nullopt;
  return port;
}

}  // namespace

std::string ServerName::Text() const {
  return port == kDirectoryPort ? host : host + ':' + std::to_string(port);
}

std::string ServerName::BareHost() const {
  return host.starts_with('[') ? host.substr(1, host.size() - 2) : host;
}

std::string ServerName::Uri() const { return "ldap://" + host + ':' + std::to_string(port); }

std::optional<ServerName> ParseServerName(std::string_view text) {
  // The colons of an address stand within its brackets.
  const std::size_t address_end = text.starts_with('[') ? text.find(']') : 0;
  if (address_end == std::string_view::npos) return std::nullopt;
  const std::size_t colon = text.find(':', address_end);
  ServerName server{.host = LowerCase(text.substr(0, colon))};
  if (server.host.ends_with('.')) server.host.pop_back();
  if (!IsHost(server.host)) return std::nullopt;
  if (colon == std::string_view::npos) return server;
  const std::optional<std::uint16_t> port = ParsePort(text.substr(colon + 1));
  if (!port) return std::nullopt;
  server.port = *port;
  return server;
}

}  // namespace pelora::ldap
