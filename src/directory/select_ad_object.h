// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/choosers.h"
#include "platform/platform.h"

namespace pelora {

/// How many objects the administrator may choose.
enum class SelectionMode : std::uint8_t { kMultiple, kSingle };

/// Lets the administrator choose directory objects and gives them in the form in which fields store
/// them. Made for one choice; holds no state.
///
/// A result is to be used when the status is `S_OK` and there is one: a choice that fails or is
/// cancelled (`E_INVALIDARG`; `E_FAIL` in the container browser) leaves what the caller passed in
/// as it was. Nothing is shown here but the chooser itself.
class SelectADObject {
 public:
  /// One of the choices below that give names of objects.
  using Choice = HRESULT (SelectADObject::*)(ChooserOwner owner, std::vector<std::string>& names,
                                             SelectionMode mode) const;

  explicit SelectADObject(const Platform& platform) : platform_(platform) {}
  virtual ~SelectADObject() = default;
  SelectADObject(const SelectADObject&) = delete;
  SelectADObject& operator=(const SelectADObject&) = delete;

  /// Distinguished names of users, of users and groups, of groups, in the picker's order. An object
  /// that cannot be bound or has no such name fails the whole choice.
  [[nodiscard]] HRESULT SelectUsers(ChooserOwner owner, std::vector<std::string>& names,
                                    SelectionMode mode) const;
  [[nodiscard]] HRESULT SelectUsersAndGroups(ChooserOwner owner, std::vector<std::string>& names,
                                             SelectionMode mode) const;
  [[nodiscard]] HRESULT SelectGroups(ChooserOwner owner, std::vector<std::string>& names,
                                     SelectionMode mode) const;
  /// The `cn` of computers: names of servers.
  [[nodiscard]] HRESULT SelectComputers(ChooserOwner owner, std::vector<std::string>& names,
                                        SelectionMode mode) const;
  /// Distinguished names of containers, found by a query.
  [[nodiscard]] HRESULT SelectContainers(ChooserOwner owner, std::vector<std::string>& names,
                                         SelectionMode mode) const;
  /// The distinguished name of a container, chosen from the tree of the whole directory. The tree's
  /// window has no owner.
  [[nodiscard]] HRESULT BrowseContainer(std::string& name) const;

 private:
  /// The searches of the object picker; numbers are rows of the table of set-ups.
  enum class Search : std::uint8_t { kUsers, kUsersAndGroups, kGroups, kComputers };

  [[nodiscard]] HRESULT PickObjects(Search search, ChooserOwner owner,
                                    std::vector<std::string>& names, SelectionMode mode) const;
  [[nodiscard]] HRESULT ReadName(const std::string& path, std::string_view attribute,
                                 std::string& name) const;

  const Platform& platform_;
};

/// The distinguished name in a path: without its first seven characters ("LDAP://") and, if what is
/// left holds a "/", without everything up to the first one. The scheme is not checked.
[[nodiscard]] std::string StripPath(std::string_view path);

}  // namespace pelora
