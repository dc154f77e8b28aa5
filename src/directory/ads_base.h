// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_change.h"
#include "directory/value_summary.h"
#include "platform/data_object.h"
#include "platform/missing_dialog.h"
#include "platform/platform.h"

namespace pelora {

/// What a field group contributes to its page. The order of registration is the order of calls.
using LoadHandler = std::function<HRESULT(const BoundObjects& objects)>;
using CollectHandler = std::function<HRESULT(ChangeList& changes)>;
/// Answers `kSkipValidation` when nothing on the page is to be validated.
using SkipValidationHandler = std::function<int()>;
/// On failure sets `*message`, when there is one, and returns `E_FAIL`.
using ValidateHandler = std::function<HRESULT(std::string* message)>;

inline constexpr int kSkipValidation = 1;
inline constexpr int kValidate = 0;

/// Core of every property tab and wizard page: which directory objects it works on, how they are
/// bound and written, and what its fields contribute to loading, validating and collecting.
///
/// Binding is as the user who runs the host. Bound objects live for one operation; only a preset
/// object is held. Everything happens on the host's user-interface thread.
class CADSBase {
 public:
  /// Initialises the component library for the thread; the destructor undoes it for that same
  /// thread, on whichever it runs. `platform` outlives the object.
  explicit CADSBase(const Platform& platform);
  virtual ~CADSBase();
  CADSBase(const CADSBase&) = delete;
  CADSBase& operator=(const CADSBase&) = delete;

  /// The ports of the host.
  [[nodiscard]] const Platform& platform() const { return platform_; }
  /// The dialog that owns message boxes; none while there is no dialog.
  [[nodiscard]] virtual IDialog* OwnerWindow() const = 0;
  /// The controls of that dialog. There is one while a handler begins; a window that is closed from
  /// outside while the handler waits for a chooser or a box takes it away, and all are missing
  /// then.
  [[nodiscard]] IDialog& Dialog() const;

  /// Takes the selection from the console's data object, replacing what was held, and tests the
  /// connection to the directory.
  ///
  /// The result is that of the test; the paths stay stored whatever it is. A data object that
  /// cannot render the selection gives its own failure and changes nothing; a malformed block gives
  /// `E_INVALIDARG` and keeps no path.
  [[nodiscard]] HRESULT Initialize(IDataObject* data_object);

  /// Works on `object` (a new one, say) from now on instead of the selected paths, or no longer.
  void SetObject(IADs* object);

  /// Binds the preset object or every selected path for `iid`. On any status other than `S_OK`
  /// nothing stays bound and `objects` is empty.
  [[nodiscard]] HRESULT BindObjects(const Guid& iid, BoundObjects& objects) const;
  static void ReleaseObjects(BoundObjects& objects);

  /// Whether several objects are selected; never with a preset object.
  [[nodiscard]] bool IsMultiSelect() const;
  /// The selected paths, in the console's order.
  [[nodiscard]] const std::vector<std::string>& paths() const { return paths_; }

  [[nodiscard]] static bool IsFieldEmpty(const IDialog& dialog, ControlId edit);

  /// Shows the error box, modal to the owner window.
  void ShowError(HRESULT status, std::string_view message) const;

  /// Stages the changes on `object`, in order, passing over skipped ones. A text that is empty is
  /// passed over too or, with `clear_empty`, clears its attribute. Multi-valued changes are used
  /// up.
  ///
  /// The first negative status stops it and is returned, as does a change that cannot be written as
  /// it is (`S_ADS_ERRORSOCCURRED`); the error box has then been shown with the field's name. The
  /// caller commits.
  [[nodiscard]] HRESULT WriteAttributes(IADs& object, ChangeList& changes, bool clear_empty) const;

  void RegisterLoad(LoadHandler handler);
  void RegisterCollect(CollectHandler handler);
  void RegisterSkipValidation(SkipValidationHandler handler);
  void RegisterValidate(ValidateHandler handler);

  /// Call every handler, in order, up to the first negative status, which is returned; else `S_OK`.
  [[nodiscard]] HRESULT LoadAll(const BoundObjects& objects) const;
  [[nodiscard]] HRESULT CollectAll(ChangeList& changes) const;
  /// As soon as a skip-validation handler says so, nothing is validated and the result is `S_OK`.
  /// `message` may be null.
  [[nodiscard]] HRESULT ValidateAll(std::string* message) const;

 private:
  const Platform& platform_;
  LibraryThread library_thread_;
  /// It holds nothing that could change.
  mutable MissingDialog missing_dialog_;
  Ref<IADs> preset_object_;
  std::vector<std::string> paths_;
  std::vector<LoadHandler> load_handlers_;
  std::vector<CollectHandler> collect_handlers_;
  std::vector<SkipValidationHandler> skip_validation_handlers_;
  std::vector<ValidateHandler> validate_handlers_;
};

}  // namespace pelora
