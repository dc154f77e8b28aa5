// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/guid.h"

namespace pelora {

/// What the console uses a component class for.
enum class ConsoleRole : std::uint8_t {
  /// A tab of the property sheet of one object.
  kPropertyPage,
  /// A tab of the property sheet of several objects.
  kMultiselectPropertyPage,
  /// The wizard that makes objects of a class for which the console has none.
  kCreationWizard,
  /// A page of the wizard that makes objects of a class.
  kCreationWizardExtension,
};

/// One component class in its role for one directory class.
struct ConsoleRegistration {
  /// LDAP display name.
  std::string_view object_class;
  ConsoleRole role = ConsoleRole::kPropertyPage;
  std::string_view component_class;
};

/// Every registration of the module. Those of one directory class in one role stand in the order in
/// which the console shows them.
[[nodiscard]] std::span<const ConsoleRegistration> ConsoleRegistrations();

/// The directory classes that have registrations, each once.
[[nodiscard]] std::vector<std::string_view> RegisteredObjectClasses();

/// The component classes that a directory class gets in a role where the directory registers none,
/// in the order in which they are shown. `object_class` is the most specific class's LDAP display
/// name, compared without case; classes that are not known get none. Component classes that cannot
/// be made are left out.
[[nodiscard]] std::vector<Guid> DefaultRegistrations(std::string_view object_class,
                                                     ConsoleRole role);

}  // namespace pelora
