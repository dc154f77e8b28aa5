// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/page_scene.h"

#include <stdexcept>
#include <utility>

namespace pelora::testing {
namespace {

Variant ToVariant(const FirstValue& value) {
  if (value.is_number) return Variant::Integer(std::stoi(value.values.front()));
  if (value.values.size() == 1) return Variant::String(value.values.front());
  return Variant::StringArray(value.values);
}

}  // namespace

PageScene::PageScene(const ComponentClass& component, std::size_t objects) : component_(component) {
  {
    const auto made = Ref<IUnknown>::Adopt(component.create(bench_.platform));
    rows_ = Query<IFieldRows>(*made)->Fields();
  }
  for (std::size_t place = 0; place < objects; ++place) {
    FakeAttributes attributes;
    for (const FirstValue& value : FirstValues(rows_, place, objects)) {
      attributes.insert_or_assign(value.attribute, ToVariant(value));
    }
    paths_.push_back("LDAP://CN=object" + std::to_string(place) + ",DC=x");
    bench_.directory.AddObject(paths_.back(), std::move(attributes));
  }
  const EditedValues wanted{.account = objects == 1};
  bench_.directory.AddObject(ChosenPath(wanted),
                             {{"distinguishedName", Variant::String(wanted.chosen)},
                              {"cn", Variant::String(ChosenCommonName(wanted))}});
  editor_ = std::make_unique<FieldEditor>(bench_.dialogs, bench_.choosers, wanted);
  // Whatever a page asks, the answer is yes.
  constexpr int kMostQuestions = 16;
  for (int box = 0; box < kMostQuestions; ++box) bench_.messages.AnswerNext(kDialogYes);
}

void PageScene::Leave() {
  if (!met_in_ && faults().last_met()) met_in_ = phase_;
}

HRESULT PageScene::Open() {
  Close();
  Enter(Phase::kOpening);
  const auto made = Ref<IUnknown>::Adopt(component_.create(bench_.platform));
  const Ref<IShellExtInit> extension = Query<IShellExtInit>(*made);
  const Ref<IShellPropSheetExt> pages = Query<IShellPropSheetExt>(*made);
  if (!extension || !pages) throw std::logic_error("not a tab");
  SelectionDataObject selection(paths_);
  const HRESULT status = extension->Initialize(&selection);
  Leave();
  if (status != S_OK) return status;
  Enter(Phase::kLoading);
  sheet_.emplace(bench_.templates());
  EXPECT_EQ(pages->AddPages(sheet_->PageTaker()), S_OK);
  sheet_->Show();
  Leave();
  return status;
}

std::vector<std::string> PageScene::Edit() {
  Enter(Phase::kEditing);
  std::vector<std::string> edited = editor_->EditAll(sheet_->User(), rows_);
  Leave();
  return edited;
}

bool PageScene::Ok() {
  Enter(Phase::kApplying);
  const std::size_t before = bench_.directory.CountOf(DirectoryCall::Kind::kSetInfo);
  const bool is_done = sheet_->Ok();
  commits_ = bench_.directory.CountOf(DirectoryCall::Kind::kSetInfo) - before;
  Leave();
  return is_done;
}

void PageScene::Close() { sheet_.reset(); }

PageScene::States PageScene::Stored() const {
  States states;
  for (const std::string& path : paths_) states.push_back(bench_.directory.Values(path).value());
  return states;
}

std::vector<std::string> PageScene::TakeBoxes() {
  std::vector<std::string> boxes;
  for (const auto& record : bench_.messages.records()) {
    if (record.message.buttons == MessageButtons::kOk) boxes.push_back(record.message.text);
  }
  bench_.messages.ClearRecords();
  return boxes;
}

std::string PageScene::LeftBehind() const {
  std::string left;
  if (bench_.directory.live_objects() > 0) left += "bound objects; ";
  if (!sheet_ && bench_.library.initialized() != bench_.library.uninitialized()) {
    left += "the component library";
  }
  return left;
}

}  // namespace pelora::testing
