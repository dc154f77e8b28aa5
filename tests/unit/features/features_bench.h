// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "features/prop_page_features.h"
#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora::testing {

inline const std::string kAda = "LDAP://CN=Ada,DC=x";
inline const std::string kBob = "LDAP://CN=Bob,DC=x";
inline const std::string kCyd = "LDAP://CN=Cyd,DC=x";

inline constexpr const char* kEnabledList = "peloraEnabledFeatures";
inline constexpr const char* kDisabledList = "peloraDisabledFeatures";
inline constexpr const char* kServerList = "peloraUserArchiveServers";

/// Rows of the features tab.
inline constexpr RowIndex kArchiverRow = 0;
inline constexpr RowIndex kImapRow = 1;
inline constexpr RowIndex kPop3Row = 2;

/// Several values as the directory gives them: none at all, a bare one, or an array.
inline Variant Values(const std::vector<std::string>& values) {
  if (values.empty()) return {};
  if (values.size() == 1) return Variant::String(values.front());
  return Variant::StringArray(values);
}

struct Lists {
  std::vector<std::string> enabled = {};
  std::vector<std::string> disabled = {};
  std::vector<std::string> servers = {};
};

inline FakeAttributes UserWith(const Lists& lists) {
  FakeAttributes attributes;
  const auto add = [&](const char* name, const std::vector<std::string>& values) {
    if (!values.empty()) attributes.emplace(name, Values(values));
  };
  add(kEnabledList, lists.enabled);
  add(kDisabledList, lists.disabled);
  add(kServerList, lists.servers);
  return attributes;
}

/// The features tab on users of a directory in memory, and the person in front of it.
class FeaturesTest : public ::testing::Test {
 protected:
  void AddUser(const std::string& path, const Lists& lists) {
    bench_.directory.AddObject(path, UserWith(lists));
  }
  void Open(const std::vector<std::string>& paths,
            const FeatureTable& features = ServerFeatures()) {
    page_.emplace(bench_, new CPropPageFeatures(bench_.platform, features),
                  bench_.Template(IDD_PROPPAGE_FEATURES), paths);
  }
  /// Opens the tab on one user.
  void OpenOn(const Lists& lists) {
    AddUser(kAda, lists);
    Open({kAda});
  }

  OpenPage<CPropPageFeatures>& page() { return *page_; }
  HeadlessUser& user() { return page().user(); }
  HeadlessDialog& dialog() { return page().dialog(); }
  IListView& list() { return dialog().ListView(IDC_FEATURE_LIST); }
  FaultPlan& faults() { return bench_.faulty.plan(); }

  /// Selects these rows and no others, by clicks.
  void Select(const std::vector<RowIndex>& rows) {
    EXPECT_EQ(user().ClickListViewCell(IDC_FEATURE_LIST, list().RowCount(), 0, false),
              UserAnswer::kNoSuchRow);
    for (const RowIndex row : rows) {
      EXPECT_EQ(user().ClickListViewCell(IDC_FEATURE_LIST, row, 0, true), UserAnswer::kDone);
    }
  }
  void DoubleClick(RowIndex row) {
    EXPECT_EQ(user().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1), UserAnswer::kDone);
  }

  /// Every row: "feature: status", the status in brackets where it is muted.
  std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    for (RowIndex row = 0; row < list().RowCount(); ++row) {
      const std::string status = list().Text(row, 1);
      EXPECT_EQ(page().page().ListViewTextRole(IDC_FEATURE_LIST, row, 0), TextRole::kNormal);
      const bool muted =
          page().page().ListViewTextRole(IDC_FEATURE_LIST, row, 1) == TextRole::kMuted;
      rows.push_back(list().Text(row, 0) + ": " + (muted ? "(" + status + ")" : status));
    }
    return rows;
  }
  /// The buttons that can be clicked, or "none".
  std::string Buttons() {
    std::string enabled;
    for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
      if (!dialog().IsEnabled(id)) continue;
      enabled += (enabled.empty() ? "" : " ") + dialog().Text(id);
    }
    return enabled.empty() ? "none" : enabled;
  }
  /// Texts of the boxes shown since the last call.
  std::vector<std::string> Boxes() {
    std::vector<std::string> texts;
    for (const HeadlessMessageBox::Record& box : bench_.messages.records()) {
      texts.push_back(box.message.text);
    }
    bench_.messages.ClearRecords();
    return texts;
  }
  std::string Stored(const std::string& path, const char* attribute) {
    return ToText(bench_.directory.Value(path, attribute));
  }

  PageBench bench_;

 private:
  std::optional<OpenPage<CPropPageFeatures>> page_;
};

}  // namespace pelora::testing
