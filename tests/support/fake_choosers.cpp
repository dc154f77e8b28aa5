// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fake_choosers.h"

#include <utility>

#include "directory/utf.h"

namespace pelora::testing {

class FakeChoosers::Picker final : public IDsObjectPicker {
 public:
  explicit Picker(FakeChoosers& choosers) : choosers_(choosers) {}

  HRESULT Initialize(const ObjectPickerInit& init) override {
    init_ = init;
    return choosers_.StatusAt(Step::kInitialize);
  }
  HRESULT InvokeDialog(ChooserOwner owner, Ref<IDataObject>& chosen) override {
    choosers_.pickers_.push_back({init_, owner.dialog, owner.control});
    choosers_.Open();
    chosen.Reset();
    const HRESULT status = choosers_.StatusAt(Step::kRun);
    if (FAILED(status)) return status;
    chosen = std::exchange(choosers_.picked_, nullptr);
    return chosen ? status : S_FALSE;
  }

 private:
  FakeChoosers& choosers_;
  ObjectPickerInit init_;
};

class FakeChoosers::Query final : public ICommonQuery {
 public:
  explicit Query(FakeChoosers& choosers) : choosers_(choosers) {}

  HRESULT OpenQueryWindow(ChooserOwner owner, const QueryWindowInit& init,
                          Ref<IDataObject>& chosen) override {
    choosers_.queries_.push_back({init, owner.dialog, owner.control});
    choosers_.Open();
    chosen.Reset();
    const HRESULT status = choosers_.StatusAt(Step::kRun);
    if (FAILED(status)) return status;
    chosen = std::exchange(choosers_.found_, nullptr);
    return chosen ? status : S_FALSE;
  }

 private:
  FakeChoosers& choosers_;
};

void FakeChoosers::Choose(const std::vector<std::string>& paths) {
  Choose(ChosenObjects::AsSelectionList(paths));
}

void FakeChoosers::Browse(std::int32_t answer, std::string path) {
  browser_answer_ = answer;
  browser_path_ = std::move(path);
}

void FakeChoosers::FailAt(Step step, HRESULT status) {
  fail_at_ = step;
  failure_ = status;
}

HRESULT FakeChoosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser.reset();
  const HRESULT status = StatusAt(Step::kCreate);
  if (FAILED(status)) return status;
  chooser = std::make_unique<Picker>(*this);
  return status;
}

HRESULT FakeChoosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser.reset();
  const HRESULT status = StatusAt(Step::kCreate);
  if (FAILED(status)) return status;
  chooser = std::make_unique<Query>(*this);
  return status;
}

std::int32_t FakeChoosers::BrowseForContainer(const ContainerBrowserInit& init, std::string& path) {
  browsers_.push_back(init);
  Open();
  path.clear();
  if (browser_answer_ == kDialogOk) {
    // The platform's browser cuts off what does not fit.
    path = ToUtf8(ToUtf16(browser_path_).substr(0, init.path_capacity - 1));
  }
  return browser_answer_;
}

}  // namespace pelora::testing
