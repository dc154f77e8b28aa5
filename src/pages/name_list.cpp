// SPDX-License-Identifier: Apache-2.0
#include "pages/name_list.h"

#include <string>
#include <utility>

#include "pages/handler.h"

namespace pelora {

NameList::NameList(CPropPage& page, const Platform& platform, const Layout& layout)
    : CPropPageExt(page), platform_(platform), layout_(layout), names_(platform.text) {}

HRESULT NameList::Load(const BoundObjects& objects) {
  page().EmptyIfLoadedAnew(names_, List());
  page().LoadMultiValue(objects, layout_.attribute.name,
                        [this](StoredValue name) { return names_.Load(List(), std::move(name)); });
  return S_OK;
}

HRESULT NameList::Collect(ChangeList& changes) const {
  Variant names;
  if (!names_.BuildValue(&names, nullptr)) return S_OK;
  changes.push_back(MakeListChange(layout_.attribute, std::move(names), page().IsMultiSelect()));
  return S_OK;
}

std::vector<Command> NameList::Commands() {
  using enum ControlNotification;
  return {{layout_.add_button, kClicked, Handler(this, &NameList::OnAdd)},
          {layout_.delete_button, kClicked, Handler(this, &NameList::OnDelete)},
          {layout_.list, kSelectionChange, Handler(this, &NameList::OnSelected)}};
}

std::vector<FieldRow> NameList::Rows() {
  return {{.name = std::string(layout_.attribute.name),
           .kind = FieldKind::kNameList,
           .control = layout_.list,
           .label = layout_.label,
           .attributes = {layout_.attribute.name},
           .choose = layout_.add_button,
           .remove = layout_.delete_button,
           .take_down = [this] { return TakeDown(); }}};
}

std::function<void()> NameList::TakeDown() {
  return [this, put_back = names_.TakeDown()] {
    put_back(List());
    OnSelected();
  };
}

std::int32_t NameList::OnAdd() {
  const SelectADObject chooser(platform_);
  std::vector<std::string> names;
  const ChooserOwner owner{&dialog(), layout_.chooser_owner};
  if ((chooser.*layout_.choice)(owner, names, SelectionMode::kMultiple) != S_OK) return 0;
  if (names.empty()) return 0;
  for (std::string& name : names) names_.Add(List(), std::move(name), true, false);
  page().SetModified(true);
  return 0;
}

std::int32_t NameList::OnDelete() {
  page().SetModified(true);
  if (List().Count() == 1) dialog().SetEnabled(layout_.delete_button, false);
  names_.Delete(List());
  return 0;
}

std::int32_t NameList::OnSelected() {
  dialog().SetEnabled(layout_.delete_button, List().Selection().has_value());
  return 0;
}

IListBox& NameList::List() const { return dialog().ListBox(layout_.list); }

}  // namespace pelora
