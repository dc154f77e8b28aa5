// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/guarded_tabs.h"

#include <utility>

#include "directory/error_text.h"
#include "hosts/changes/change_writer.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/resources/field_label.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"
#include "hosts/session/told_failures.h"
#include "hosts/session/touched_fields.h"
#include "hosts/session/watched_page.h"
#include "platform/field_rows.h"

namespace pelora::session {

struct GuardedTabs::Tab {
  explicit Tab(const TabSurroundings& surroundings)
      : recording(surroundings.store,
                  {.attributes = ldap::BoundAttributes(),
                   .keeps = [this](auto attribute) { return fields.touched.IsWanted(attribute); }}),
        told(recording, surroundings.platform.message_box),
        between(surroundings.between ? surroundings.between(told) : nullptr),
        platform{.directory = between ? *between : told,
                 .message_box = told,
                 .modal_dialogs = surroundings.platform.modal_dialogs,
                 .choosers = surroundings.platform.choosers,
                 .text = surroundings.platform.text,
                 .component_library = surroundings.platform.component_library} {}

  PageFields fields;
  changes::RecordingDirectory recording;
  ToldFailures told;
  std::unique_ptr<IDirectoryService> between;
  Platform platform;
  FieldLabels labels;
};

GuardedTabs::GuardedTabs(TabSurroundings surroundings) : surroundings_(std::move(surroundings)) {}

GuardedTabs::~GuardedTabs() = default;

void GuardedTabs::Learn(Tab& tab, IUnknown& component, DialogId dialog) const {
  const Ref<IFieldRows> rows = Query<IFieldRows>(component);
  const auto page = surroundings_.templates.Dialog(dialog);
  if (!rows || !page.value) return;
  std::vector<FieldRow> fields = rows->Fields();
  for (const FieldRow& row : fields) {
    tab.fields.labels.push_back(resources::FieldLabel(row, *page.value));
    for (const std::string_view attribute : row.attributes) {
      tab.labels.try_emplace(std::string(attribute), tab.fields.labels.back());
    }
  }
  tab.fields.touched.Watch(std::move(fields));
}

PageWatch GuardedTabs::WatchOf(Tab& tab, std::size_t page) {
  PageFields& fields = tab.fields;
  return {.on_loaded =
              [this, &fields, page](IDialog& dialog) {
                fields.dialog = &dialog;
                fields.touched.Settle(dialog);
                TellEdited(page);
              },
          .on_command = [&fields](ControlId control) { fields.touched.Touch(control); },
          .on_handled = [this, page] { TellEdited(page); },
          .on_apply =
              [&tab](IDialog& dialog) {
                tab.told.Forget();
                tab.fields.touched.Look(dialog);
              },
          .on_gone = [&fields] { fields.dialog = nullptr; }};
}

void GuardedTabs::TellEdited(std::size_t page) {
  PageFields& fields = Fields(page);
  if (!fields.IsShown()) return;
  fields.touched.Look(*fields.dialog);
  if (on_edited) on_edited(page);
}

PageFields& GuardedTabs::Fields(std::size_t page) { return pages_.at(page)->fields; }

HRESULT GuardedTabs::AddTab(const Guid& class_id, IDataObject& selection,
                            const AddPropSheetPage& add_page) {
  auto added = std::make_unique<Tab>(surroundings_);
  Tab* const tab = added.get();
  tab->fields.selection = selection_;
  tab->fields.seen = [tab](const DirectoryObject& object, std::string_view attribute) {
    return tab->recording.Seen(object.dn, attribute);
  };
  // Its page lives by it, whatever the component answers.
  tabs_.push_back(std::move(added));
  return OpenTab(class_id, tab->platform, selection,
                 [&](IUnknown& component, std::unique_ptr<PropSheetPage> page) {
                   Learn(*tab, component, page->Template());
                   auto watched =
                       std::make_unique<WatchedPage>(std::move(page), WatchOf(*tab, pages_.size()));
                   tab->fields.page = &watched->Controller();
                   if (!add_page(std::move(watched))) return false;
                   pages_.push_back(tab);
                   return true;
                 });
}

std::string GuardedTabs::Open(std::span<const DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers,
                              const AddPropSheetPage& add_page) {
  const std::vector<Guid> tabs = TabsOf(selection, specifiers);
  if (tabs.empty()) return WhyNoProperties(selection, specifiers);
  selection_.assign(selection.begin(), selection.end());
  const Ref<IDataObject> data_object = MakeSelectionDataObject(selection);
  HRESULT failure = S_OK;
  for (const Guid& class_id : tabs) {
    const HRESULT status = AddTab(class_id, *data_object, add_page);
    if (status != S_OK) failure = status;
  }
  if (!pages_.empty()) return {};
  return "The properties of " + selection.front().name + " cannot be shown (error code " +
         CodeText(failure) + ").";
}

bool GuardedTabs::Commit(std::size_t page) {
  Tab& tab = *pages_.at(page);
  changes::ChangeWriter writer(surroundings_.store);
  for (const changes::Change& change : tab.recording.TakeRecorded()) {
    const changes::Result result = writer.Write(change);
    tab.recording.Settle(change, result);
    if (result.IsDone()) continue;
    tab.fields.touched.KeepUnwritten();
    surroundings_.platform.message_box.Show(tab.fields.dialog,
                                            WriteFailureMessage(change, result, tab.labels));
    // They have been seen: whoever applies once more means it.
    tab.recording.AcceptAsSeen(result);
    return false;
  }
  if (tab.fields.IsShown()) tab.fields.touched.Settle(*tab.fields.dialog);
  TellEdited(page);
  return true;
}

}  // namespace pelora::session
