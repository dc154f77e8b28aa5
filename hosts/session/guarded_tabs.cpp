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
                   .keeps = [this](auto attribute) { return fields.IsWanted(attribute); }}),
        told(recording, surroundings.platform.message_box),
        between(surroundings.between ? surroundings.between(told) : nullptr),
        platform{.directory = between ? *between : told,
                 .message_box = told,
                 .modal_dialogs = surroundings.platform.modal_dialogs,
                 .choosers = surroundings.platform.choosers,
                 .text = surroundings.platform.text,
                 .component_library = surroundings.platform.component_library} {}

  TouchedFields fields;
  changes::RecordingDirectory recording;
  ToldFailures told;
  std::unique_ptr<IDirectoryService> between;
  Platform platform;
  FieldLabels labels;
  /// The dialog of its page, once that was shown. Only to be used while the page applies.
  IDialog* dialog = nullptr;
};

GuardedTabs::GuardedTabs(TabSurroundings surroundings) : surroundings_(std::move(surroundings)) {}

GuardedTabs::~GuardedTabs() = default;

void GuardedTabs::Learn(Tab& tab, IUnknown& component, DialogId dialog) const {
  const Ref<IFieldRows> rows = Query<IFieldRows>(component);
  const auto page = surroundings_.templates.Dialog(dialog);
  if (!rows || !page.value) return;
  std::vector<FieldRow> fields = rows->Fields();
  for (const FieldRow& row : fields) {
    for (const std::string_view attribute : row.attributes) {
      tab.labels.try_emplace(std::string(attribute), resources::FieldLabel(row, *page.value));
    }
  }
  tab.fields.Watch(std::move(fields));
}

HRESULT GuardedTabs::AddTab(const Guid& class_id, IDataObject& selection,
                            const AddPropSheetPage& add_page) {
  auto added = std::make_unique<Tab>(surroundings_);
  Tab* const tab = added.get();
  // Its page lives by it, whatever the component answers.
  tabs_.push_back(std::move(added));
  return OpenTab(class_id, tab->platform, selection,
                 [&](IUnknown& component, std::unique_ptr<PropSheetPage> page) {
                   Learn(*tab, component, page->Template());
                   const PageWatch watch{
                       .on_loaded =
                           [tab](IDialog& dialog) {
                             tab->dialog = &dialog;
                             tab->fields.Settle(dialog);
                           },
                       .on_command = [tab](ControlId control) { tab->fields.Touch(control); },
                       .on_apply =
                           [tab](IDialog& dialog) {
                             tab->told.Forget();
                             tab->fields.Look(dialog);
                           }};
                   if (!add_page(std::make_unique<WatchedPage>(std::move(page), watch))) {
                     return false;
                   }
                   pages_.push_back(tab);
                   return true;
                 });
}

std::string GuardedTabs::Open(std::span<const DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers,
                              const AddPropSheetPage& add_page) {
  const std::vector<Guid> tabs = TabsOf(selection, specifiers);
  if (tabs.empty()) return WhyNoProperties(selection, specifiers);
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
    surroundings_.platform.message_box.Show(tab.dialog,
                                            WriteFailureMessage(change, result, tab.labels));
    // They have been seen: whoever applies once more means it.
    tab.recording.AcceptAsSeen(result);
    return false;
  }
  return true;
}

}  // namespace pelora::session
