// SPDX-License-Identifier: Apache-2.0
// What can be wrong with names of other objects and of servers.
#include "hosts/session/check/rule_functions.h"

namespace pelora::session::rules {
namespace {

/// The archive servers' list holds what a server's field holds, several times.
constexpr std::string_view kArchiveServers = "peloraUserArchiveServers";
constexpr std::string_view kBase = "peloraBase";
constexpr std::string_view kSystemAdmin = "peloraSystemAdmin";

void LookAtServers(const CheckedObject& object, std::string_view attribute, CheckNotes& notes) {
  for (const std::string& name : object.Values(attribute)) {
    notes.Names(attribute, name, Named::kIsServer);
  }
}

}  // namespace

std::vector<std::string> ServerAttributes(const CheckFields& fields) {
  std::vector<std::string> names = fields.server_attributes();
  names.emplace_back(kArchiveServers);
  return names;
}

std::vector<std::string> NameAttributes(const CheckFields& fields) {
  return fields.name_attributes();
}

void ServerUnknown(const CheckedObject& object, CheckNotes& notes) {
  for (const std::string& attribute : object.fields().server_attributes()) {
    LookAtServers(object, attribute, notes);
  }
  LookAtServers(object, kArchiveServers, notes);
}

void ReferenceDangling(const CheckedObject& object, CheckNotes& notes) {
  for (const std::string& attribute : object.fields().name_attributes()) {
    for (const std::string& name : object.Values(attribute)) {
      notes.Names(attribute, name, Named::kIsThere, object.CanTakeOut(attribute));
    }
  }
}

void BaseUnknown(const CheckedObject& object, CheckNotes& notes) {
  const std::string base = object.Text(kBase);
  if (!base.empty()) notes.Names(kBase, base, Named::kIsThere);
}

void CompanyAdmin(const CheckedObject& object, CheckNotes& notes) {
  const std::string name = object.Text(kSystemAdmin);
  if (!name.empty() && object.HasAccount()) notes.Names(kSystemAdmin, name, Named::kIsUser);
}

}  // namespace pelora::session::rules
