// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "directory/ascii_case.h"
#include "server/class_table.h"
#include "server/component_server.h"

namespace pelora {
namespace {

/// One tab of one directory class.
struct DefaultTab {
  std::string_view object_class;
  std::string_view component_class;
};

// Tabs of one class stand in the order in which a sheet shows them.
constexpr std::array kDefaultTabs = {
    DefaultTab{"user", "CPropPageUser"},
    DefaultTab{"inetOrgPerson", "CPropPageUser"},
};

}  // namespace

std::vector<Guid> DefaultTabs(std::string_view object_class) {
  std::vector<Guid> tabs;
  for (const DefaultTab& tab : kDefaultTabs) {
    if (!EqualsWithoutCase(tab.object_class, object_class)) continue;
    const ComponentClass* component = FindClass(tab.component_class);
    if (component != nullptr && component->create != nullptr) tabs.push_back(component->class_id);
  }
  return tabs;
}

}  // namespace pelora
