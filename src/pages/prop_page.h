// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "directory/ads_base.h"
#include "directory/multi_value_attribute.h"
#include "platform/counted.h"
#include "platform/field_rows.h"
#include "platform/shell_extension.h"

namespace pelora {

/// Takes one value of a multi-valued attribute; any other result than 0 ends the loading.
using ValueSink = std::function<int(StoredValue value)>;

/// Base of every property tab.
///
/// The host initialises it with the selection, lets it add its page, and from then on the page's
/// dialog asks for two things: `InitPage` binds the selection and lets the field groups load,
/// `Apply` lets them validate and collect, and writes and commits every selected object. Field
/// groups plug in through the handlers of `CADSBase`.
///
/// Counted; made with one reference, which its maker holds. References may be taken and released on
/// any thread, everything else happens on one.
class CPropPage
    : public CountedOnAnyThread<IShellExtInit, IShellPropSheetExt, IFieldRows, IPropertyTab>,
      public CADSBase {
 public:
  /// `bind_interface` is what the page asks of its objects when it loads; `multi_select_hide_list`
  /// the controls that make sense for one object only. Both outlive the page.
  CPropPage(const Platform& platform, const Guid& bind_interface,
            std::span<const ControlId> multi_select_hide_list);

  HRESULT QueryInterface(const Guid& iid, void** object) final;
  HRESULT Initialize(IDataObject* data_object) final;

  /// Binds the selected objects, hides or shows the controls of the hide list and lets every group
  /// load. The objects are released in any case. A failed binding is shown and nothing is loaded.
  /// The result is the status of the binding or of the loading.
  HRESULT InitPage();

  /// Binds, validates, collects, and writes and commits each selected object in turn. The first
  /// failure ends it and is shown; objects before it keep what was committed. True when nothing
  /// failed.
  ///
  /// A page whose loading failed is loaded anew first: what its controls showed until then is
  /// nobody's wish and never written. What was typed into them gives way to what is stored, is
  /// refused with the box of a failed validation, and the page stays. Where it cannot be loaded
  /// this time either, an untouched page has nothing to write and is done; a touched one is
  /// refused.
  [[nodiscard]] virtual bool Apply();

  // Readers: each shows one attribute of all objects in one control.

  /// A two-state box when the objects agree, else an indeterminate three-state one.
  void LoadCheckBox(const BoundObjects& objects, std::string_view attribute, ControlId box) const;
  /// The value as an unsigned number; the control is left as it is (empty, when the page is loaded
  /// anew) when the objects differ.
  void LoadNumber(const BoundObjects& objects, std::string_view attribute, ControlId edit) const;
  /// The text; the control is left as above when the objects differ.
  void LoadText(const BoundObjects& objects, std::string_view attribute, ControlId edit) const;
  /// Empty on a multi-selection; else the object's text, if it has one.
  void LoadSingleText(const BoundObjects& objects, std::string_view attribute,
                      ControlId edit) const;
  /// Hands each value of a single object to `sink`, without those that refer to deleted objects;
  /// elements of a list are to be shown by their first 1,023 characters. On a multi-selection
  /// nothing.
  void LoadMultiValue(const BoundObjects& objects, std::string_view attribute,
                      const ValueSink& sink) const;

  /// Where the page is loaded anew, forgets what was put into a list that showed nothing. A first
  /// loading adds to the records and rows that are there.
  void EmptyIfLoadedAnew(MultiValueAttribute& values, IListBox& list) const;

 protected:
  ~CPropPage() override = default;

  // The first steps of every apply; each shows what fails, and then the apply is over.

  /// Binds the selected objects to write to them.
  [[nodiscard]] bool BindForApply(BoundObjects& objects) const;
  /// Lets the field groups validate.
  [[nodiscard]] bool ValidateForApply() const;

  /// Whether the groups are filling their controls, and whether they could not do so to the end.
  [[nodiscard]] bool is_loading() const { return loading_ == Loading::kRunning; }
  [[nodiscard]] bool has_failed_to_load() const { return loading_ == Loading::kFailed; }
  /// Lets every group load once more, with nothing shown but what they show. Load handlers take
  /// that. The result is the status of the binding or of the loading.
  [[nodiscard]] HRESULT LoadAnew();
  /// The administrator has changed something on the page.
  void NoteEdit() { edited_unloaded_ = edited_unloaded_ || has_failed_to_load(); }

 private:
  enum class Loading : std::uint8_t { kAtRest, kRunning, kFailed };
  struct LoadingScope;

  [[nodiscard]] HRESULT Load(const BoundObjects& objects);
  [[nodiscard]] bool RefuseUnloadedEdits(HRESULT loaded);
  [[nodiscard]] HRESULT WriteAndCommit(const BoundObjects& objects, ChangeList& changes) const;
  void ShowForSelection(std::span<const ControlId> controls) const;
  void EmptyIfLoadedAnew(ControlId edit) const;

  const Guid& bind_interface_;
  std::span<const ControlId> multi_select_hide_list_;
  Loading loading_ = Loading::kAtRest;
  bool loads_anew_ = false;
  /// Something was changed while the controls did not show what is stored.
  bool edited_unloaded_ = false;
};

}  // namespace pelora
