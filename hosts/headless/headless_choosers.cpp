// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_choosers.h"

#include <memory>

#include "directory/utf.h"
#include "hosts/selection/selection_data_object.h"
#include "platform/dialog_controller.h"

namespace pelora {
namespace {

/// The path of a container, of which the name is cut out again. Behind a server it is taken whole,
/// whatever "/" it holds.
std::string ContainerPath(const HeadlessChoosers::Object& container) {
  return "LDAP://localhost/" + container.dn;
}

}  // namespace

class HeadlessChoosers::Picker final : public IDsObjectPicker {
 public:
  explicit Picker(HeadlessChoosers& choosers) : choosers_(choosers) {}

  [[nodiscard]] HRESULT Initialize(const ObjectPickerInit& init) override {
    scope_ = init.scope;
    return S_OK;
  }

  [[nodiscard]] HRESULT InvokeDialog(ChooserOwner /*owner*/, Ref<IDataObject>& chosen) override {
    chosen.Reset();
    std::vector<ChosenObject> picked;
    for (Object& object : choosers_.TakeAnswer(&scope_)) {
      picked.push_back({.path = std::move(object.path),
                        .name = std::move(object.name),
                        .object_class = std::move(object.object_class)});
    }
    if (picked.empty()) return S_FALSE;
    chosen = MakeChosenObjects(std::move(picked));
    return S_OK;
  }

 private:
  HeadlessChoosers& choosers_;
  ObjectPickerScope scope_;
};

class HeadlessChoosers::Query final : public ICommonQuery {
 public:
  explicit Query(HeadlessChoosers& choosers) : choosers_(choosers) {}

  [[nodiscard]] HRESULT OpenQueryWindow(ChooserOwner /*owner*/, const QueryWindowInit& /*init*/,
                                        Ref<IDataObject>& chosen) override {
    chosen.Reset();
    std::vector<SelectedObject> found;
    for (Object& object : choosers_.TakeAnswer(nullptr)) {
      found.push_back({.path = ContainerPath(object),
                       .object_class = std::move(object.object_class),
                       .is_container = object.is_container});
    }
    if (found.empty()) return S_FALSE;
    chosen = MakeSelectedObjects(std::move(found));
    return S_OK;
  }

 private:
  HeadlessChoosers& choosers_;
};

void HeadlessChoosers::AnswerNext(std::vector<Object> objects) {
  answer_ = std::move(objects);
  refusal_.clear();
}

HRESULT HeadlessChoosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser = std::make_unique<Picker>(*this);
  return S_OK;
}

HRESULT HeadlessChoosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser = std::make_unique<Query>(*this);
  return S_OK;
}

std::int32_t HeadlessChoosers::BrowseForContainer(const ContainerBrowserInit& init,
                                                  std::string& path) {
  path.clear();
  const std::vector<Object> chosen = TakeAnswer(nullptr);
  if (chosen.empty()) return kDialogCancel;
  std::string found = ContainerPath(chosen.front());
  if (ToUtf16(found).size() >= init.path_capacity) {
    refusal_ = chosen.front().dn + " is too long to be used here";
    return kDialogCancel;
  }
  path = std::move(found);
  return kDialogOk;
}

std::vector<HeadlessChoosers::Object> HeadlessChoosers::TakeAnswer(const ObjectPickerScope* scope) {
  for (const Object& object : answer_) {
    if (!offers_ || offers_(object, scope)) continue;
    refusal_ = object.dn + " is nothing that can be chosen here";
    answer_.clear();
    break;
  }
  return std::exchange(answer_, {});
}

}  // namespace pelora
