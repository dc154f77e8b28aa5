// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/object_maker.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"
#include "directory/error_text.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/pages/fulfil_wishes.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/new_object.h"

namespace pelora::ctl {
namespace {

/// What the wizard's last box said, or what a status stands for.
[[noreturn]] void RefuseAsShown(const HeadlessMessageBox& boxes, HRESULT status) {
  if (boxes.records().empty()) {
    throw Refusal("the object cannot be made (error code " + CodeText(status) + ")");
  }
  throw Refusal(boxes.records().back().message.text);
}

/// Why a page may not be left: the first of its fields that is to be filled and is not.
std::string WhyIncomplete(const std::vector<Field>& fields, const HeadlessDialog& dialog) {
  for (const Field& field : fields) {
    const FieldRow& row = field.row;
    if (!row.missing.empty() && dialog.IsEnabled(row.control) && dialog.Text(row.control).empty()) {
      return row.name + ": " + std::string(row.missing);
    }
  }
  // Whether some fields are needed depends on others: the first that is typed and is empty.
  for (const Field& field : fields) {
    const FieldRow& row = field.row;
    const bool is_typed = row.kind == FieldKind::kText && row.choose == 0;
    if (is_typed && dialog.IsEnabled(row.control) && dialog.Text(row.control).empty()) {
      return row.name + ": it is missing";
    }
  }
  return "the page is not complete";
}

}  // namespace

ObjectMaker::ObjectMaker(session::DirectorySession& session, const resources::ResourceFile& module,
                         FieldCatalogue& catalogue, ObjectFinder& finder)
    : session_(session),
      module_(module),
      recording_(*session.store),
      platform_(recording_, session.store, module),
      wishes_(catalogue, finder) {}

changes::Change ObjectMaker::Make(NewObjectWish wish) {
  const session::NewObjectKind& kind = *wish.kind;
  OwnAssignments own = TakeOwn(kind, wish.name, wish.assignments);
  session::DirectoryObject container;
  const ldap::StoreStatus read =
      session::DirectoryBrowser(*session_.store).ReadObject(wish.container, container);
  if (read.code == ldap::kLdapNoSuchObject || read.code == ldap::kLdapInvalidDnSyntax) {
    throw Refusal(wish.container + ": there is no such container");
  }
  if (!read.Ok()) throw DirectoryFailure(read);
  session::NewObject prepared;
  std::string problem =
      session::PrepareNewObject(kind, container, recording_.store(), platform_.platform, prepared);
  if (!problem.empty()) throw Refusal(problem);
  if (wish.password) own.values.password = own.values.confirmation = *wish.password;
  if (kind.HasOwnPage()) {
    problem = session::WhyIncomplete(kind, own.values, prepared.own_context);
    const bool is_logon_name = problem == session::WhyNoLogonName(kind, own.values);
    if (!problem.empty()) throw Refusal((is_logon_name ? "sAMAccountName: " : "") + problem);
  }
  prepared.setup.write_own = [&](IADs& object) {
    auto& made = static_cast<ldap::NewStoreObject&>(object);
    HRESULT status = session::StageOwnValues(kind, own.values, prepared.own_context, made);
    if (SUCCEEDED(status) && own.display_name) {
      status = made.Put("displayName", Variant::String(*own.display_name));
    }
    return status;
  };
  const auto first =
      kind.HasOwnPage() ? sheets::WizardRole::kSecondary : sheets::WizardRole::kPrimary;
  HeadlessNewObjectWizard wizard(module_, prepared.setup, first);
  std::vector<Page> pages;
  problem = session::AddWizardComponents(
      kind, session_.specifiers, platform_.platform,
      [&](Ref<IDsAdminNewObjExt> extension, sheets::WizardRole /*role*/) {
        Page page;
        if (const auto rows = Query<IFieldRows>(*extension); rows) {
          for (FieldRow& row : rows->Fields()) {
            page.push_back({.row = std::move(row), .component = {}, .tab = {}, .place = {}});
          }
        }
        const HRESULT status = wizard.AddExtension(std::move(extension));
        if (status == S_OK) pages.push_back(std::move(page));
        return status;
      });
  if (!problem.empty()) throw Refusal(problem);
  wizard.Show();
  if (kind.HasOwnPage()) {
    wizard.TypeName(wish.name);
    if (!wizard.Next()) throw Refusal("the object cannot be made under this name");
  }
  // A page of an extension's asks for the name as for any other field.
  if (!kind.HasOwnPage()) wish.assignments.push_back({.field = "name", .value = wish.name});
  FillIn(wizard, pages, std::move(wish.assignments));
  if (!wizard.Finish()) RefuseAsShown(platform_.message_box, wizard.result()->status);
  std::vector<changes::Change> recorded = recording_.TakeRecorded();
  if (recorded.empty()) throw Refusal("the wizard made no object");
  return std::move(recorded.front());
}

void ObjectMaker::FillIn(HeadlessNewObjectWizard& wizard, const std::vector<Page>& pages,
                         std::vector<Assignment> assignments) {
  for (const Page& page : pages) FillPage(wizard, page, assignments);
  if (assignments.empty()) return;
  throw Refusal(assignments.front().field +
                ": the wizard has no such field; it can be set once the object is there");
}

void ObjectMaker::FillPage(HeadlessNewObjectWizard& wizard, const Page& page,
                           std::vector<Assignment>& assignments) {
  std::vector<Wish> wishes;
  std::erase_if(assignments, [&](const Assignment& assignment) {
    const auto field = std::ranges::find_if(page, [&assignment](const Field& candidate) {
      return EqualsWithoutCase(candidate.row.name, assignment.field);
    });
    if (field == page.end()) return false;
    Wish wish{.field = &*field};
    if (wishes_.MakeForNew(assignment, wish)) wishes.push_back(std::move(wish));
    return true;
  });
  FulfilWishes(wishes,
               [&](const Wish& /*wish*/) { return PageOperator(wizard.User(), platform_, page); });
  if (platform_.message_box.HasToldOfError()) RefuseAsShown(platform_.message_box, E_FAIL);
  if (!wizard.IsNextEnabled()) throw Refusal(WhyIncomplete(page, wizard.User().dialog()));
  if (!wizard.Next()) RefuseAsShown(platform_.message_box, E_FAIL);
}

}  // namespace pelora::ctl
