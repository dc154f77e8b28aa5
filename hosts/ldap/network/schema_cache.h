// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "hosts/ldap/network/server_name.h"
#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// The schemas of servers that have been read, for the connections that a program opens to them. A
/// schema is known by its server and by the server's own mark of its state, which changes with
/// every extension. May be used on several threads.
class SchemaCache {
 public:
  /// Null when the schema of this state has not been kept.
  [[nodiscard]] std::shared_ptr<const Schema> Find(const ServerName& server,
                                                   const std::string& state) const;
  /// Keeps a schema in place of the server's earlier one. An empty state says nothing, and is not
  /// kept.
  void Keep(const ServerName& server, const std::string& state,
            std::shared_ptr<const Schema> schema);

 private:
  struct Kept {
    std::string state;
    std::shared_ptr<const Schema> schema;
  };
  mutable std::mutex mutex_;
  std::map<ServerName, Kept> schemas_;
};

}  // namespace pelora::ldap
