// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/sheet_scene.h"

#include <algorithm>
#include <utility>

#include "hosts/ldap/new_entry.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"
#include "server/class_table.h"

namespace pelora::testing {
namespace {

session::DirectoryObject ObjectNamed(const std::string& dn, const std::string& object_class) {
  return session::ObjectOf({.dn = dn, .attributes = {{"objectClass", {object_class}}}});
}

/// Read once: a test may make thousands of scenes.
const resources::ResourceFile& Templates() {
  static const resources::ResourceFile templates =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  return templates;
}

}  // namespace

SheetScene::SheetScene(ldap::IDirectoryStore& store, std::string object_class,
                       std::vector<std::string> names, EditedValues wanted)
    : store_(store),
      object_class_(std::move(object_class)),
      names_(std::move(names)),
      wanted_(std::move(wanted)),
      templates_(Templates()),
      directory_(store),
      dialogs_(templates_),
      platform_{directory_, messages_, dialogs_, choosers_, text_, library_},
      editor_(dialogs_, choosers_, wanted_) {
  std::vector<session::DirectoryObject> selection;
  for (const std::string& name : names_) selection.push_back(ObjectNamed(name, object_class_));
  for (const Guid& tab : session::TabsOf(selection, {})) {
    const auto made = Ref<IUnknown>::Adopt(FindClass(tab)->create(platform_));
    TabRows rows{.dialog = 0, .rows = Query<IFieldRows>(*made)->Fields()};
    const auto pages = Query<IShellPropSheetExt>(*made);
    (void)pages->AddPages([&rows](const std::unique_ptr<PropSheetPage>& page) {
      rows.dialog = page->Template();
      return false;
    });
    rows_.push_back(std::move(rows));
  }
}

std::vector<ldap::Entry> SheetScene::FirstEntries() const {
  std::vector<ldap::Entry> entries;
  for (std::size_t place = 0; place < names_.size(); ++place) {
    ldap::Entry entry{.dn = names_[place], .attributes = {{"objectClass", {object_class_}}}};
    ldap::CompleteClasses(entry);
    for (const TabRows& tab : rows_) {
      for (FirstValue& value : FirstValues(tab.rows, place, names_.size())) {
        entry.attributes[value.attribute] = std::move(value.values);
      }
    }
    entries.push_back(std::move(entry));
  }
  entries.push_back(
      {.dn = wanted_.chosen,
       .attributes = {{"objectClass", {"top", "user"}}, {"cn", {ChosenCommonName(wanted_)}}}});
  return entries;
}

std::function<std::unique_ptr<IDirectoryService>(IDirectoryService&)> SheetScene::Between() {
  if (!faults_) return {};
  return [this](IDirectoryService& directory) {
    return std::make_unique<FaultDirectory>(directory, faults_);
  };
}

std::string SheetScene::Open() {
  Close();
  tabs_ = std::make_unique<session::GuardedTabs>(session::TabSurroundings{.store = store_,
                                                                          .platform = platform_,
                                                                          .templates = templates_,
                                                                          .between = Between(),
                                                                          .errands = errands_,
                                                                          .desk = desk_,
                                                                          .history = history_});
  sheet_.emplace(templates_);
  std::vector<session::DirectoryObject> selection;
  for (const std::string& name : names_) selection.push_back(ObjectNamed(name, object_class_));
  const session::TabsOpening opening = tabs_->Open(selection, {}, sheet_->PageTaker());
  sheet_->machine().commit = [this] { return tabs_->Commit(); };
  if (opening.reason.empty()) sheet_->Show();
  return opening.reason + opening.missing;
}

void SheetScene::ShowAll() {
  for (std::size_t page = 0; page < PageCount(); ++page) (void)sheet_->SelectPage(page);
}

std::size_t SheetScene::Edit() {
  std::size_t edited = 0;
  for (std::size_t page = 0; page < PageCount(); ++page) edited += EditPage(page);
  return edited;
}

std::size_t SheetScene::EditPage(std::size_t page) {
  for (const TabRows& tab : rows_) {
    if (sheet_->machine().pages().Find(tab.dialog) != page) continue;
    return sheet_->SelectPage(page) ? editor_.EditAll(sheet_->User(), tab.rows).size() : 0;
  }
  return 0;
}

void SheetScene::Close() {
  sheet_.reset();
  tabs_.reset();
}

std::vector<std::string> SheetScene::TakeBoxes() {
  std::vector<std::string> boxes;
  for (const auto& record : messages_.records()) boxes.push_back(record.message.text);
  messages_.ClearRecords();
  return boxes;
}

}  // namespace pelora::testing
