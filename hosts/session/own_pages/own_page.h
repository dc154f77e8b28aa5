// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/own_pages/own_field.h"
#include "hosts/session/password/reset_password.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// What a page of our own works on. All of it outlives the page.
struct OwnPageSurroundings {
  /// Reads what `OwnPageKind::Attributes` names. What the page stages is recorded there.
  changes::RecordingDirectory& recording;
  const Platform& platform;
  /// Gives a user another password; may be none, or there is a reason why it cannot be done.
  GivePassword give_password{};
  std::string why_no_password{};
  /// What a control shows now is what nobody has changed. May be none.
  std::function<void(ControlId control)> settle{};
};

/// A page of our own over some objects: shows each field of all of them together, as the tabs of
/// the extension do, and stages on every apply what was edited, for each object by itself.
class OwnPage final : public PropSheetPage, private IDialogController {
 public:
  /// `names` are the objects' distinguished names.
  OwnPage(const OwnPageKind& kind, std::vector<std::string> names,
          OwnPageSurroundings surroundings);

  [[nodiscard]] DialogId Template() const override { return template_; }
  /// The template's.
  [[nodiscard]] std::string Title() const override { return {}; }
  [[nodiscard]] IDialogController& Controller() override { return *this; }

 private:
  struct Field {
    const OwnField* row;
    bool is_changed = false;
  };

  std::int32_t OnInitDialog(IDialog& dialog) override;
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override;
  std::int32_t OnPageNotification(PageNotification notification) override;
  void OnDestroy() override { dialog_ = nullptr; }

  /// Reads every object; shows why and gives false when one cannot be read.
  [[nodiscard]] bool Read();
  void ShowAll();
  void Show(const OwnField& field);
  [[nodiscard]] std::string ShownNow(const OwnField& field) const;
  [[nodiscard]] bool IsUndecided(const OwnField& field) const;
  void Choose(const OwnField& field);
  void ShowReset();
  void ResetPassword();
  [[nodiscard]] bool Apply();
  /// Shows why what was edited cannot be stored; false when something cannot.
  [[nodiscard]] bool Validate();
  [[nodiscard]] ldap::StoreStatus Stage(const std::string& name, const changes::Change* pending);
  void ShowFailure(const std::string& text);

  const OwnPageKind& kind_;
  std::vector<std::string> names_;
  std::vector<std::string> attributes_;
  OwnPageSurroundings surroundings_;
  DialogId template_;
  std::vector<Field> fields_;
  IDialog* dialog_ = nullptr;
  bool is_loading_ = false;
  /// The fields show what is stored.
  bool is_loaded_ = false;
};

/// What an object has, as a page of our own was told.
[[nodiscard]] StoredValues SeenBy(const changes::RecordingDirectory& recording,
                                  const std::string& name);

}  // namespace pelora::session
