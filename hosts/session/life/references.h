// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/fields/field_catalogue.h"

namespace pelora::session {

/// An attribute by which objects refer to others.
struct ReferringAttribute {
  /// How it refers to them.
  enum class By : std::uint8_t {
    /// A distinguished name of which the directory knows that it is one: it follows an object that
    /// is renamed or moved.
    kName,
    /// A distinguished name that is a text to the directory, and stays as it is.
    kTextOfName,
    /// The `cn` of a computer.
    kServer,
  };
  std::string attribute;
  /// What the tab calls the field.
  std::string label;
  By by = By::kName;
};

/// The attributes by which the objects with tabs refer to others, as the rows of the tabs and the
/// directory's schema say, and the members of groups.
[[nodiscard]] std::vector<ReferringAttribute> ReferringAttributes(FieldCatalogue& catalogue,
                                                                  const ldap::Schema& schema);

/// What objects refer to.
struct ReferenceTargets {
  /// Objects by their distinguished names.
  std::vector<std::string> objects{};
  /// Whether all that lies below them is meant, too.
  bool with_all_below = false;
  /// Computers by their `cn`.
  std::vector<std::string> servers{};
};

/// One object that refers to another.
struct Reference {
  std::string holder_dn;
  /// What the object that refers is called, and the field in which it does.
  std::string holder;
  std::string field;
  /// What it refers to, as it is written there.
  std::string target;
};

/// Takes found references one by one; false ends the search (which is then done, not failed).
using ReferenceSink = std::function<bool(Reference reference)>;

/// Finds what refers to objects, in the whole directory: one search for each attribute.
ldap::StoreStatus FindReferences(ldap::IDirectoryStore& store,
                                 const std::vector<ReferringAttribute>& attributes,
                                 const ReferenceTargets& targets, const ReferenceSink& sink);

}  // namespace pelora::session
