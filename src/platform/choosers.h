// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/data_object.h"
#include "platform/dialog.h"

namespace pelora {

/// What a chooser stands over and is modal to: a dialog, or one of its controls.
struct ChooserOwner {
  ChooserOwner(IDialog* owner_dialog = nullptr, ControlId owner_control = 0)
      : dialog(owner_dialog), control(owner_control) {}

  /// None: the window that is active.
  IDialog* dialog;
  /// 0: the dialog itself.
  ControlId control;
};

/// Where an object picker looks and for what; numbers are the platform's (`DSOP_SCOPE_INIT_INFO`).
struct ObjectPickerScope {
  std::uint32_t types = 0;
  std::uint32_t flags = 0;
  std::uint32_t up_level_both_modes = 0;
  std::uint32_t up_level_mixed_mode = 0;
  std::uint32_t up_level_native_mode = 0;
  std::uint32_t down_level = 0;
};

/// Set-up of an object picker (`DSOP_INIT_INFO`): no target computer, no attributes to fetch.
struct ObjectPickerInit {
  ObjectPickerScope scope;
  std::uint32_t options = 0;
};

/// Lets the administrator search for directory objects and choose one or several.
class IDsObjectPicker {
 public:
  virtual ~IDsObjectPicker() = default;

  /// Sets the picker up. Called again it forgets the earlier set-up.
  [[nodiscard]] virtual HRESULT Initialize(const ObjectPickerInit& init) = 0;
  /// Runs the picker, modal to `owner`. On `S_OK` the chosen objects come in the format
  /// `kDsSelectionListFormat`, in the order chosen, every path inside the rendered block (an
  /// adapter whose system leaves them elsewhere gathers them first); on cancel the answer is
  /// `S_FALSE` and `chosen` is empty.
  [[nodiscard]] virtual HRESULT InvokeDialog(ChooserOwner owner, Ref<IDataObject>& chosen) = 0;
};

/// Set-up of the directory query window (`OPENQUERYWINDOW` and `DSQUERYINITPARAMS`).
struct QueryWindowInit {
  std::uint32_t window_flags = 0;
  Guid handler;
  Guid default_form;
  std::uint32_t handler_flags = 0;
};

/// Lets the administrator find directory objects by a query.
class ICommonQuery {
 public:
  virtual ~ICommonQuery() = default;

  /// Runs the window, modal to `owner`. On `S_OK` the chosen objects come in the format
  /// `kDsObjectNamesFormat`; on cancel the answer is `S_FALSE` and `chosen` is empty.
  [[nodiscard]] virtual HRESULT OpenQueryWindow(ChooserOwner owner, const QueryWindowInit& init,
                                                Ref<IDataObject>& chosen) = 0;
};

/// Set-up of the container browser (`DSBROWSEINFO`): no owner, caption, title or root of its own.
struct ContainerBrowserInit {
  std::uint32_t flags = 0;
  /// Room for the result, in characters of the platform, the ending 0 included.
  std::uint32_t path_capacity = 0;
};

/// Makes the directory choosers of the host and runs the container browser.
class IChoosers {
 public:
  virtual ~IChoosers() = default;

  /// Each makes a new chooser; on failure `chooser` is empty.
  [[nodiscard]] virtual HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) = 0;
  [[nodiscard]] virtual HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) = 0;
  /// `kDialogOk` with the chosen container's path (`LDAP://...`) in `path`; any other answer leaves
  /// `path` empty.
  [[nodiscard]] virtual std::int32_t BrowseForContainer(const ContainerBrowserInit& init,
                                                        std::string& path) = 0;
};

}  // namespace pelora
