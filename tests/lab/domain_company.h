// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "tests/lab/lab_administrator.h"

namespace pelora::lab {

/// A copy of the sample company in the lab's domain: its units, users, computers, contacts, groups
/// and lists, with the attributes that tabs read. Making it takes some seconds; what a test does to
/// an object of it can be undone.
class DomainCompany {
 public:
  DomainCompany();
  /// The one of this program, made when it is first asked for.
  [[nodiscard]] static DomainCompany& Shared();

  /// The name that stands for the sample company's own.
  [[nodiscard]] static std::string Base();

  /// Remembers an object as it is now, unless it is remembered already.
  void Remember(const std::string& dn);
  /// Gives an object these values, after remembering it; attributes without any are taken away.
  void Give(const std::string& dn, const Attributes& values);
  /// Sets back what has become different on remembered objects, and forgets them.
  void Restore();

 private:
  LabAdministrator administrator_;
  std::map<std::string, Attributes> before_;
};

/// What the domain's own search tool reads of the catalogue's attributes of an object.
[[nodiscard]] Attributes StoredInDomain(const std::string& dn);

}  // namespace pelora::lab
