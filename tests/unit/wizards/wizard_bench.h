// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/counted.h"
#include "resources/resource.h"
#include "tests/unit/page_bench.h"
#include "wizards/wizard_component.h"

namespace pelora::testing {

/// The console's wizard as an extension sees it, taking down what it is told: "buttons 0 on",
/// "create NAME". Born with a count of 1; `live` says whether it is still there.
class RecordingWizard final : public Counted<IDsAdminNewObj, IDsAdminNewObjPrimarySite> {
 public:
  explicit RecordingWizard(std::vector<std::string>& log, bool& live) : log_(log), live_(live) {
    live_ = true;
  }

  bool offers_primary_site = true;
  HRESULT create_status = S_OK;

  HRESULT QueryInterface(const Guid& iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IDsAdminNewObjPrimarySite && offers_primary_site) {
      *object = static_cast<IDsAdminNewObjPrimarySite*>(this);
    } else if (iid == IID_IDsAdminNewObj || iid == IID_IUnknown) {
      *object = static_cast<IDsAdminNewObj*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  HRESULT SetButtons(std::uint32_t page_index, bool valid) override {
    log_.push_back("buttons " + std::to_string(page_index) + (valid ? " on" : " off"));
    return S_OK;
  }
  HRESULT GetPageCounts(std::int32_t& /*total*/, std::int32_t& /*start_index*/) override {
    return E_NOTIMPL;
  }
  HRESULT CreateNew(const std::string& name) override {
    log_.push_back("create " + name);
    return create_status;
  }
  HRESULT Commit() override { return E_NOTIMPL; }

  using Counted<IDsAdminNewObj, IDsAdminNewObjPrimarySite>::references;

 private:
  ~RecordingWizard() override { live_ = false; }

  std::vector<std::string>& log_;
  bool& live_;
};

/// A wizard page of a class, initialised and standing open, with the console's side played by hand.
/// `Wizard` is the class itself; it is made as the module makes it.
template <class Wizard>
class OpenWizardPage {
 public:
  explicit OpenWizardPage(PageBench& bench, std::int32_t init_result = 0)
      : wizard_(Ref<RecordingWizard>::Adopt(new RecordingWizard(log_, wizard_live_))),
        component_(new CWizardComponent<Wizard>(bench.platform)) {
    EXPECT_EQ(extension().Initialize(nullptr, nullptr, "ignored", wizard_.Get(),
                                     {.wizard_title = "ignored", .container_name = "x/Sales"}),
              S_OK);
    EXPECT_EQ(extension().AddPages([this](std::unique_ptr<PropSheetPage> page) {
      page_ = std::move(page);
      return true;
    }),
              S_OK);
    // From now on the page alone keeps the object.
    EXPECT_EQ(component_->Release(), 1U);
    dialog_.emplace(bench.Template(page_->Template()), page_->Controller());
    EXPECT_EQ(dialog_->Open(), init_result);
    user_.emplace(*dialog_);
  }
  OpenWizardPage(const OpenWizardPage&) = delete;
  OpenWizardPage& operator=(const OpenWizardPage&) = delete;
  ~OpenWizardPage() {
    dialog_.reset();
    page_.reset();
    EXPECT_EQ(wizard_->references(), 1U);
  }

  [[nodiscard]] IDsAdminNewObjExt& extension() { return *component_; }
  [[nodiscard]] Wizard& wizard() { return *component_; }
  [[nodiscard]] RecordingWizard& console() { return *wizard_; }
  [[nodiscard]] PropSheetPage& page() { return *page_; }
  [[nodiscard]] HeadlessDialog& dialog() { return *dialog_; }
  [[nodiscard]] HeadlessUser& user() { return *user_; }

  /// What the console was told since the last call.
  [[nodiscard]] std::vector<std::string> TakeLog() { return std::exchange(log_, {}); }
  std::int32_t Tell(PageNotification notification) {
    return page_->Controller().OnPageNotification(notification);
  }

  void Click(ControlId id) { EXPECT_EQ(user_->Click(id), UserAnswer::kDone) << id; }
  void Type(ControlId id, const std::string& text) {
    EXPECT_EQ(user_->EraseText(id), UserAnswer::kDone) << id;
    EXPECT_EQ(user_->TypeText(id, text), UserAnswer::kDone) << id;
  }
  void SelectType(RowIndex row) {
    EXPECT_EQ(user_->SelectComboRow(IDC_ACCOUNT_TYPE, row), UserAnswer::kDone) << row;
  }
  /// Whether the last word on the button was that it is enabled.
  [[nodiscard]] bool NextEnabled() {
    EXPECT_FALSE(log_.empty());
    return !log_.empty() && log_.back() == "buttons 0 on";
  }
  /// What would be written now: "attribute=value", those left out without.
  [[nodiscard]] std::vector<std::string> Changes() {
    ChangeList changes;
    EXPECT_EQ(component_->CollectChanges(changes), S_OK);
    std::vector<std::string> lines;
    for (const AttributeChange& change : changes) {
      const char* type = change.type == ChangeType::kInteger ? " (integer)" : " (string)";
      lines.push_back(change.name + "=" + change.value + type + (change.skip ? " skipped" : ""));
    }
    return lines;
  }

 private:
  std::vector<std::string> log_;
  bool wizard_live_ = false;
  Ref<RecordingWizard> wizard_;
  CWizardComponent<Wizard>* component_;
  std::unique_ptr<PropSheetPage> page_;
  std::optional<HeadlessDialog> dialog_;
  std::optional<HeadlessUser> user_;
};

}  // namespace pelora::testing
