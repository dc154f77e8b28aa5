// SPDX-License-Identifier: Apache-2.0
#include "features/prop_page_features.h"

#include <string>

#include "features/feature_rows.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::size_t kFeatureColumn = 0;
constexpr std::size_t kStatusColumn = 1;

}  // namespace

CPropPageFeatures::CPropPageFeatures(const Platform& platform, const FeatureTable& features)
    : CSnapInPropertyPage(platform, IID_IADsUser, {}, IDD_PROPPAGE_FEATURES, "Pelora Features"),
      features_(features) {
  using enum ControlNotification;
  RegisterLoad(Handler(this, &CPropPageFeatures::Load));
  RegisterRows([this] { return Rows(); });
  Route({
      {IDC_FEATURE_ENABLE, kClicked, Handler(this, &CPropPageFeatures::OnEnable)},
      {IDC_FEATURE_DISABLE, kClicked, Handler(this, &CPropPageFeatures::OnDisable)},
      {IDC_FEATURE_PROPERTIES, kClicked, Handler(this, &CPropPageFeatures::OnProperties)},
  });
}

std::vector<FieldRow> CPropPageFeatures::Rows() {
  std::vector<FieldRow> rows = FeatureRows(features_);
  for (FieldRow& row : rows) row.take_down = [this, name = row.entry] { return TakeDown(name); };
  return rows;
}

std::function<void()> CPropPageFeatures::TakeDown(std::string_view name) {
  RowIndex row = 0;
  while (row < FeatureList().RowCount() && FeatureList().Text(row, kFeatureColumn) != name) ++row;
  if (const auto state = states_.find(row); state != states_.end()) {
    return [this, row, taken = state->second] {
      states_.insert_or_assign(row, taken);
      ShowStatus(row, taken.Text());
      UpdateButtons();
    };
  }
  const auto props = props_.find(row);
  if (props == props_.end()) return nullptr;
  return [this, row, props = props->second, put_back = props->second->TakeDown()] {
    put_back();
    ShowStatus(row, props->StatusText());
  };
}

HRESULT CPropPageFeatures::Load(const BoundObjects& objects) {
  if (FeatureList().RowCount() == 0) MakeColumns();
  RowIndex row = 0;
  for (const std::string& name : features_.Names()) {
    const bool is_shown = row < FeatureList().RowCount();
    if (!is_shown) FeatureList().InsertRow(row, name);
    const bool is_loaded = is_shown && Describe(row).kind != SelectedFeature::Kind::kUnknown;
    if (!is_loaded) {
      if (const HRESULT status = LoadFeature(objects, row, name); FAILED(status)) return status;
    }
    ++row;
  }
  UpdateButtons();
  return S_OK;
}

void CPropPageFeatures::MakeColumns() {
  const int column_width = Dialog().ClientWidth(IDC_FEATURE_LIST) / 2;
  FeatureList().SetFullRowSelect(true);
  FeatureList().InsertColumn(kFeatureColumn, "Feature", column_width);
  FeatureList().InsertColumn(kStatusColumn, "Status", column_width);
}

HRESULT CPropPageFeatures::LoadFeature(const BoundObjects& objects, RowIndex row,
                                       const std::string& name) {
  if (features_.IsPlain(name)) {
    FeatureState state(name);
    if (const HRESULT status = state.Aggregate(objects); FAILED(status)) return status;
    ShowStatus(row, state.Text());
    states_.insert_or_assign(row, std::move(state));
    return S_OK;
  }
  const FeaturePropsFactory create = features_.FactoryOf(name);
  if (create == nullptr) return S_OK;
  std::shared_ptr<IFeatureProps> props = create(platform());
  if (const HRESULT status = props->Load(objects); FAILED(status)) return status;
  ShowStatus(row, props->StatusText());
  props_.insert_or_assign(row, std::move(props));
  return S_OK;
}

void CPropPageFeatures::ListViewItemChanged(ControlId id, const ListViewItemChange& change) {
  if (id != IDC_FEATURE_LIST || !change.state_changed) return;
  if (!change.was_selected && change.is_selected) selection_.insert(change.row);
  if (change.was_selected && !change.is_selected) selection_.erase(change.row);
  UpdateButtons();
}

SelectedFeature CPropPageFeatures::Describe(RowIndex row) const {
  using enum SelectedFeature::Kind;
  if (const auto state = states_.find(row); state != states_.end()) {
    return {.kind = kPlain, .state = state->second.proper()};
  }
  return {.kind = props_.contains(row) ? kWithProps : kUnknown};
}

void CPropPageFeatures::UpdateButtons() {
  std::vector<SelectedFeature> selection;
  for (const RowIndex row : selection_) selection.push_back(Describe(row));
  const FeatureButtons buttons = ButtonsFor(selection);
  Dialog().SetEnabled(IDC_FEATURE_PROPERTIES, buttons.properties);
  Dialog().SetEnabled(IDC_FEATURE_ENABLE, buttons.enable);
  Dialog().SetEnabled(IDC_FEATURE_DISABLE, buttons.disable);
}

std::int32_t CPropPageFeatures::OnEnable() {
  ChooseForSelection(&FeatureState::Enable);
  return 0;
}

std::int32_t CPropPageFeatures::OnDisable() {
  ChooseForSelection(&FeatureState::Disable);
  return 0;
}

void CPropPageFeatures::ChooseForSelection(bool (FeatureState::*choice)()) {
  for (const RowIndex row : selection_) {
    const auto found = states_.find(row);
    if (found == states_.end()) continue;
    FeatureState& state = found->second;
    if ((state.*choice)()) ShowStatus(row, state.Text());
  }
  UpdateButtons();
  SetModified(true);
}

void CPropPageFeatures::ListViewDoubleClicked(ControlId id, RowIndex row) {
  if (id != IDC_FEATURE_LIST) return;
  if (const auto state = states_.find(row); state != states_.end()) {
    state->second.Toggle();
    ShowStatus(row, state->second.Text());
    return UpdateButtons();
  }
  EditProperties(row);
}

std::int32_t CPropPageFeatures::OnProperties() {
  if (!selection_.empty()) EditProperties(*selection_.begin());
  return 0;
}

void CPropPageFeatures::EditProperties(RowIndex row) {
  const auto found = props_.find(row);
  if (found == props_.end()) return;
  IFeatureProps& props = *found->second;
  if (const HRESULT status = props.Edit(); FAILED(status)) ShowError(status, "");
  ShowStatus(row, props.StatusText());
}

TextRole CPropPageFeatures::ListViewTextRole(ControlId id, RowIndex row, std::size_t column) const {
  if (id != IDC_FEATURE_LIST || column != kStatusColumn) return TextRole::kNormal;
  constexpr std::uint32_t kUnset = 0;
  constexpr std::uint32_t kAmbiguous = FeatureState::kEnabled | FeatureState::kDisabled;
  bool muted = false;
  if (const auto state = states_.find(row); state != states_.end()) {
    muted = state->second.word() == kUnset || state->second.word() == kAmbiguous;
  } else if (const auto props = props_.find(row); props != props_.end()) {
    muted = props->second->IsAmbiguous();
  }
  return muted ? TextRole::kMuted : TextRole::kNormal;
}

bool CPropPageFeatures::Apply() {
  BoundObjects objects;
  if (!BindForApply(objects)) return false;
  // What cannot be loaded this time either has nothing chosen, and keeps nobody from the rest.
  if (has_failed_to_load()) (void)LoadAnew();
  if (!ValidateForApply()) return false;
  if (!WriteChoices(objects) || !SaveProperties(objects) || !Commit(objects)) return false;
  SetModified(false);
  for (auto& [row, state] : states_) state.ClearChanged();
  return true;
}

bool CPropPageFeatures::WriteChoices(const BoundObjects& objects) const {
  for (const Ref<IADs>& object : objects) {
    const HRESULT status = WriteFeatureSets(*object, states_);
    if (SUCCEEDED(status)) continue;
    ShowError(status, "Failed to update object: ");
    return false;
  }
  return true;
}

bool CPropPageFeatures::SaveProperties(const BoundObjects& objects) const {
  for (const auto& [row, props] : props_) {
    if (!props->IsModified()) continue;
    const HRESULT status = props->Save(objects);
    if (SUCCEEDED(status)) continue;
    ShowError(status, "");
    return false;
  }
  return true;
}

bool CPropPageFeatures::Commit(const BoundObjects& objects) const {
  for (const Ref<IADs>& object : objects) {
    const HRESULT status = object->SetInfo();
    if (SUCCEEDED(status)) continue;
    ShowError(status, "");
    return false;
  }
  return true;
}

IListView& CPropPageFeatures::FeatureList() const { return Dialog().ListView(IDC_FEATURE_LIST); }

void CPropPageFeatures::ShowStatus(RowIndex row, std::string_view status) const {
  FeatureList().SetText(row, kStatusColumn, status);
}

}  // namespace pelora
