// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "platform/modal_dialogs.h"

namespace pelora {

/// Runs modal dialogs in memory. What the person does in them is queued beforehand, one script per
/// dialog; a dialog for which none is left, and one that is not over when its script ends, is
/// closed by its close box.
class HeadlessModalDialogs final : public IModalDialogs {
 public:
  using Script = std::function<void(HeadlessUser&)>;

  /// A dialog that was run.
  struct Record {
    DialogId dialog = 0;
    IDialog* owner = nullptr;
    std::int32_t result = 0;
    /// Whether a script played it.
    bool played = false;
  };

  /// `templates` outlives this object.
  explicit HeadlessModalDialogs(const resources::ResourceFile& templates) : templates_(templates) {}

  /// Queues the script of the next dialog that opens. A script may run dialogs of its own, whose
  /// scripts follow in the queue.
  void PlayNext(Script script) { scripts_.push_back(std::move(script)); }
  [[nodiscard]] std::size_t ScriptsLeft() const { return scripts_.size(); }
  /// Takes back the scripts of dialogs that did not open: the next one is not theirs.
  void ForgetScripts() { scripts_.clear(); }
  /// In the order in which the dialogs ended.
  [[nodiscard]] const std::vector<Record>& records() const { return records_; }

  [[nodiscard]] std::int32_t Run(DialogId dialog, IDialog* owner,
                                 IDialogController& controller) override;

 private:
  /// Plays an open dialog to its end; whether a script did.
  bool Play(HeadlessDialog& dialog);

  const resources::ResourceFile& templates_;
  std::deque<Script> scripts_;
  std::vector<Record> records_;
};

}  // namespace pelora
