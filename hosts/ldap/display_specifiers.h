// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "server/console_registration.h"

namespace pelora::ldap {

/// Which of the module's component classes a directory's display specifiers name for its classes,
/// as the directory console reads them. A fresh one names none.
class DisplaySpecifiers {
 public:
  /// Reads the specifiers of a language, a folder's name such as "409", in one search. A directory
  /// that has no such folder names none. A failure leaves `specifiers` as it was.
  static StoreStatus Read(IDirectoryStore& store, std::string_view language,
                          DisplaySpecifiers& specifiers);

  /// The component classes of a directory class in a role, by the order numbers with which they are
  /// registered; equal numbers keep the directory's order. Where the directory registers none of
  /// the module's classes, those that the module has for the directory class. Classes of other
  /// makers are left out.
  [[nodiscard]] std::vector<Guid> ComponentsOf(std::string_view object_class,
                                               ConsoleRole role) const;

 private:
  /// By directory class and the specifier's attribute.
  using Attributes = std::map<std::string, std::vector<Guid>, AttributeNameLess>;
  std::map<std::string, Attributes, AttributeNameLess> registered_;
};

}  // namespace pelora::ldap
