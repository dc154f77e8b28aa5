// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/choosers.h"
#include "platform/dialog_controller.h"
#include "tests/support/chosen_objects.h"

namespace pelora::testing {

/// Choosers in which nobody chooses: they hand out what a test prepared and keep what they were
/// given. Unless something is prepared, every choice is cancelled.
///
///   FakeChoosers choosers;
///   choosers.Choose({"LDAP://CN=Ada,DC=x"});
///   ... click the button ...
///   EXPECT_EQ(choosers.pickers().at(0).init.options, 3U);
class FakeChoosers final : public IChoosers {
 public:
  enum class Step : std::uint8_t { kCreate, kInitialize, kRun };

  struct PickerRun {
    ObjectPickerInit init;
    IDialog* owner = nullptr;
    ControlId owner_control = 0;
  };
  struct QueryRun {
    QueryWindowInit init;
    IDialog* owner = nullptr;
    ControlId owner_control = 0;
  };

  /// What the next picker and the next query window give.
  void Choose(const std::vector<std::string>& paths);
  void Choose(ChosenObjects* picked) { picked_ = Ref<IDataObject>(picked); }
  void Find(ChosenObjects* found) { found_ = Ref<IDataObject>(found); }
  /// What the container browser gives from now on, as far as there is room for the path.
  void Browse(std::int32_t answer, std::string path);
  /// What happens while the next chooser is open.
  void WhileOpen(std::function<void()> action) { while_open_ = std::move(action); }
  /// From now on a step of every picker and query window fails, or succeeds with another code.
  void FailAt(Step step, HRESULT status);

  [[nodiscard]] const std::vector<PickerRun>& pickers() const { return pickers_; }
  [[nodiscard]] const std::vector<QueryRun>& queries() const { return queries_; }
  [[nodiscard]] const std::vector<ContainerBrowserInit>& browsers() const { return browsers_; }

  HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) override;
  HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) override;
  std::int32_t BrowseForContainer(const ContainerBrowserInit& init, std::string& path) override;

 private:
  class Picker;
  class Query;

  /// The failure of a step, or `S_OK`.
  [[nodiscard]] HRESULT StatusAt(Step step) const { return step == fail_at_ ? failure_ : S_OK; }

  void Open() {
    if (const auto action = std::exchange(while_open_, nullptr)) action();
  }

  std::function<void()> while_open_;
  Step fail_at_ = Step::kCreate;
  HRESULT failure_ = S_OK;
  Ref<IDataObject> picked_;
  Ref<IDataObject> found_;
  std::int32_t browser_answer_ = kDialogCancel;
  std::string browser_path_;
  std::vector<PickerRun> pickers_;
  std::vector<QueryRun> queries_;
  std::vector<ContainerBrowserInit> browsers_;
};

}  // namespace pelora::testing
