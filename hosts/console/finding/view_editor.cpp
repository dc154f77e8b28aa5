// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/view_editor.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/check/search_query.h"

namespace pelora::console {
namespace {

constexpr int kLongestName = 200;
constexpr int kLongestFilter = 10'000;
/// In average characters.
constexpr int kWidth = 80;
constexpr int kFaultLines = 2;

class ViewEditor final : public QDialog {
 public:
  ViewEditor(const session::View& view, QWidget* parent)
      : QDialog(parent),
        name_(new QLineEdit(Readable(ToQString(view.name)), this)),
        base_(new QLineEdit(ToQString(view.base), this)),
        below_(new QCheckBox(QStringLiteral("With all that lies &below"), this)),
        filter_(new QLineEdit(ToQString(view.filter), this)),
        fault_(new HintLabel("view_fault", kFaultLines, this)),
        buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(QStringLiteral("Save View"));
    name_->setObjectName(QStringLiteral("view_name"));
    name_->setMaxLength(kLongestName);
    base_->setPlaceholderText(QStringLiteral("Where \"In\" says"));
    below_->setChecked(view.below);
    filter_->setObjectName(QStringLiteral("view_filter"));
    filter_->setMaxLength(kLongestFilter);
    filter_->setPlaceholderText(QStringLiteral("All objects"));
    auto* layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("&Name:"), name_);
    layout->addRow(QStringLiteral("&In:"), base_);
    layout->addRow(QString(), below_);
    layout->addRow(QStringLiteral("LDAP &filter:"), filter_);
    layout->addRow(QString(), fault_);
    layout->addRow(buttons_);
    for (QLineEdit* line : {name_, filter_}) {
      connect(line, &QLineEdit::textChanged, this, [this] { Judge(); });
    }
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    name_->selectAll();
    Judge();
    ResizeToTexts(*this, kWidth);
  }

  void Take(session::View& view) const {
    view.name = ToUtf8(name_->text().trimmed());
    view.base = ToUtf8(base_->text().trimmed());
    view.below = below_->isChecked();
    view.filter = ToUtf8(filter_->text().trimmed());
  }

 private:
  void Judge() {
    const std::string filter = ToUtf8(filter_->text().trimmed());
    const auto fault = filter.empty() ? std::nullopt : session::FindQueryFault(filter);
    fault_->Say(fault ? FaultText(filter, *fault) : QString());
    buttons_->button(QDialogButtonBox::Ok)
        ->setEnabled(!fault && !name_->text().trimmed().isEmpty());
  }

  /// The filter up to the fault, and what is wrong there.
  [[nodiscard]] static QString FaultText(const std::string& filter,
                                         const session::QueryFault& fault) {
    constexpr qsizetype kShown = 40;
    const QString before = ToQString(std::string_view(filter).substr(0, fault.place));
    return QStringLiteral("Character %1, behind \"%2\": %3.")
        .arg(before.size() + 1)
        .arg(before.right(kShown), ToQString(fault.reason));
  }

  QLineEdit* name_;
  QLineEdit* base_;
  QCheckBox* below_;
  QLineEdit* filter_;
  HintLabel* fault_;
  QDialogButtonBox* buttons_;
};

}  // namespace

bool EditView(session::View& view, QWidget* parent) {
  ViewEditor editor(view, parent);
  if (RunModal(editor) != QDialog::Accepted) return false;
  editor.Take(view);
  return true;
}

}  // namespace pelora::console
