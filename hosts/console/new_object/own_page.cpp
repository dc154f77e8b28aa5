// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/own_page.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/password/secret_field.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/ldap/name_key.h"

namespace pelora::console {
namespace {

constexpr int kMemberLines = 4;

/// One button each, the first of the numbers checked.
QButtonGroup* AddChoice(QFormLayout& form, const QString& label, const QStringList& texts,
                        const char* name, int checked, QWidget& page) {
  auto* group = new QButtonGroup(&page);
  auto* row = new QHBoxLayout;
  for (int i = 0; i < texts.size(); ++i) {
    auto* button = new QRadioButton(texts[i], &page);
    button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
    button->setAccessibleDescription(label);
    button->setChecked(i == checked);
    group->addButton(button, i);
    row->addWidget(button);
  }
  row->addStretch();
  form.addRow(label, row);
  return group;
}

}  // namespace

OwnPage::OwnPage(const session::NewObjectKind& kind, session::OwnContext context, QWidget* parent)
    : QWidget(parent), kind_(kind), context_(std::move(context)) {
  auto* form = new QFormLayout;
  AddNames(*form);
  if (kind_.account == session::AccountForm::kGroup) AddGroupChoices(*form);
  if (kind_.account == session::AccountForm::kUser) {
    AddPatterns(*form);
    AddPasswords(*form);
  }
  hint_ = new HintLabel("own_hint", 1, this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addLayout(form);
  layout->addStretch();
  layout->addWidget(hint_);
  Changed();
}

QLineEdit* OwnPage::AddEdit(QFormLayout& form, std::string_view label, const char* name) {
  auto* edit = new QLineEdit(this);
  edit->setObjectName(QLatin1String(name));
  form.addRow(ToQString(label), edit);
  edit->setAccessibleName(WithoutMnemonic(ToQString(label)));
  connect(edit, &QLineEdit::textChanged, this, [this] { Changed(); });
  return edit;
}

void OwnPage::AddNames(QFormLayout& form) {
  if (kind_.is_person) {
    first_name_ = AddEdit(form, "&First name:", "own_first_name");
    last_name_ = AddEdit(form, "&Last name:", "own_last_name");
  }
  name_ = AddEdit(form, kind_.name_label, "own_name");
  connect(name_, &QLineEdit::textEdited, this, [this] { name_is_own_ = !name_->text().isEmpty(); });
  if (kind_.account == session::AccountForm::kNone) return;
  logon_name_ = AddEdit(form, kind_.logon_label, "own_logon_name");
  connect(logon_name_, &QLineEdit::textEdited, this,
          [this] { logon_name_is_own_ = !logon_name_->text().isEmpty(); });
}

void OwnPage::AddPatterns(QFormLayout& form) {
  auto* const button = new QPushButton(QStringLiteral("Pa&tterns..."), this);
  button->setObjectName(QStringLiteral("own_patterns"));
  button->setAutoDefault(false);
  button->setToolTip(PlainToolTip(
      QStringLiteral("What logon names and addresses of new users are made of, for the company")));
  connect(button, &QPushButton::clicked, this, [this] {
    if (change_patterns) change_patterns();
  });
  auto* const row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(button);
  form.addRow(row);
}

void OwnPage::SetPatterns(session::NamePatterns patterns) {
  patterns_ = std::move(patterns);
  Changed();
}

void OwnPage::TakeOver(const session::OwnValues& values) {
  if (scope_ == nullptr) return;
  scope_->button(static_cast<int>(values.scope))->setChecked(true);
  type_->button(values.is_security_group ? 0 : 1)->setChecked(true);
  Changed();
}

void OwnPage::AddGroupChoices(QFormLayout& form) {
  scope_ = AddChoice(
      form, QStringLiteral("Group scope:"),
      {QStringLiteral("D&omain local"), QStringLiteral("&Global"), QStringLiteral("&Universal")},
      "own_scope", static_cast<int>(session::GroupScope::kGlobal), *this);
  type_ = AddChoice(form, QStringLiteral("Group type:"),
                    {QStringLiteral("&Security"), QStringLiteral("&Distribution")}, "own_type", 0,
                    *this);
  AddMembers(form);
}

void OwnPage::AddMembers(QFormLayout& form) {
  members_list_ = new QListWidget(this);
  members_list_->setObjectName(QStringLiteral("own_members"));
  members_list_->setAccessibleName(QStringLiteral("Members"));
  members_list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  members_list_->setFixedHeight(kMemberLines * fontMetrics().lineSpacing() +
                                2 * members_list_->frameWidth());
  auto* const add = new QPushButton(QStringLiteral("&Add..."), this);
  add->setObjectName(QStringLiteral("own_members_add"));
  auto* const remove = new QPushButton(QStringLiteral("&Remove"), this);
  remove->setObjectName(QStringLiteral("own_members_remove"));
  for (QPushButton* button : {add, remove}) button->setAutoDefault(false);
  connect(add, &QPushButton::clicked, this, [this] { ChooseMembers(); });
  connect(remove, &QPushButton::clicked, this, [this] { RemoveMembers(); });
  remove->setEnabled(false);
  connect(members_list_, &QListWidget::itemSelectionChanged, remove,
          [this, remove] { remove->setEnabled(!members_list_->selectedItems().isEmpty()); });
  auto* const buttons = new QVBoxLayout;
  buttons->addWidget(add);
  buttons->addWidget(remove);
  buttons->addStretch();
  auto* const row = new QHBoxLayout;
  row->addWidget(members_list_);
  row->addLayout(buttons);
  auto* const label = new QLabel(QStringLiteral("M&embers:"), this);
  label->setBuddy(members_list_);
  form.addRow(label, row);
}

void OwnPage::ChooseMembers() {
  if (!choose_members) return;
  for (session::DirectoryObject& chosen : choose_members(*this)) {
    const auto is_same = [&](const session::DirectoryObject& member) {
      return ldap::NameKey(member.dn) == ldap::NameKey(chosen.dn);
    };
    if (std::ranges::any_of(members_, is_same)) continue;
    auto* const item = new QListWidgetItem(IconOf(chosen.kind.icon),
                                           Readable(ToQString(chosen.name)), members_list_);
    item->setToolTip(PlainToolTip(ToQString(chosen.dn)));
    members_.push_back(std::move(chosen));
  }
  Changed();
}

void OwnPage::RemoveMembers() {
  for (int row = members_list_->count() - 1; row >= 0; --row) {
    if (!members_list_->item(row)->isSelected()) continue;
    delete members_list_->takeItem(row);
    members_.erase(members_.begin() + row);
  }
  Changed();
}

void OwnPage::AddPasswords(QFormLayout& form) {
  if (!context_.takes_passwords) {
    auto* note = new QLabel(
        QStringLiteral("An initial password can only be given over a sealed connection."), this);
    note->setObjectName(QStringLiteral("own_password_note"));
    note->setWordWrap(true);
    form.addRow(note);
    return;
  }
  password_ = AddEdit(form, "&Password (may be empty):", "own_password");
  confirmation_ = AddEdit(form, "&Confirm password:", "own_confirmation");
  for (QLineEdit* edit : {password_, confirmation_}) edit->setEchoMode(QLineEdit::Password);
  must_change_ = new QCheckBox(QStringLiteral("User &must change password at next logon"), this);
  must_change_->setObjectName(QStringLiteral("own_must_change"));
  must_change_->setChecked(true);
  form.addRow(must_change_);
}

void OwnPage::Follow() {
  if (kind_.is_person && !name_is_own_) {
    name_->setText(
        ToQString(session::FullName(ToUtf8(first_name_->text()), ToUtf8(last_name_->text()))));
  }
  if (logon_name_ == nullptr || logon_name_is_own_) return;
  logon_name_->setText(ToQString(FollowingLogonName()));
}

std::string OwnPage::FollowingLogonName() const {
  if (kind_.account != session::AccountForm::kUser) {
    return session::SuggestedLogonName(kind_, ToUtf8(name_->text()));
  }
  // Without a pattern nothing follows, and nothing is taken away.
  if (patterns_.logon_name.empty()) return ToUtf8(logon_name_->text());
  return session::LogonNameOf(patterns_, kind_, OpenValues());
}

void OwnPage::Changed() {
  if (hint_ == nullptr) return;
  Follow();
  GuardPasswords();
  hint_->Say(WhyIncomplete());
  if (on_changed) on_changed();
}

void OwnPage::GuardPasswords() {
  if (password_ == nullptr || confirmation_ == nullptr) return;
  if (password_->text().isEmpty() && confirmation_->text().isEmpty()) return guard_.reset();
  if (!guard_) guard_.emplace();
}

OwnPage::~OwnPage() {
  for (QLineEdit* edit : {password_, confirmation_}) {
    if (edit != nullptr) WipeField(*edit);
  }
}

QString OwnPage::WhyIncomplete() const {
  // Asked at every key: the passwords are looked at where they are, and not copied.
  session::OwnValues values = OpenValues();
  const bool match = password_ == nullptr || password_->text() == confirmation_->text();
  values.confirmation = session::Secret(match ? "" : "another");
  return ToQString(session::WhyIncomplete(kind_, values, context_));
}

session::OwnValues OwnPage::Values() const {
  session::OwnValues values = OpenValues();
  const auto secret = [](const QLineEdit* edit) {
    return edit != nullptr ? SecretOf(*edit) : session::Secret();
  };
  values.password = secret(password_);
  values.confirmation = secret(confirmation_);
  return values;
}

session::OwnValues OwnPage::OpenValues() const {
  const auto text = [](const QLineEdit* edit) {
    return edit != nullptr ? ToUtf8(edit->text()) : std::string();
  };
  session::OwnValues values;
  values.first_name = text(first_name_);
  values.last_name = text(last_name_);
  values.name = text(name_);
  values.logon_name = text(logon_name_);
  if (must_change_ != nullptr) values.must_change_password = must_change_->isChecked();
  if (scope_ != nullptr) values.scope = static_cast<session::GroupScope>(scope_->checkedId());
  values.members = members_;
  if (type_ != nullptr) values.is_security_group = type_->checkedId() == 0;
  return values;
}

QWidget& OwnPage::FirstField() const { return first_name_ != nullptr ? *first_name_ : *name_; }

}  // namespace pelora::console
