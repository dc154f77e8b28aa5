// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ads_path.h"

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kScheme = "LDAP://";
constexpr std::string_view kRoot = "rootDSE";

/// Where the first `wanted` stands that is not escaped.
std::size_t FindBare(std::string_view text, char wanted) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == wanted) {
      return at;
    }
  }
  return std::string_view::npos;
}

/// Splits off what stands in front of "/"; a part of a distinguished name is no server.
std::string_view TakeServer(std::string_view& rest) {
  const std::size_t slash = FindBare(rest, '/');
  if (slash == std::string_view::npos || slash == 0) return {};
  const std::string_view server = rest.substr(0, slash);
  if (server.find('=') != std::string_view::npos) return {};
  rest.remove_prefix(slash + 1);
  return server;
}

bool IsRdn(std::string_view rdn) {
  const std::size_t equals = rdn.find('=');
  return equals != std::string_view::npos && equals > 0 && equals + 1 < rdn.size();
}

bool IsName(std::string_view name) {
  while (true) {
    const std::size_t comma = FindBare(name, ',');
    if (!IsRdn(name.substr(0, comma))) return false;
    if (comma == std::string_view::npos) return true;
    name.remove_prefix(comma + 1);
  }
}

/// Drops the backslash of `\/`; every other escape belongs to the name.
std::string BareSlashes(std::string_view escaped) {
  std::string name;
  name.reserve(escaped.size());
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    if (escaped[at] == '\\' && at + 1 < escaped.size()) {
      if (escaped[at + 1] != '/') name += escaped[at];
      ++at;
    }
    name += escaped[at];
  }
  return name;
}

}  // namespace

std::string AdsPathOf(std::string_view dn, std::string_view server) {
  std::string path(kScheme);
  if (!server.empty()) path.append(server) += '/';
  for (std::size_t at = 0; at < dn.size(); ++at) {
    if (dn[at] == '/') path += '\\';
    path += dn[at];
    if (dn[at] == '\\' && at + 1 < dn.size()) path += dn[++at];
  }
  return path;
}

HRESULT ParseAdsPath(std::string_view path, AdsPath& parsed) {
  parsed = {};
  if (!path.starts_with(kScheme)) return E_ADS_BAD_PATHNAME;
  std::string_view rest = path.substr(kScheme.size());
  const std::string_view server = TakeServer(rest);
  const bool is_root = EqualsWithoutCase(rest, kRoot);
  const bool is_name = FindBare(rest, '/') == std::string_view::npos && IsName(rest);
  if (!is_root && !is_name) return E_ADS_BAD_PATHNAME;
  parsed = {.server = std::string(server),
            .dn = is_root ? std::string() : BareSlashes(rest),
            .is_root = is_root};
  return S_OK;
}

}  // namespace pelora::ldap
