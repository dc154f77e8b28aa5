// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/domain_servers.h"

#include <arpa/nameser.h>
#include <netdb.h>
#include <netinet/in.h>
#include <resolv.h>

#include <algorithm>
#include <optional>
#include <random>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/service_records.h"

namespace pelora::ldap {
namespace {

/// What a domain's servers are registered under, the first of which is theirs alone.
std::vector<std::string> ServicesOf(const std::string& domain, const std::string& site) {
  if (site.empty()) return {"_ldap._tcp.dc._msdcs." + domain, "_ldap._tcp." + domain};
  return {"_ldap._tcp." + site + "._sites.dc._msdcs." + domain};
}

/// Many servers make a long answer.
constexpr std::size_t kLongestAnswer = 65'535;

class Resolver {
 public:
  explicit Resolver(std::chrono::milliseconds timeout) : is_ready_(res_ninit(&state_) == 0) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeout);
    state_.retrans = static_cast<int>(std::max<std::int64_t>(1, seconds.count()));
    state_.retry = 1;
  }
  Resolver(const Resolver&) = delete;
  Resolver& operator=(const Resolver&) = delete;
  ~Resolver() {
    if (is_ready_) res_nclose(&state_);
  }

  std::vector<ServiceRecord> Ask(const std::string& name, std::string& trouble) {
    std::vector<unsigned char> answer(kLongestAnswer);
    const int length = is_ready_ ? res_nquery(&state_, name.c_str(), ns_c_in, ns_t_srv,
                                              answer.data(), static_cast<int>(answer.size()))
                                 : -1;
    if (length < 0) {
      trouble = is_ready_ ? hstrerror(state_.res_h_errno) : "the resolver cannot be set up";
      return {};
    }
    answer.resize(std::min(answer.size(), static_cast<std::size_t>(length)));
    return ReadServiceRecords(answer);
  }

 private:
  struct __res_state state_ {};
  bool is_ready_;
};

/// Who offers the first of some services that anybody offers; `what` is of which they are servers.
StoreStatus FindServers(const std::vector<std::string>& services, const std::string& what,
                        std::chrono::milliseconds timeout, std::vector<ServerName>& servers) {
  servers.clear();
  Resolver resolver(timeout);
  std::vector<ServiceRecord> records;
  std::string trouble;
  for (const std::string& service : services) {
    records = resolver.Ask(service, trouble);
    if (!records.empty()) break;
  }
  std::mt19937 generator{std::random_device{}()};
  OrderServiceRecords(records, [&](std::uint32_t most) {
    return std::uniform_int_distribution<std::uint32_t>(0, most)(generator);
  });
  for (const ServiceRecord& record : records) {
    std::optional<ServerName> server = ParseServerName(record.host);
    if (!server) continue;
    server->port = record.port;
    if (std::ranges::find(servers, *server) == servers.end()) {
      servers.push_back(*std::move(server));
    }
  }
  if (!servers.empty()) return {};
  std::string text =
      "the name servers know no directory server of " + what + " (" + services.front() + ")";
  if (!trouble.empty()) text += ": " + trouble;
  return {kLdapServerDown, std::move(text)};
}

}  // namespace

std::string DomainOfRealm(const std::string& realm) {
  std::string domain(realm);
  std::ranges::transform(domain, domain.begin(), AsciiLowerCase);
  return domain;
}

std::string RealmOfDomain(const std::string& domain) {
  std::string realm(domain);
  std::ranges::transform(realm, realm.begin(), AsciiUpperCase);
  return realm;
}

StoreStatus FindDomainServers(const std::string& realm, const std::string& site,
                              std::chrono::milliseconds timeout, std::vector<ServerName>& servers) {
  const std::string domain = DomainOfRealm(realm);
  const std::string place = site.empty() ? "" : "the site '" + site + "' of ";
  return FindServers(ServicesOf(domain, site), place + "the domain '" + domain + "'", timeout,
                     servers);
}

StoreStatus FindCatalogServers(const std::string& forest, std::chrono::milliseconds timeout,
                               std::vector<ServerName>& servers) {
  return FindServers({"_ldap._tcp.gc._msdcs." + forest, "_gc._tcp." + forest},
                     "the global catalog of '" + forest + "'", timeout, servers);
}

}  // namespace pelora::ldap
