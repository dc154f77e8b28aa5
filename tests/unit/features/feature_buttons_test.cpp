// SPDX-License-Identifier: Apache-2.0
// Every selection of three rows, over everything that each row can be.
#include <gtest/gtest.h>

#include "features/archiver_feature_props.h"
#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::kAda;
using testing::kBob;

/// What a row can be, and how the list shows it.
struct RowKind {
  const char* status;
  bool is_plain = true;
  /// Whether the administrator chose that state.
  bool is_chosen = false;
  bool has_props = false;
};

constexpr std::array kKinds = {
    RowKind{"(Unset)"},
    RowKind{"Enabled"},
    RowKind{"Disabled"},
    RowKind{"(Ambiguous)"},
    RowKind{.status = "Enabled", .is_chosen = true},
    RowKind{.status = "Disabled", .is_chosen = true},
    RowKind{.status = "Disabled", .is_plain = false, .has_props = true},
    RowKind{.status = "", .is_plain = false},
};
using RowKinds = std::array<RowKind, 3>;
constexpr std::array<std::string_view, 3> kNames = {"a", "b", "c"};

std::shared_ptr<IFeatureProps> MakeProps(const Platform& platform) {
  return std::make_shared<ArchiverFeatureProps>(platform);
}

class FeatureButtonsTest : public testing::FeaturesTest {
 protected:
  /// Opens the tab on two users with three features of those kinds.
  void OpenWith(const RowKinds& kinds) {
    plain_.clear();
    with_props_.clear();
    testing::Lists ada;
    testing::Lists bob;
    for (std::size_t row = 0; row < kinds.size(); ++row) {
      const RowKind& kind = kinds.at(row);
      const std::string_view name = kNames.at(row);
      if (!kind.is_plain) {
        with_props_.push_back({name, kind.has_props ? &MakeProps : nullptr});
        continue;
      }
      plain_.push_back(name);
      const std::string status = kind.status;
      const bool is_enabled = status == "Enabled" || status == "(Ambiguous)";
      const bool is_disabled = status == "Disabled" || status == "(Ambiguous)";
      // A chosen state comes from its opposite.
      if (is_enabled) (kind.is_chosen ? ada.disabled : ada.enabled).emplace_back(name);
      if (is_disabled) (kind.is_chosen ? bob.enabled : bob.disabled).emplace_back(name);
    }
    AddUser(kAda, ada);
    AddUser(kBob, bob);
    features_ = {plain_, with_props_};
    Open({kAda, kBob}, features_);
    for (std::size_t row = 0; row < kinds.size(); ++row) {
      if (kinds.at(row).is_chosen) DoubleClick(row);
    }
  }

 private:
  std::vector<std::string_view> plain_;
  std::vector<FeatureWithProps> with_props_;
  FeatureTable features_;
};

/// The buttons offered for the rows of a selection (one bit a row), by the rules as a person says
/// them.
std::string Expected(const RowKinds& kinds, unsigned selection) {
  bool any = false;
  bool all_plain = true;
  bool all_unset = true;
  bool some_enabled = false;
  bool some_disabled = false;
  for (std::size_t row = 0; row < kinds.size(); ++row) {
    if ((selection >> row & 1U) == 0) continue;
    const std::string status = kinds.at(row).status;
    any = true;
    all_plain &= kinds.at(row).is_plain;
    all_unset &= status == "(Unset)";
    some_enabled |= status == "Enabled" || status == "(Ambiguous)";
    some_disabled |= status == "Disabled" || status == "(Ambiguous)";
  }
  if (!any) return "none";
  if (!all_plain) {
    for (std::size_t row = 0; row < kinds.size(); ++row) {
      if (selection == 1U << row && kinds.at(row).has_props) return "Properties";
    }
    return "none";
  }
  if (all_unset || (some_enabled && some_disabled)) return "Enable Disable";
  return some_disabled ? "Enable" : "Disable";
}

TEST_F(FeatureButtonsTest, AreRightForEverySelectionOfEveryThreeRows) {
  constexpr unsigned kSelections = 8;
  std::size_t checked = 0;
  for (const RowKind& first : kKinds) {
    for (const RowKind& second : kKinds) {
      for (const RowKind& third : kKinds) {
        const RowKinds kinds = {first, second, third};
        OpenWith(kinds);
        std::vector<std::string> shown;
        for (std::size_t row = 0; row < kinds.size(); ++row) {
          shown.push_back(std::string(kNames.at(row)) + ": " + kinds.at(row).status);
        }
        ASSERT_EQ(Rows(), shown);
        for (unsigned selection = 0; selection < kSelections; ++selection) {
          std::vector<RowIndex> rows;
          for (RowIndex row = 0; row < kinds.size(); ++row) {
            if ((selection >> row & 1U) != 0) rows.push_back(row);
          }
          Select(rows);
          ASSERT_EQ(Buttons(), Expected(kinds, selection))
              << shown[0] << ", " << shown[1] << ", " << shown[2] << ", rows " << selection;
          ++checked;
        }
      }
    }
  }
  EXPECT_EQ(checked, 4096U);
}

}  // namespace
}  // namespace pelora
