// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "directory/ads_base.h"
#include "pages/dialog_page.h"
#include "platform/counted.h"
#include "platform/field_rows.h"
#include "platform/new_object_wizard.h"

namespace pelora {

/// What `WriteData` answers. Both are success codes to the wizard, on purpose: what an extension
/// could not write is told to the administrator and does not stop the object from being created.
inline constexpr HRESULT kDataWritten = S_FALSE;
inline constexpr HRESULT kDataNotWritten = S_OK;

/// Base of every page that the extension adds to a new-object wizard.
///
/// The page never refuses to be left: while its fields are invalid it keeps the wizard's Next
/// button disabled. A concrete class registers its load, collect and validate callbacks on its
/// `CADSBase`.
///
/// Lifetime: until its page is released, be it by a wizard that closes; that destroys the object,
/// whatever references are held, and with it the reference to the wizard goes. An object whose page
/// no wizard has taken lives by its own count, which starts at 0. Pages that it handed out besides
/// stay as they are and do nothing from then on. `QueryInterface` is the component
/// object's business (see `CWizardComponent`).
class CWizardBase : public Counted<IDsAdminNewObjExt, IFieldRows>, public CADSBase {
 public:
  /// `object_interface` is what the new object is asked for when its attributes are written, and
  /// outlives the object; `enabled_controls` the controls that go with the page's check box or
  /// name.
  CWizardBase(const Platform& platform, const Guid& object_interface,
              std::vector<ControlId> enabled_controls);

  /// `E_NOTIMPL`.
  HRESULT QueryInterface(const Guid& iid, void** object) override;

  /// Keeps the wizard and the container's display name; nothing else is used.
  HRESULT Initialize(IADs* container, IADs* copy_source, const std::string& class_name,
                     IDsAdminNewObj* wizard, const NewObjectDisplayInfo& display_info) final;
  /// From now on the new object is this one; none: what was held is released.
  HRESULT SetObject(IADs* object) final;
  /// Shows what became of the creation. Always `S_OK`.
  HRESULT OnError(IDialog* owner, HRESULT status, NewObjectPhase phase) final;

  /// Display name of the container in which the object is created.
  [[nodiscard]] const std::string& container_name() const { return container_name_; }
  /// What the new object is asked for.
  [[nodiscard]] const Guid& object_interface() const { return object_interface_; }
  /// The controls that go with the check box or name, in order.
  [[nodiscard]] std::span<const ControlId> enabled_controls() const { return enabled_controls_; }
  /// Whether every field is valid.
  [[nodiscard]] bool IsValid() const;
  /// Sets the wizard's button by the fields; the result of a control's message.
  std::int32_t Revalidate() const;

 protected:
  ~CWizardBase() override { *self_ = nullptr; }

  /// The dialog stands: shows the container, lets the class load, and sets the wizard's button. The
  /// result is the message's result: 0, or 1 when the loading failed.
  [[nodiscard]] std::int32_t InitPage();
  [[nodiscard]] std::int32_t AnswerNotification(PageNotification notification) const;
  /// The page is about to show: the wizard's button is to be set.
  virtual void Activate() const = 0;
  void SetButtons(bool valid) const;
  void EnableControls(bool enabled) const;
  /// Hands the wizard a page of this object, once more when it is asked once more. `S_OK` whatever
  /// the wizard answers.
  [[nodiscard]] HRESULT OfferPage(CDialogPage& page, const AddPropSheetPage& add_page);

  /// None before `Initialize`, or when none was given.
  [[nodiscard]] IDsAdminNewObj* wizard() const { return wizard_.Get(); }

 private:
  class Page;

  void OnPageReleased();

  Ref<IDsAdminNewObj> wizard_;
  const Guid& object_interface_;
  std::vector<ControlId> enabled_controls_;
  std::string container_name_;
  bool is_offering_page_ = false;
  /// This object, for its pages; null once it is gone.
  std::shared_ptr<CWizardBase*> self_ = std::make_shared<CWizardBase*>(this);
};

}  // namespace pelora
