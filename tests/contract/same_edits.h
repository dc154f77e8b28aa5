// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "tests/contract/tab_scripts.h"

// The same edits by every face, the module in the system's sheets, the console and the command
// line, and the one dump that all of them leave.
//
// A dump holds what is different from the sample company, object by object, of the attributes that
// the extension reads or writes: what each directory writes down of every change, and what it makes
// up itself, is its own. Values of a list stand in order; an attribute without values is one that
// is not set.
//
// The module writes what a page stages whether it was touched or not, the others do not: the edits
// touch whatever is always staged.

namespace pelora::contract {

/// What is done on one tab of some objects of the sample company.
struct SameEdit {
  std::string component;
  std::vector<std::string> objects;
  std::vector<TabStep> steps;
  /// The same for the command line: assignments of one command after the other.
  std::vector<std::vector<std::string>> commands;
};

/// To be made in this order.
[[nodiscard]] const std::vector<SameEdit>& SameEdits();
/// What they leave.
[[nodiscard]] std::string_view SameEditsDump();

/// Values of attributes by the attributes' names, as text.
using DumpedValues = std::map<std::string, std::vector<std::string>>;
/// Gives what a directory holds of the catalogue's attributes of an object.
using DumpedObject = std::function<DumpedValues(const std::string& name)>;

/// What is different from the sample company in a directory.
[[nodiscard]] std::string DumpOf(const DumpedObject& stored);

/// A user who is made in each wizard: a room for twelve, hidden, with an address and a server.
struct SameNewUser {
  static constexpr const char* kName = "Saal Zwölf";
  static constexpr const char* kLogonName = "saal12";
  static constexpr const char* kAddress = "saal12@linden-werke.example";
  static constexpr const char* kServer =
      "CN=mail02,OU=Groupware Servers,DC=linden-werke,DC=example";
  static constexpr const char* kCapacity = "12";
};
/// What the extension's page has written of it: the attributes of the catalogue, but for those that
/// the console's own page or the directory gives it.
inline constexpr std::string_view kSameNewUserDump =
    "mail: saal12@linden-werke.example\n"
    "peloraAccount: 1\n"
    "peloraAdmin: 0\n"
    "peloraHidden: 1\n"
    "peloraResourceCapacity: 12\n"
    "peloraResourceType: room\n"
    "peloraSharedStoreOnly: 1\n"
    "peloraUserServer: mail02\n";

/// The lines of such a dump. `stored` gives an attribute's values.
[[nodiscard]] inline std::string NewUserDump(
    const std::function<std::vector<std::string>(std::string_view attribute)>& stored) {
  std::map<std::string, std::string> lines;
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (attribute.multi_selection == MultiSelectionRule::kNeverWritten) continue;
    for (const std::string& value : stored(attribute.name)) {
      lines[std::string(attribute.name)] += std::string(attribute.name) + ": " + value + "\n";
    }
  }
  std::string dump;
  for (const auto& [name, line] : lines) dump += line;
  return dump;
}

}  // namespace pelora::contract
