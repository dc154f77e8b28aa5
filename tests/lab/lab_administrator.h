// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

struct ldap;

namespace pelora::lab {

/// Attribute values by name.
using Attributes = std::map<std::string, std::vector<std::string>>;

/// Another administrator of the lab's domain, who works past everything that is tested: through the
/// LDAP library's plain calls, on a connection of his own. What he cannot do throws.
class LabAdministrator {
 public:
  /// Works with a server: the domain's first one unless another is named.
  explicit LabAdministrator(std::string server = {});
  ~LabAdministrator();
  LabAdministrator(const LabAdministrator&) = delete;
  LabAdministrator& operator=(const LabAdministrator&) = delete;

  /// After the server has been away.
  void Reconnect();

  void Add(const std::string& dn, const Attributes& attributes);
  void Remove(const std::string& dn);
  /// Gives an attribute exactly these values; none removes it.
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values);
  /// What is stored on an object, but for what the directory writes down of every change.
  [[nodiscard]] Attributes Stored(const std::string& dn);

 private:
  struct Impl;
  std::string server_;
  std::unique_ptr<Impl> impl_;
};

}  // namespace pelora::lab
