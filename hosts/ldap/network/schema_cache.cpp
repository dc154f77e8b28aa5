// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/schema_cache.h"

#include <utility>

namespace pelora::ldap {

std::shared_ptr<const Schema> SchemaCache::Find(const ServerName& server,
                                                const std::string& state) const {
  const std::lock_guard lock(mutex_);
  const auto kept = schemas_.find(server);
  return kept != schemas_.end() && kept->second.state == state ? kept->second.schema : nullptr;
}

void SchemaCache::Keep(const ServerName& server, const std::string& state,
                       std::shared_ptr<const Schema> schema) {
  if (state.empty()) return;
  const std::lock_guard lock(mutex_);
  schemas_.insert_or_assign(server, Kept{.state = state, .schema = std::move(schema)});
}

}  // namespace pelora::ldap
