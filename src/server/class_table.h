// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/platform.h"

namespace pelora {

/// What a component class is to the console.
enum class ComponentKind : std::uint8_t {
  /// Offers `IShellExtInit` and `IShellPropSheetExt`.
  kPropertyPage,
  /// Offers `IDsAdminNewObjExt`.
  kWizardPage,
};

/// One component class of the module.
struct ComponentClass {
  std::string_view name;
  std::string_view prog_id;
  std::string_view version_independent_prog_id;
  Guid class_id;
  /// Makes an object with one reference, which the caller owns. Every class has it.
  IUnknown* (*create)(const Platform& platform) = nullptr;
  ComponentKind kind = ComponentKind::kPropertyPage;
};

/// Every component class, in the order in which they are registered.
[[nodiscard]] std::span<const ComponentClass> ClassTable();

/// The class of an identifier or name; null when there is none.
[[nodiscard]] const ComponentClass* FindClass(const Guid& class_id);
[[nodiscard]] const ComponentClass* FindClass(std::string_view name);

}  // namespace pelora
