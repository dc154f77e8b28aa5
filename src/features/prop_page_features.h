// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "features/feature_buttons.h"
#include "features/feature_state.h"
#include "features/feature_table.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The tab "Pelora Features": a list of the server's features, each with what the selected users
/// say of it. Plain features are enabled and disabled, features with properties have a dialog of
/// their own.
///
/// What was chosen is written to the lists of every selected user. The page has no field groups and
/// makes no change list: it stages on all users first and commits them afterwards.
class CPropPageFeatures final : public CSnapInPropertyPage {
 public:
  /// `features` outlives the page.
  explicit CPropPageFeatures(const Platform& platform,
                             const FeatureTable& features = ServerFeatures());

  /// Stages what was chosen on every user, then the properties that were edited, and then commits
  /// every user. Features that could not be loaded are loaded first; where that fails once more,
  /// they offer no choice, and nothing of them is written. The first failure ends it and is shown:
  /// what comes after it is not done, users committed before it keep their new values, and the page
  /// keeps every choice for the next apply.
  [[nodiscard]] bool Apply() override;

  /// Unset, ambiguous and disagreeing features have their status muted.
  [[nodiscard]] TextRole ListViewTextRole(ControlId id, RowIndex row,
                                          std::size_t column) const override;

 protected:
  /// Keeps the selection in step with the list, and the buttons with the selection.
  void ListViewItemChanged(ControlId id, const ListViewItemChange& change) override;
  /// Switches a plain feature, opens the properties of another. Unlike the buttons it leaves the
  /// page unmodified; an apply writes the choice all the same.
  void ListViewDoubleClicked(ControlId id, RowIndex row) override;

 private:
  /// Loads every feature that has not been loaded yet.
  HRESULT Load(const BoundObjects& objects);
  void MakeColumns();
  [[nodiscard]] HRESULT LoadFeature(const BoundObjects& objects, RowIndex row,
                                    const std::string& name);
  std::int32_t OnEnable();
  std::int32_t OnDisable();
  std::int32_t OnProperties();

  void ChooseForSelection(bool (FeatureState::*choice)());
  void EditProperties(RowIndex row);
  void UpdateButtons();
  [[nodiscard]] std::vector<FieldRow> Rows();
  /// Of the feature of a name; none where the list does not hold it.
  [[nodiscard]] std::function<void()> TakeDown(std::string_view name);
  [[nodiscard]] SelectedFeature Describe(RowIndex row) const;
  [[nodiscard]] bool WriteChoices(const BoundObjects& objects) const;
  [[nodiscard]] bool SaveProperties(const BoundObjects& objects) const;
  [[nodiscard]] bool Commit(const BoundObjects& objects) const;
  [[nodiscard]] IListView& FeatureList() const;
  void ShowStatus(RowIndex row, std::string_view status) const;

  const FeatureTable& features_;
  FeatureStates states_;
  std::map<RowIndex, std::shared_ptr<IFeatureProps>> props_;
  std::set<RowIndex> selection_;
};

}  // namespace pelora
