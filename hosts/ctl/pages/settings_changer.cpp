// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/settings_changer.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/pages/fulfil_wishes.h"
#include "hosts/headless/headless_property_sheet.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"

namespace pelora::ctl {
namespace {

/// Which of the wishes a page's words are about: the fields that it says are missing, else all that
/// were asked for, as the page does not say.
std::string FieldsMeant(const std::string& words, std::span<const Wish> wishes) {
  std::string said;
  std::string asked;
  const auto add = [](std::string& names, const Wish& wish) {
    names += (names.empty() ? "" : ", ") + wish.field->row.name;
  };
  for (const Wish& wish : wishes) {
    const std::string_view missing = wish.field->row.missing;
    if (!missing.empty() && words.find(missing) != std::string::npos) add(said, wish);
    add(asked, wish);
  }
  return said.empty() ? asked : said;
}

/// What the last error box said of what was asked for, and the status that it showed.
class PageRefusal : public Refusal {
 public:
  PageRefusal(const HeadlessMessageBox& boxes, std::span<const Wish> wishes)
      : Refusal(TextOf(boxes, wishes)) {
    if (boxes.records().empty()) return;
    const std::string& text = boxes.records().back().message.text;
    const std::size_t mark = text.find(kCodeMark);
    if (mark == std::string::npos) return;
    const std::string digits = text.substr(mark + kCodeMark.size());
    code = static_cast<HRESULT>(static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16)));
  }

  std::optional<HRESULT> code;

 private:
  static constexpr std::string_view kCodeMark = "\r\n\r\nError code: ";

  static std::string TextOf(const HeadlessMessageBox& boxes, std::span<const Wish> wishes) {
    std::string text = "the tab refuses it";
    if (!boxes.records().empty()) text = boxes.records().back().message.text;
    text = text.substr(0, text.find(kCodeMark));
    return FieldsMeant(text, wishes) + ": " + text;
  }
};

/// The tabs that have the fields of some wishes, in memory.
class OpenTabs {
 public:
  OpenTabs(const session::DirectoryObject& object, const FieldCatalogue& catalogue,
           PagePlatform& platform, const resources::ResourceFile& module)
      : selection_(session::MakeSelectionDataObject(std::span(&object, 1))),
        make_(catalogue.make()),
        platform_(platform),
        sheet_(module) {}

  void Add(const Field& field) {
    if (!pages_.contains(field.component)) Open(field);
  }
  void Show() { sheet_.Show(); }
  [[nodiscard]] HeadlessUser UserBefore(const Field& field) {
    sheet_.SelectPage(pages_.at(field.component));
    return sheet_.User();
  }
  /// Not every edit makes Apply available; OK applies whatever there is.
  [[nodiscard]] bool Apply() { return sheet_.Ok(); }

 private:
  void Open(const Field& field) {
    const std::size_t page = sheet_.PageCount();
    const HRESULT status = session::OpenTab(
        field.component, platform_.platform, *selection_,
        [this](IUnknown& /*component*/, std::unique_ptr<PropSheetPage> added) {
          return sheet_.AddPage(std::move(added));
        },
        make_);
    if (status != S_OK || sheet_.PageCount() == page) {
      throw Refusal(field.row.name + ": its tab cannot be opened");
    }
    pages_.emplace(field.component, page);
  }

  Ref<IDataObject> selection_;
  const session::ComponentMaker& make_;
  PagePlatform& platform_;
  HeadlessPropertySheet sheet_;
  std::map<Guid, std::size_t> pages_;
};

bool Writes(const Wish& wish, const std::string& attribute) {
  if (wish.IsOnlyHidden()) return false;
  return std::ranges::any_of(wish.field->row.attributes, [&attribute](std::string_view written) {
    return EqualsWithoutCase(written, attribute);
  });
}

/// Adds to a change that a value of a list goes which no tab shows.
void TakeOutHidden(const Wish& wish, const std::string& value, changes::Change& change) {
  const std::string attribute(wish.field->row.attributes.front());
  changes::ValueChange* list = change.Find(attribute);
  if (list == nullptr) {
    list = &change.attributes.emplace_back(
        changes::ValueChange{.attribute = attribute, .is_list = true});
  }
  // The tab's own edit of the list has taken it out already.
  if (std::ranges::find(list->seen, value) == list->seen.end()) list->seen.push_back(value);
  std::erase(list->wanted, value);
}

/// The entry as it is once a change has been written.
ldap::Entry Changed(ldap::Entry entry, const changes::Change& change) {
  for (const changes::ValueChange& value : change.attributes) {
    ldap::AttributeValues& values = entry.attributes[value.attribute];
    std::erase_if(values, [&value](const std::string& there) {
      return std::ranges::find(value.seen, there) != value.seen.end();
    });
    values.insert(values.end(), value.wanted.begin(), value.wanted.end());
  }
  std::erase_if(entry.attributes, [](const auto& row) { return row.second.empty(); });
  return entry;
}

changes::Prepared Instead(const std::string& dn, const std::string& message,
                          std::optional<HRESULT> code = std::nullopt) {
  return {.change = {},
          .instead = changes::Result{
              .dn = dn, .outcome = changes::Outcome::kRefused, .message = message, .code = code}};
}

}  // namespace

SettingsChanger::SettingsChanger(session::DirectorySession& session,
                                 const resources::ResourceFile& module, FieldCatalogue& catalogue,
                                 ObjectFinder& finder)
    : session_(session),
      module_(module),
      catalogue_(catalogue),
      finder_(finder),
      recording_(*session.store, {.attributes = ldap::BoundAttributes(), .keeps = {}}),
      directory_(recording_),
      platform_(directory_, session.store, module),
      wishes_(catalogue, finder) {}

changes::Prepared SettingsChanger::Prepare(changes::ReadObject object,
                                           std::span<const Assignment> assignments) {
  // The tabs share what was read.
  const auto entry = std::make_shared<const ldap::Entry>(std::move(object.entry));
  const std::string& dn = entry->dn;
  const int code = object.status.code;
  if (code == ldap::kLdapNoSuchObject || code == ldap::kLdapInvalidDnSyntax) {
    return Instead(dn, std::string(kNobodyOfThisName));
  }
  if (!object.status.Ok()) return {.change = {}, .instead = changes::NotRead(dn, object.status)};
  const session::DirectoryObject described = session::ObjectOf(*entry);
  // Of a table of objects of many kinds it may be that nothing is wanted of one.
  if (!assignments.empty() && !finder_.HasTabs(described.kind)) {
    return Instead(dn, "this object has no Pelora settings");
  }
  changes::Prepared prepared;
  try {
    prepared.change = WorkOut(entry, described, assignments);
  } catch (const PageRefusal& refusal) {
    prepared = Instead(dn, refusal.what(), refusal.code);
  } catch (const Refusal& refusal) {
    prepared = Instead(dn, refusal.what());
  } catch (const DirectoryFailure& failure) {
    prepared = {.change = {}, .instead = changes::NotRead(dn, failure.status())};
  }
  recording_.Forget(dn);
  return prepared;
}

changes::Change SettingsChanger::WorkOut(const std::shared_ptr<const ldap::Entry>& entry,
                                         const session::DirectoryObject& described,
                                         std::span<const Assignment> assignments) {
  EntryObject object(*entry, session_.store->schema());
  const std::vector<Wish> wishes = wishes_.Make(assignments, described, *entry, object);
  changes::Change nothing;
  nothing.dn = entry->dn;
  if (wishes.empty()) return nothing;
  recording_.Give(entry);
  OperatePages(described, wishes);
  return TakeChange(*entry, wishes);
}

void SettingsChanger::OperatePages(const session::DirectoryObject& described,
                                   const std::vector<Wish>& wishes) {
  platform_.message_box.ClearRecords();
  OpenTabs tabs(described, catalogue_, platform_, module_);
  for (const Wish& wish : wishes) tabs.Add(*wish.field);
  tabs.Show();
  const std::vector<Field>& fields = catalogue_.FieldsOf(described.kind.class_name);
  FulfilWishes(wishes, [&](const Wish& wish) {
    return PageOperator(tabs.UserBefore(*wish.field), platform_, fields);
  });
  // What the page could not do is not done, whatever it shows.
  if (platform_.message_box.HasToldOfError() || !tabs.Apply()) {
    throw PageRefusal(platform_.message_box, wishes);
  }
}

changes::Change SettingsChanger::TakeChange(const ldap::Entry& entry,
                                            const std::vector<Wish>& wishes) {
  changes::Change change;
  for (changes::Change& recorded : recording_.TakeRecorded()) change = std::move(recorded);
  change.dn = entry.dn;
  std::erase_if(change.attributes, [&wishes](const changes::ValueChange& value) {
    return std::ranges::none_of(
        wishes, [&value](const Wish& wish) { return Writes(wish, value.attribute); });
  });
  for (const Wish& wish : wishes) {
    for (const std::string& value : wish.hidden_removals) TakeOutHidden(wish, value, change);
  }
  changes::CompleteLists(session_.store->schema(), entry, change);
  CheckChoices(entry, change, wishes);
  return change;
}

void SettingsChanger::CheckChoices(const ldap::Entry& entry, const changes::Change& change,
                                   const std::vector<Wish>& wishes) const {
  const auto is_choice = [](const Wish& wish) {
    return wish.field->row.kind == FieldKind::kChoice;
  };
  if (std::ranges::none_of(wishes, is_choice)) return;
  const ldap::Entry after = Changed(entry, change);
  EntryObject object(after, session_.store->schema());
  for (const Wish& wish : wishes) {
    if (!is_choice(wish)) continue;
    const FieldRow& row = wish.field->row;
    const std::string wanted = ChoiceWord(row.choices.at(wish.choice));
    const std::string is = PrintedText(ReadField(*wish.field, after, object));
    if (is == wanted) continue;
    std::string reason = "the tab does not make it " + wanted + ": it is " + is;
    if (!row.choice_buttons.empty()) reason += ", as it stands in both lists";
    throw Refusal(row.name + ": " + reason);
  }
}

}  // namespace pelora::ctl
