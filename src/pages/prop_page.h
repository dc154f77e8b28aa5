// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "directory/ads_base.h"
#include "platform/field_rows.h"
#include "platform/shell_extension.h"

namespace pelora {

/// Takes one value of a multi-valued attribute; any other result than 0 ends the loading.
using ValueSink = std::function<int(std::string value)>;

/// Base of every property tab.
///
/// The host initialises it with the selection, lets it add its page, and from then on the page's
/// dialog asks for two things: `InitPage` binds the selection and lets the field groups load,
/// `Apply` lets them validate and collect, and writes and commits every selected object. Field
/// groups plug in through the handlers of `CADSBase`.
///
/// Counted; made with one reference, which its maker holds.
class CPropPage : public IShellExtInit,
                  public IShellPropSheetExt,
                  public CADSBase,
                  public IFieldRows {
 public:
  /// `bind_interface` is what the page asks of its objects when it loads; `multi_select_hide_list`
  /// the controls that make sense for one object only. Both outlive the page.
  CPropPage(const Platform& platform, const Guid& bind_interface,
            std::span<const ControlId> multi_select_hide_list);

  /// Tells the sheet that the page has changes to apply, or has none any more.
  virtual void SetModified(bool modified) = 0;

  HRESULT QueryInterface(const Guid& iid, void** object) final;
  std::uint32_t AddRef() final;
  std::uint32_t Release() final;
  HRESULT Initialize(IDataObject* data_object) final;

  /// Binds the selected objects, hides or shows the controls of the hide list and lets every group
  /// load. The objects are released in any case. A failed binding is shown and nothing is loaded.
  /// The result is the status of the binding or of the loading.
  HRESULT InitPage();

  /// Validates, collects, and writes and commits each selected object in turn. A page that could
  /// not be loaded is not applied: what its controls show is nobody's wish. The first failure ends
  /// it and is shown; objects before it keep what was committed. True when nothing failed.
  [[nodiscard]] virtual bool Apply();

  // Readers: each shows one attribute of all objects in one control.

  /// A two-state box when the objects agree, else an indeterminate three-state one.
  void LoadCheckBox(const BoundObjects& objects, std::string_view attribute, ControlId box) const;
  /// The value as an unsigned number; the control is left as it is when the objects differ.
  void LoadNumber(const BoundObjects& objects, std::string_view attribute, ControlId edit) const;
  /// The text; the control is left as it is when the objects differ.
  void LoadText(const BoundObjects& objects, std::string_view attribute, ControlId edit) const;
  /// Empty on a multi-selection; else the object's text, if it has one.
  void LoadSingleText(const BoundObjects& objects, std::string_view attribute,
                      ControlId edit) const;
  /// Hands each value of a single object to `sink`, without those that refer to deleted objects. On
  /// a multi-selection nothing.
  void LoadMultiValue(const BoundObjects& objects, std::string_view attribute,
                      const ValueSink& sink) const;

  /// The page's dialog. There is one while handlers run.
  [[nodiscard]] IDialog& Dialog() const { return *OwnerWindow(); }

 protected:
  ~CPropPage() override = default;

  // The first two steps of every apply; each shows what fails, and then the apply is over.

  /// Binds the selected objects to write to them; refuses a page that could not be loaded.
  [[nodiscard]] bool BindForApply(BoundObjects& objects) const;
  /// Lets the field groups validate.
  [[nodiscard]] bool ValidateForApply() const;

 private:
  [[nodiscard]] HRESULT Load();
  [[nodiscard]] HRESULT WriteAndCommit(const BoundObjects& objects, ChangeList& changes) const;
  void ShowForSelection(std::span<const ControlId> controls) const;

  const Guid& bind_interface_;
  std::span<const ControlId> multi_select_hide_list_;
  /// What became of the last loading.
  HRESULT load_status_ = S_OK;
  std::uint32_t references_ = 1;
};

}  // namespace pelora
