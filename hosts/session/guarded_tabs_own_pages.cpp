// SPDX-License-Identifier: Apache-2.0
// The pages of our own that a sheet has besides the tabs.
#include <algorithm>

#include "hosts/session/guarded_tab.h"
#include "hosts/session/own_pages/members_page.h"
#include "hosts/session/own_pages/own_page.h"
#include "hosts/session/own_pages/own_pages.h"
#include "hosts/session/password/reset_password.h"

namespace pelora::session {

void GuardedTabs::AddOwnPage(const OwnPageKind& kind, const AddPropSheetPage& add_page) {
  if (!surroundings_.templates.Dialog(kind.of_one).value) return;
  // No page of its own binds objects by them: none would be all.
  std::vector<std::string> attributes = kind.Attributes();
  if (attributes.empty()) attributes.emplace_back("objectClass");
  Tab& tab = MakeTab(std::move(attributes));
  std::vector<std::string> names;
  for (const DirectoryObject& object : selection_) {
    names.push_back(object.dn);
    errands().Breathe();
  }
  for (const AttributeWords& words : kind.words) book_.Add(words);
  if (kind.lists == ListedObjects::kNone) {
    AddFieldPage(tab, kind, std::move(names), add_page);
  } else {
    AddMembersPage(tab, kind, std::move(names), add_page);
  }
}

void GuardedTabs::AddFieldPage(Tab& tab, const OwnPageKind& kind, std::vector<std::string> names,
                               const AddPropSheetPage& add_page) {
  auto page = std::make_unique<OwnPage>(
      kind, std::move(names),
      OwnPageSurroundings{.recording = tab.recording,
                          .platform = tab.platform,
                          .give_password = surroundings_.give_password,
                          .why_no_password = WhyNoPassword(surroundings_.store, selection_.size()),
                          .settle = [&fields = tab.fields](ControlId id) {
                            fields.touched.Settle(id, *fields.dialog);
                          }});
  const auto page_template = surroundings_.templates.Dialog(page->Template());
  if (!page_template.value) return;
  std::vector<FieldRow> rows;
  std::vector<const OwnField*> fields;
  for (const OwnField& field : kind.fields) {
    const bool is_on_page =
        std::ranges::any_of(page_template.value->items,
                            [&field](const auto& item) { return item.id == field.control; });
    if (!is_on_page) continue;
    rows.push_back(field.Row());
    fields.push_back(&field);
  }
  tab.fields.shown = [&tab, fields](std::size_t field, const DirectoryObject& object) {
    const OwnField& row = *fields.at(field);
    return row.form->shown(row.attribute, SeenBy(tab.recording, object.dn));
  };
  Learn(tab, std::move(rows), page->Template());
  (void)AddPage(tab, std::move(page), add_page);
}

void GuardedTabs::AddMembersPage(Tab& tab, const OwnPageKind& kind, std::vector<std::string> names,
                                 const AddPropSheetPage& add_page) {
  // Which groups somebody is in is written into the groups.
  const bool is_written_here = kind.lists == ListedObjects::kMembers;
  auto page = std::make_unique<MembersPage>(
      kind, std::move(names),
      MembersSurroundings{
          .recording = tab.recording,
          .platform = tab.platform,
          .errands = errands(),
          .find_names = surroundings_.find_names,
          .why_read_only = is_written_here
                               ? rights_.WhyReadOnly({.name = {}, .attributes = {"member"}})
                               : std::string()});
  tab.on_committed = [&page = *page](const auto& is_done) { page.OnCommitted(is_done); };
  (void)AddPage(tab, std::move(page), add_page);
}

}  // namespace pelora::session
