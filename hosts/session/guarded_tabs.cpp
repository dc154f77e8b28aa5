// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/guarded_tabs.h"

#include <algorithm>
#include <utility>

#include "directory/error_text.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/resources/field_label.h"
#include "hosts/session/chosen_default.h"
#include "hosts/session/feature_counts.h"
#include "hosts/session/field_values.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/guarded_tab.h"
#include "hosts/session/own_pages/own_pages.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"
#include "hosts/session/sheet_commit.h"
#include "hosts/session/touched_fields.h"
#include "hosts/session/watched_page.h"
#include "hosts/sheets/scoped_flag.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// What a sheet knows of its objects: of thousands it takes its time to go.
struct GuardedTabs::Known {
  std::vector<std::shared_ptr<const ldap::Entry>> entries;
  std::map<std::string, std::string> names;
  std::vector<std::vector<GatheredField>> gathered;
  std::vector<std::shared_ptr<void>> recorded;
};

GuardedTabs::GuardedTabs(TabSurroundings surroundings)
    : surroundings_(std::move(surroundings)), rights_(surroundings_.store.schema()) {}

GuardedTabs::~GuardedTabs() {
  try {
    auto known = std::make_shared<Known>();
    known->entries = std::move(entries_);
    known->names = std::move(names_);
    for (const auto& tab : tabs_) {
      known->gathered.push_back(std::move(tab->fields.gathered));
      known->recorded.push_back(tab->recording.ForgetAll());
    }
    errands().LetGo(std::move(known));
  } catch (...) {
    // Without memory it goes at once.
  }
}

void GuardedTabs::Learn(Tab& tab, std::vector<FieldRow> fields, DialogId dialog) {
  const auto page = surroundings_.templates.Dialog(dialog);
  if (!page.value) return;
  for (const FieldRow& row : fields) {
    tab.fields.labels.push_back(resources::FieldLabel(row, *page.value));
  }
  book_.Add(fields, *page.value);
  tab.fields.touched.Watch(std::move(fields));
}

PageWatch GuardedTabs::WatchOf(Tab& tab, std::size_t page) {
  PageFields& fields = tab.fields;
  const auto chosen = std::make_shared<std::optional<ChosenDefault>>();
  return {.on_loaded =
              [this, &fields, page](IDialog& dialog) {
                fields.dialog = &dialog;
                fields.touched.Settle(dialog);
                Gather(fields);
                Protect(fields);
                TellEdited(page);
              },
          .on_command =
              [&fields, chosen, is_switching = std::make_shared<bool>(false)](ControlId control) {
                fields.touched.Touch(control);
                *chosen = ChosenDefaultBy(fields, control);
                if (*is_switching) return;
                const sheets::ScopedFlag switching(*is_switching);
                SwitchForAll(fields, control);
              },
          .on_handled =
              [this, &fields, chosen, page] {
                if (*chosen) KeepAlone(fields, **chosen);
                chosen->reset();
                TellEdited(page);
              },
          .on_apply =
              [&tab](IDialog& dialog) {
                tab.told.Forget();
                tab.fields.touched.LookBeforeApply(dialog);
                tab.TakeInEdited();
              },
          .on_applied =
              [&fields] {
                if (fields.dialog != nullptr) fields.touched.SettleFilled(*fields.dialog);
                fields.touched.KeepUnwritten();
              },
          .on_refused =
              [this, &fields, page](IDialog& dialog, IDialogController& controller) {
                fields.touched.SettleIfRefilled(dialog);
                fields.touched.TellChanged(controller);
                Gather(fields);
                TellEdited(page);
              },
          .on_gone = [&fields] { fields.dialog = nullptr; }};
}

void GuardedTabs::Protect(const PageFields& fields) {
  if (!surroundings_.protect) return;
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    const FieldRow& row = fields.touched.Row(field);
    const std::string why = WhyReadOnly(fields, row);
    if (why.empty()) continue;
    for (const ControlId control : ControlsOf(row)) {
      surroundings_.protect(*fields.dialog, control, why);
    }
  }
}

std::string GuardedTabs::WhyReadOnly(const PageFields& fields, const FieldRow& row) const {
  // What the extension shows is told by itself.
  const bool is_unknown =
      fields.shown && !surroundings_.store.schema().Find(row.attributes.front()).has_value();
  if (is_unknown) return "This directory does not have this setting.";
  return rights_.WhyReadOnly(row);
}

void GuardedTabs::Gather(PageFields& fields) {
  GatherValues(fields, surroundings_.store.schema(), [this] { errands().Breathe(); });
}

void GuardedTabs::TellEdited(std::size_t page) {
  PageFields& fields = Fields(page);
  if (!fields.IsShown()) return;
  fields.touched.Look(*fields.dialog);
  pages_.at(page)->TakeInEdited();
  if (on_edited) on_edited(page);
}

PageFields& GuardedTabs::Fields(std::size_t page) { return pages_.at(page)->fields; }

GuardedTabs::Tab& GuardedTabs::MakeTab(std::vector<std::string> attributes) {
  auto added = std::make_unique<Tab>(surroundings_, errands(), std::move(attributes));
  Tab& tab = *added;
  tab.fields.selection = selection_;
  tab.fields.seen = [&tab](const DirectoryObject& object, std::string_view attribute) {
    return tab.recording.Seen(object.dn, attribute);
  };
  tab.fields.drop = [&tab](const DirectoryObject& object, std::string_view attribute) {
    tab.recording.Drop(object.dn, attribute);
  };
  // Its page lives by it, whatever its component answers.
  tabs_.push_back(std::move(added));
  for (const auto& entry : entries_) {
    tab.recording.Give(entry);
    errands().Breathe();
  }
  return tab;
}

bool GuardedTabs::AddPage(Tab& tab, std::unique_ptr<PropSheetPage> page,
                          const AddPropSheetPage& add_page) {
  auto watched = std::make_unique<WatchedPage>(std::move(page), WatchOf(tab, pages_.size()));
  tab.fields.page = &watched->Controller();
  if (!add_page(std::move(watched))) return false;
  pages_.push_back(&tab);
  return true;
}

HRESULT GuardedTabs::AddTab(const Guid& class_id, IDataObject& selection,
                            const AddPropSheetPage& add_page) {
  Tab& tab = MakeTab(ldap::BoundAttributes());
  return OpenTab(class_id, tab.platform, selection,
                 [&](IUnknown& component, std::unique_ptr<PropSheetPage> page) {
                   if (const Ref<IFieldRows> rows = Query<IFieldRows>(component)) {
                     Learn(tab, rows->Fields(), page->Template());
                   }
                   return AddPage(tab, std::move(page), add_page);
                 });
}

ldap::StoreStatus GuardedTabs::Read(std::span<const DirectoryObject> selection,
                                    std::span<const OwnPageKind* const> own_pages) {
  std::vector<std::string> names;
  for (const DirectoryObject& object : selection) {
    names.push_back(object.dn);
    names_.emplace(ldap::FoldCase(object.dn), object.name);
    errands().Breathe();
  }
  std::vector<std::string> attributes = ldap::BoundAttributes();
  for (const OwnPageKind* const page : own_pages) {
    for (std::string& name : page->Attributes()) {
      const bool is_known = std::ranges::find(attributes, name) != attributes.end();
      if (!is_known) attributes.push_back(std::move(name));
    }
  }
  attributes.emplace_back("objectClass");
  attributes.emplace_back(FieldRights::kAttribute);
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
      rights_.Learn(entry);
      // Long, and nobody else's business.
      entry.attributes.erase(FieldRights::kAttribute);
      // By the name by which the tabs will ask.
      entry.dn = names[entries_.size()];
      entries_.push_back(std::make_shared<const ldap::Entry>(std::move(entry)));
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
  const std::vector<const OwnPageKind*> own_pages =
      surroundings_.has_own_pages ? OwnPagesOf(selection) : std::vector<const OwnPageKind*>();
  if (const ldap::StoreStatus status = Read(selection, own_pages); !status.Ok()) {
    // The first that could not be read is the one behind those that were.
    const std::size_t at = std::min(entries_.size(), selection.size() - 1);
    return {
        .reason = "The properties of " + selection[at].name + " cannot be read: " + status.text +
                  ". " +
                  AdviceOnReading(ldap::HresultOfLdap(status.code), PlaceOf(surroundings_.store)),
        .is_stopped = status.code == ldap::kLdapUserCancelled};
  }
  for (const DirectoryObject& object : selection) {
    selection_.push_back(object);
    errands().Breathe();
  }
  const Ref<IDataObject> data_object = MakeSelectionDataObject(selection);
  HRESULT failure = S_OK;
  for (const Guid& class_id : tabs) {
    const HRESULT status = AddTab(class_id, *data_object, add_page);
    if (status != S_OK) failure = status;
  }
  const bool has_tab = !pages_.empty();
  // They stand behind others: what nobody could show is told, and no sheet opened without it.
  if (has_tab) {
    for (const OwnPageKind* const page : own_pages) AddOwnPage(*page, add_page);
  }
  if (failure == S_OK) return {};
  const std::string name = selection.front().name;
  const std::string code = " (error code " + CodeText(failure) + ").";
  if (pages_.empty()) return {.reason = "The properties of " + name + " cannot be shown" + code};
  return {.missing = "Some of the properties of " + name + " cannot be shown" + code + " " +
                     AdviceOnReading(failure, PlaceOf(surroundings_.store))};
}

std::optional<std::size_t> GuardedTabs::Commit() {
  std::vector<CommittedTab> tabs;
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    Tab& tab = *pages_[page];
    const bool is_known = std::ranges::any_of(
        tabs, [&tab](const CommittedTab& known) { return known.recording == &tab.recording; });
    if (is_known) continue;
    tabs.push_back({.recording = &tab.recording, .page = page, .dialog = tab.fields.dialog});
  }
  SheetCommit commit({.store = surroundings_.store,
                      .errands = errands(),
                      .message_box = surroundings_.platform.message_box,
                      .desk = surroundings_.desk,
                      .history = surroundings_.history,
                      .book = book_,
                      .name_of = [this](const std::string& dn) { return NameOf(dn); }},
                     std::move(tabs));
  const std::optional<std::size_t> left = commit.Run();
  is_outdated_ = is_outdated_ || commit.has_kept_theirs();
  SettleWritten(commit);
  commit.LetGo();
  return left;
}

std::string GuardedTabs::NameOf(const std::string& dn) const {
  const auto found = names_.find(ldap::FoldCase(dn));
  return found == names_.end() ? OwnNameOf(dn) : found->second;
}

void GuardedTabs::SettleWritten(const SheetCommit& commit) {
  const auto is_done = [&commit](const std::string& dn) { return commit.IsDone(dn); };
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    Tab& tab = *pages_[page];
    if (!tab.fields.IsShown()) continue;
    if (tab.on_committed) tab.on_committed(is_done);
    if (!tab.recording.HasRecorded()) tab.fields.touched.Settle(*tab.fields.dialog);
    Gather(tab.fields);
    // What a page did with its fields while it applied is nobody's edit.
    tab.fields.touched.Look(*tab.fields.dialog);
    (void)tab.fields.touched.TakeEdited();
    TellEdited(page);
  }
}

}  // namespace pelora::session
