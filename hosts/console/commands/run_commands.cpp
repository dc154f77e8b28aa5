// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/commands/run_commands.h"

#include <map>

#include "hosts/console/commands/command_dialog.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/shown_directory.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::console {

bool HasCommands(ShownDirectory& directory,
                 const std::vector<session::DirectoryObject>& selection) {
  return !selection.empty() && session::CommandFieldsOf(directory.fields, selection).IsAny();
}

QString RunCommands(const CommandDesk& with, const std::vector<session::DirectoryObject>& selection,
                    QWidget* parent) {
  const session::CommandFields fields = session::CommandFieldsOf(with.directory.fields, selection);
  if (!fields.IsAny()) return {};
  std::map<std::string, std::string> names;
  for (const session::DirectoryObject& object : selection) {
    names.emplace(ldap::FoldCase(object.dn), object.name);
  }
  session::SelectionCommand command({.store = with.directory.store,
                                     .errands = with.errands,
                                     .message_box = with.message_box,
                                     .desk = &with.desk,
                                     .history = &with.directory.history,
                                     .book = fields.book,
                                     .name_of =
                                         [&names](const std::string& dn) {
                                           const auto found = names.find(ldap::FoldCase(dn));
                                           return found == names.end() ? dn : found->second;
                                         }},
                                    selection, fields.Attributes());
  if (const ldap::StoreStatus status = command.Read(); !status.Ok()) {
    return status.code == ldap::kLdapUserCancelled ? QString() : ToQString(status.text);
  }
  CommandDialog dialog(command, fields, with.errands, with.directory.store,
                       with.directory.session->open_another, parent);
  RunModal(dialog);
  return {};
}

}  // namespace pelora::console
