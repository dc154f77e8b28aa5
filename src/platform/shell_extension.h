// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/data_object.h"
#include "platform/dialog_controller.h"
#include "platform/unknown.h"

namespace pelora {

/// A page that a property sheet or wizard can show: which template it is made from, under which
/// title, and who drives it. It holds one reference to the component that drives the page;
/// destroying it, shown or never shown, is the page's release and gives that reference back.
class PropSheetPage {
 public:
  virtual ~PropSheetPage() = default;

  [[nodiscard]] virtual DialogId Template() const = 0;
  /// The tab's text; empty: the template's caption.
  [[nodiscard]] virtual std::string Title() const = 0;
  [[nodiscard]] virtual IDialogController& Controller() = 0;
};

/// Takes a page into a sheet. False refuses it; the page has been destroyed then.
using AddPropSheetPage = std::function<bool(std::unique_ptr<PropSheetPage>)>;

/// First step of an extension's life: it is told what is selected.
class IShellExtInit : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IShellExtInit;

  /// Given once, before anything else. Any other answer than `S_OK` means that the extension's
  /// pages are not to be shown. The data object is not kept.
  [[nodiscard]] virtual HRESULT Initialize(IDataObject* data_object) = 0;

 protected:
  ~IShellExtInit() = default;
};

/// Second step: it adds its pages to the sheet. The host may release the extension right after; its
/// pages keep what they need.
class IShellPropSheetExt : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IShellPropSheetExt;

  [[nodiscard]] virtual HRESULT AddPages(const AddPropSheetPage& add_page) = 0;

 protected:
  ~IShellPropSheetExt() = default;
};

/// Offered by property tabs.
class IPropertyTab : public IUnknown {
 public:
  static constexpr Guid kIid = IID_IPropertyTab;

  /// Tells the sheet that the tab has changes to apply, or has none any more. A tab without a
  /// dialog, and one that is loading, tells it nothing.
  virtual void SetModified(bool modified) = 0;

 protected:
  ~IPropertyTab() = default;
};

}  // namespace pelora
