// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/checked_dialogs.h"

#include <QLayout>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/typed/address_owner.h"
#include "hosts/session/typed/field_roles.h"
#include "hosts/session/typed/known_server.h"
#include "hosts/session/typed/typed_address.h"
#include "hosts/sheets/forwarding_controller.h"

namespace pelora::console {
namespace {

using session::DirectoryObject;
using session::Judgement;
using session::Verdict;

/// After so long without a key the directory is asked.
constexpr std::chrono::milliseconds kPause{250};

/// Stands between a dialog and its controller, and looks at what is typed.
class CheckedDialog final : public sheets::ForwardingController {
 public:
  CheckedDialog(IDialogController& controller, const FieldRow& field, CheckedDialogs& dialogs)
      : ForwardingController(controller),
        text_(field.typed_in.text),
        is_address_(session::HoldsAddresses(field)),
        dialogs_(dialogs) {
    pause_.setSingleShot(true);
    pause_.setInterval(kPause);
    QObject::connect(&pause_, &QTimer::timeout, &pause_,
                     [this] { is_address_ ? AskForOwner() : AskForServer(); });
  }

  std::int32_t OnInitDialog(IDialog& dialog) override {
    const std::int32_t result = ForwardingController::OnInitDialog(dialog);
    dialog_ = dynamic_cast<QtDialog*>(&dialog);
    if (dialog_ != nullptr) {
      given_ = dialog_->Text(text_);
      AddFoot(*dialog_->widget().window());
      Judge();
    }
    return result;
  }
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override {
    const bool is_edit = id == text_ && notification == ControlNotification::kEditChange;
    if (is_edit && dialog_ != nullptr) Judge();
    return ForwardingController::OnCommand(id, notification);
  }
  void OnDestroy() override {
    dialog_ = nullptr;
    ForwardingController::OnDestroy();
  }

 private:
  void AddFoot(QWidget& window) {
    foot_ = new PageFoot(&window);
    window.layout()->addWidget(foot_);
  }

  void Judge() {
    typed_ = dialog_->Text(text_);
    Judgement judgement = is_address_ ? session::JudgeAddress(typed_) : Judgement{};
    const bool is_given = typed_ == given_;
    if (is_given && judgement.verdict == Verdict::kWrong) judgement.verdict = Verdict::kOdd;
    const bool is_wrong = judgement.verdict == Verdict::kWrong;
    if (is_address_) dialog_->SetEnabled(static_cast<ControlId>(kDialogOk), !is_wrong);
    Show(judgement);
    pause_.stop();
    if (!is_wrong && !is_given && !typed_.empty() && dialogs_.questions != nullptr) pause_.start();
  }

  void Show(const Judgement& judgement) {
    FootNote note{.text = ToQString(judgement.sentence)};
    if (judgement.verdict == Verdict::kWrong) note.level = FootNote::Level::kWrong;
    if (judgement.verdict == Verdict::kOdd) note.level = FootNote::Level::kOdd;
    if (foot_ != nullptr) foot_->Show(note);
  }

  void AskForOwner() {
    dialogs_.questions->Ask([alive = std::weak_ptr<CheckedDialog*>(self_), address = typed_,
                             own = dialogs_.own](ldap::IDirectoryStore& store) {
      return [alive, address, owner = session::FindAddressOwner(store, address, own)] {
        const auto self = alive.lock();
        if (self && owner) (*self)->ShowOwner(address, *owner);
      };
    });
  }

  void AskForServer() {
    dialogs_.questions->Ask([alive = std::weak_ptr<CheckedDialog*>(self_),
                             name = typed_](ldap::IDirectoryStore& store) {
      return [alive, name, judgement = session::JudgeServer(store, name)] {
        const auto self = alive.lock();
        if (self && (*self)->dialog_ != nullptr && (*self)->typed_ == name) {
          (*self)->Show(judgement);
        }
      };
    });
  }

  void ShowOwner(const std::string& address, const DirectoryObject& owner) {
    if (dialog_ == nullptr || foot_ == nullptr || typed_ != address) return;
    FootNote note{.level = FootNote::Level::kOdd,
                  .text = ToQString(session::JudgeOwner(owner).sentence)};
    if (dialogs_.show_object) {
      note.action = QStringLiteral("O&pen");
      note.act = [this, owner] { dialogs_.show_object(owner, *foot_->window()); };
    }
    foot_->Show(note);
  }

  ControlId text_;
  /// Otherwise the name of a server.
  bool is_address_;
  CheckedDialogs& dialogs_;
  QtDialog* dialog_ = nullptr;
  QPointer<PageFoot> foot_;
  /// What the dialog was opened with, and what stands in it now.
  std::string given_;
  std::string typed_;
  QTimer pause_;
  /// Answers may come when the dialog is gone.
  std::shared_ptr<CheckedDialog*> self_ = std::make_shared<CheckedDialog*>(this);
};

}  // namespace

std::int32_t CheckedDialogs::Run(DialogId dialog, IDialog* owner, IDialogController& controller) {
  const FieldRow* const field = field_of ? field_of(dialog) : nullptr;
  const bool is_judged =
      field != nullptr && (session::HoldsAddresses(*field) || session::HoldsServers(*field));
  if (!is_judged) return inner_.Run(dialog, owner, controller);
  CheckedDialog checked(controller, *field, *this);
  return inner_.Run(dialog, owner, checked);
}

}  // namespace pelora::console
