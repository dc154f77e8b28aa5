// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/guarded_tabs.h"

#include <algorithm>
#include <map>
#include <utility>

#include "directory/error_text.h"
#include "hosts/changes/change_runner.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/resources/field_label.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"
#include "hosts/session/told_failures.h"
#include "hosts/session/touched_fields.h"
#include "hosts/session/watched_page.h"
#include "platform/field_rows.h"

namespace pelora::session {

using changes::Change;
using changes::Outcome;
using changes::Result;

struct GuardedTabs::Tab {
  Tab(const TabSurroundings& surroundings, IErrands& errands)
      : recording(surroundings.store,
                  {.attributes = ldap::BoundAttributes(),
                   .keeps = [this](auto attribute) { return fields.touched.IsWanted(attribute); },
                   .breathe = [&errands] { errands.Breathe(); }}),
        told(recording, surroundings.platform.message_box, errands),
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

struct GuardedTabs::Planned {
  struct Part {
    Tab* tab;
    std::size_t page;
    Change change;
  };

  Change change;
  std::vector<Part> parts;

  [[nodiscard]] bool Takes(const Change& other) const {
    return change.kind == Change::Kind::kModify && other.kind == Change::Kind::kModify &&
           ldap::FoldCase(change.dn) == ldap::FoldCase(other.dn) &&
           std::ranges::none_of(other.attributes, [this](const changes::ValueChange& value) {
             return change.Find(value.attribute) != nullptr;
           });
  }
  void Take(Tab& tab, std::size_t page, Change other) {
    if (parts.empty()) {
      change = other;
    } else {
      change.attributes.insert(change.attributes.end(), other.attributes.begin(),
                               other.attributes.end());
    }
    parts.push_back({.tab = &tab, .page = page, .change = std::move(other)});
  }
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
                tab.fields.touched.LookBeforeApply(dialog);
              },
          .on_applied = [&fields] { fields.touched.KeepUnwritten(); },
          .on_refused =
              [this, &fields, page](IDialog& dialog) {
                fields.touched.SettleIfRefilled(dialog);
                TellEdited(page);
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
  auto added = std::make_unique<Tab>(surroundings_, errands());
  Tab* const tab = added.get();
  tab->fields.selection = selection_;
  tab->fields.seen = [tab](const DirectoryObject& object, std::string_view attribute) {
    return tab->recording.Seen(object.dn, attribute);
  };
  // Its page lives by it, whatever the component answers.
  tabs_.push_back(std::move(added));
  for (const ldap::Entry& entry : entries_) tab->recording.Give(entry);
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

ldap::StoreStatus GuardedTabs::Read(std::span<const DirectoryObject> selection) {
  std::vector<std::string> names;
  for (const DirectoryObject& object : selection) names.push_back(object.dn);
  std::vector<std::string> attributes = ldap::BoundAttributes();
  attributes.emplace_back("objectClass");
  ldap::StoreStatus status;
  const auto read = [&](IErrand& errand) {
    ldap::IDirectoryStore& store = surroundings_.store;
    store.StopOn(errand.stop());
    ldap::StoreStatus refused;
    status = store.ReadMany(names, attributes, [&](ldap::StoreStatus one, ldap::Entry entry) {
      if (!one.Ok()) {
        refused = std::move(one);
        return false;
      }
      // By the name by which the tabs will ask.
      entry.dn = names[entries_.size()];
      entries_.push_back(std::move(entry));
      errand.Advance(entries_.size(), names.size() > 1 ? names.size() : 0);
      return true;
    });
    store.StopOn({});
    if (status.Ok()) status = std::move(refused);
  };
  errands().Run(names.size() == 1
                    ? "Reading the settings of " + selection.front().name + "..."
                    : "Reading the settings of " + std::to_string(names.size()) + " objects...",
                read);
  return status;
}

TabsOpening GuardedTabs::Open(std::span<const DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers,
                              const AddPropSheetPage& add_page) {
  const std::vector<Guid> tabs = TabsOf(selection, specifiers);
  if (tabs.empty()) return {.reason = WhyNoProperties(selection, specifiers)};
  if (const ldap::StoreStatus status = Read(selection); !status.Ok()) {
    // The first that could not be read is the one behind those that were.
    const std::size_t at = std::min(entries_.size(), selection.size() - 1);
    return {.reason = "The properties of " + selection[at].name + " cannot be read: " +
                      status.text + ". " + AdviceOnReading(ldap::HresultOfLdap(status.code)),
            .is_stopped = status.code == ldap::kLdapUserCancelled};
  }
  selection_.assign(selection.begin(), selection.end());
  const Ref<IDataObject> data_object = MakeSelectionDataObject(selection);
  HRESULT failure = S_OK;
  for (const Guid& class_id : tabs) {
    const HRESULT status = AddTab(class_id, *data_object, add_page);
    if (status != S_OK) failure = status;
  }
  if (failure == S_OK) return {};
  const std::string name = selection.front().name;
  const std::string code = " (error code " + CodeText(failure) + ").";
  if (pages_.empty()) return {.reason = "The properties of " + name + " cannot be shown" + code};
  return {.missing = "Some of the properties of " + name + " cannot be shown" + code + " " +
                     AdviceOnReading(failure)};
}

std::vector<GuardedTabs::Planned> GuardedTabs::Plan() {
  std::vector<Planned> plan;
  // Where an object stands that was planned first.
  std::map<std::string, std::size_t> places;
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    Tab& tab = *pages_[page];
    if (std::find(pages_.begin(), pages_.begin() + static_cast<std::ptrdiff_t>(page), &tab) !=
        pages_.begin() + static_cast<std::ptrdiff_t>(page)) {
      continue;
    }
    for (Change& change : tab.recording.TakeRecorded()) {
      const auto [place, is_first] = places.emplace(ldap::FoldCase(change.dn), plan.size());
      if (!is_first && plan[place->second].Takes(change)) {
        plan[place->second].Take(tab, page, std::move(change));
      } else {
        plan.emplace_back().Take(tab, page, std::move(change));
      }
    }
  }
  return plan;
}

std::vector<Result> GuardedTabs::Write(const std::vector<Planned>& plan) {
  std::vector<Change> all;
  for (const Planned& planned : plan) all.push_back(planned.change);
  std::vector<Result> results(plan.size());
  const auto write = [&](IErrand& errand) {
    const changes::RunOptions options{.stops_at_first = true, .stop = errand.stop()};
    surroundings_.store.StopOn(errand.give_up());
    changes::RunChanges(surroundings_.store, all, options,
                        [&](std::size_t at, const Result& result) {
                          results[at] = result;
                          errand.Advance(at + 1, all.size() > 1 ? all.size() : 0);
                        });
    surroundings_.store.StopOn({});
  };
  errands().Run(all.size() == 1
                    ? std::string("Writing the changes...")
                    : "Writing the changes of " + std::to_string(all.size()) + " objects...",
                write);
  return results;
}

std::size_t GuardedTabs::Tell(const Planned& planned, const Result& result) {
  const Planned::Part& first = planned.parts.front();
  // Stopped before its turn: whoever stopped it knows.
  if (result.outcome == Outcome::kSkipped) return first.page;
  FieldLabels labels;
  for (const Planned::Part& part : planned.parts) {
    labels.insert(part.tab->labels.begin(), part.tab->labels.end());
  }
  surroundings_.platform.message_box.Show(first.tab->fields.dialog,
                                          WriteFailureMessage(planned.change, result, labels));
  return first.page;
}

void GuardedTabs::SettleWritten() {
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    Tab& tab = *pages_[page];
    if (!tab.fields.IsShown()) continue;
    if (!tab.recording.HasRecorded()) tab.fields.touched.Settle(*tab.fields.dialog);
    TellEdited(page);
  }
}

std::optional<std::size_t> GuardedTabs::Commit() {
  const std::vector<Planned> plan = Plan();
  const std::vector<Result> results = plan.empty() ? std::vector<Result>() : Write(plan);
  for (std::size_t at = 0; at < plan.size(); ++at) {
    for (const Planned::Part& part : plan[at].parts) {
      part.tab->recording.Settle(part.change, results[at]);
    }
  }
  SettleWritten();
  const auto left = std::ranges::find_if(results, [](const Result& r) { return !r.IsDone(); });
  if (left == results.end()) return std::nullopt;
  const Planned& planned = plan[static_cast<std::size_t>(left - results.begin())];
  const std::size_t page = Tell(planned, *left);
  // They have been seen: whoever applies once more means it.
  for (const Planned::Part& part : planned.parts) part.tab->recording.AcceptAsSeen(*left);
  return page;
}

}  // namespace pelora::session
