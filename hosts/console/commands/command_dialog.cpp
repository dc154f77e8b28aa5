// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/commands/command_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "hosts/console/choosers/search_dialog.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(860, 520);
/// After so long without a key it is shown what would be done.
constexpr std::chrono::milliseconds kPause{250};
/// Names that are chosen are shown on so many lines.
constexpr int kNameLines = 3;
/// What an item of the list of commands stands for, beside its kind: the list's attribute.
constexpr int kAttributeRole = Qt::UserRole + 1;

}  // namespace

CommandDialog::CommandDialog(session::SelectionCommand& command,
                             const session::CommandFields& fields, session::IErrands& errands,
                             ldap::IDirectoryStore& store, ldap::StoreOpener opener,
                             QWidget* parent)
    : QDialog(parent),
      command_(command),
      fields_(fields),
      errands_(errands),
      store_(store),
      opener_(opener),
      model_(new PlanModel(command.selection(), this)),
      questions_(std::move(opener)) {
  setObjectName(QStringLiteral("commands"));
  const std::size_t count = command.selection().size();
  setWindowTitle(count == 1 ? QStringLiteral("Change 1 Object")
                            : QStringLiteral("Change %1 Objects").arg(count));
  auto* layout = new QVBoxLayout(this);
  form_ = new QFormLayout;
  MakeInputs(*form_);
  layout->addLayout(form_);
  auto* table = new QTableView(this);
  table->setObjectName(QStringLiteral("commands_table"));
  table->setAccessibleName(QStringLiteral("What becomes of each object"));
  SetUpTable(*table, *model_);
  auto* heading = new QLabel(QStringLiteral("What &becomes of each object:"), this);
  heading->setBuddy(table);
  layout->addWidget(heading);
  layout->addWidget(table, 1);
  sums_ = new QLabel(this);
  sums_->setObjectName(QStringLiteral("commands_sums"));
  ShowPlainly(*sums_);
  layout->addWidget(sums_);
  layout->addWidget(leaves_odd_out_);
  foot_ = new PageFoot(this);
  layout->addWidget(foot_);
  MakeButtons(*layout);
  pause_.setSingleShot(true);
  pause_.setInterval(kPause);
  connect(&pause_, &QTimer::timeout, this, &CommandDialog::ShowPlan);
  ResizeToFit(*this, kWantedSize);
  ShowInputs();
  what_->setFocus();
}

CommandDialog::~CommandDialog() = default;

void CommandDialog::MakeInputs(QFormLayout& form) {
  what_ = new QComboBox(this);
  what_->setObjectName(QStringLiteral("commands_what"));
  const auto add = [this](const QString& text, Kind kind, const std::string& attribute = {}) {
    what_->addItem(text, static_cast<int>(kind));
    what_->setItemData(what_->count() - 1, ToQString(attribute), kAttributeRole);
  };
  if (fields_.has_addresses) {
    add(QStringLiteral("Add an address"), Kind::kAddAddress);
    add(QStringLiteral("Replace addresses"), Kind::kReplaceAddress);
    add(QStringLiteral("Remove addresses"), Kind::kRemoveAddress);
  }
  for (const session::NameListField& list : fields_.lists) {
    const QString label = ToQString(list.label);
    add(QStringLiteral("Add names to \"%1\"").arg(label), Kind::kAddNames, list.attribute);
    add(QStringLiteral("Remove names from \"%1\"").arg(label), Kind::kRemoveNames, list.attribute);
  }
  connect(what_, &QComboBox::currentIndexChanged, this, &CommandDialog::ShowInputs);
  gone_ = new QLineEdit(this);
  gone_->setObjectName(QStringLiteral("commands_gone"));
  gone_->setPlaceholderText(QStringLiteral("*@old.example.org"));
  address_ = new QLineEdit(this);
  address_->setObjectName(QStringLiteral("commands_address"));
  address_->setPlaceholderText(QStringLiteral("{first}.{last}@example.org"));
  const QString tip = PlainToolTip(
      QStringLiteral("{logon} stands for the logon name, {first} and {last} for first and last "
                     "name, {name} for the object's name. Where addresses are replaced or removed, "
                     "* stands for any text."));
  for (QLineEdit* edit : {gone_, address_}) {
    edit->setToolTip(tip);
    connect(edit, &QLineEdit::textChanged, this, &CommandDialog::Changed);
  }
  default_ = new QCheckBox(QStringLiteral("As the &default address"), this);
  default_->setObjectName(QStringLiteral("commands_default"));
  connect(default_, &QCheckBox::toggled, this, &CommandDialog::Changed);
  names_line_ = new QWidget(this);
  names_ = new QListWidget(names_line_);
  names_->setObjectName(QStringLiteral("commands_names"));
  names_->setAccessibleName(QStringLiteral("Names"));
  names_->setFixedHeight((kNameLines + 1) * fontMetrics().lineSpacing());
  auto* choose = new QPushButton(QStringLiteral("C&hoose..."), names_line_);
  choose->setAutoDefault(false);
  connect(choose, &QPushButton::clicked, this, &CommandDialog::ChooseNames);
  auto* line = new QHBoxLayout(names_line_);
  line->setContentsMargins({});
  line->addWidget(names_, 1);
  line->addWidget(choose, 0, Qt::AlignTop);
  form.addRow(QStringLiteral("&What to do:"), what_);
  form.addRow(QStringLiteral("Which addr&esses:"), gone_);
  form.addRow(QStringLiteral("New &address:"), address_);
  form.addRow(QString(), default_);
  auto* const names_label = new QLabel(QStringLiteral("&Names:"), this);
  form.addRow(names_label, names_line_);
  names_label->setBuddy(names_);
  leaves_odd_out_ = new QCheckBox(QStringLiteral("Leave &out what is odd or in use"), this);
  leaves_odd_out_->setObjectName(QStringLiteral("commands_leave_odd"));
  leaves_odd_out_->setChecked(true);
  connect(leaves_odd_out_, &QCheckBox::toggled, this, [this](bool leaves) {
    model_->SetWithOdd(!leaves);
    ShowSums();
  });
}

void CommandDialog::MakeButtons(QLayout& layout) {
  auto* buttons = new QDialogButtonBox(this);
  write_ = buttons->addButton(QStringLiteral("&Review and Write..."), QDialogButtonBox::AcceptRole);
  write_->setObjectName(QStringLiteral("commands_write"));
  write_->setDefault(true);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setText(QStringLiteral("&Close"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CommandDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CommandDialog::reject);
  layout.addWidget(buttons);
}

CommandDialog::Kind CommandDialog::KindChosen() const {
  return static_cast<Kind>(what_->currentData().toInt());
}

session::ValueCommand CommandDialog::Command() const {
  session::ValueCommand command{
      .kind = KindChosen(),
      .address = session::AddressPattern(ToUtf8(address_->text().trimmed())),
      .gone = session::AddressPattern(ToUtf8(gone_->text().trimmed())),
      .as_default = default_->isChecked(),
      .attribute = ToUtf8(what_->currentData(kAttributeRole).toString()),
      .names = {}};
  for (int row = 0; row < names_->count(); ++row) {
    command.names.push_back(ToUtf8(names_->item(row)->data(Qt::UserRole).toString()));
  }
  return command;
}

void CommandDialog::ShowInputs() {
  const Kind kind = KindChosen();
  const bool is_names = kind == Kind::kAddNames || kind == Kind::kRemoveNames;
  const auto show = [this](QWidget* input, bool is_shown) {
    input->setVisible(is_shown);
    if (QWidget* const label = form_->labelForField(input)) label->setVisible(is_shown);
  };
  show(gone_, kind == Kind::kReplaceAddress || kind == Kind::kRemoveAddress);
  show(address_, kind == Kind::kAddAddress || kind == Kind::kReplaceAddress);
  show(default_, kind == Kind::kAddAddress);
  show(names_line_, is_names);
  Changed();
}

void CommandDialog::AddName(const session::DirectoryObject& object) {
  auto* item = new QListWidgetItem(Readable(ToQString(object.name)), names_);
  item->setData(Qt::UserRole, ToQString(object.dn));
  item->setToolTip(PlainToolTip(ToQString(object.dn)));
  Changed();
}

void CommandDialog::ChooseNames() {
  SearchDialog dialog({.title = QStringLiteral("Choose Users and Groups"),
                       .type_filter = session::UsersAndGroupsFilter(),
                       .multiple = true},
                      opener_, this);
  if (RunModal(dialog) != QDialog::Accepted) return;
  names_->clear();
  for (const session::DirectoryObject& object : dialog.Chosen()) AddName(object);
  Changed();
}

void CommandDialog::Changed() {
  ++plan_;
  write_->setEnabled(false);
  pause_.start();
}

void CommandDialog::ShowPlan() {
  const session::ValueCommand command = Command();
  const std::string why = command.WhyWrong();
  const bool is_empty = address_->text().isEmpty() && gone_->text().isEmpty();
  const bool is_about_nothing = command.IsAboutAddresses() ? is_empty : command.names.empty();
  foot_->Show({.level = why.empty()        ? FootNote::Level::kNothing
                        : is_about_nothing ? FootNote::Level::kHint
                                           : FootNote::Level::kWrong,
               .text = ToQString(why)});
  std::vector<session::PlannedObject> planned;
  if (why.empty()) planned = command_.PlanAll(command);
  const std::vector<std::string> addresses = session::SelectionCommand::NewAddressesOf(planned);
  model_->Show(std::move(planned), !leaves_odd_out_->isChecked());
  ShowSums();
  if (addresses.empty()) return;
  questions_.Ask([this, plan = plan_, addresses](ldap::IDirectoryStore& store) {
    return [this, plan, owners = session::FindAddressOwners(store, addresses)] {
      TakeOwners(plan, owners);
    };
  });
}

void CommandDialog::TakeOwners(int plan, const session::AddressOwners& owners) {
  if (plan != plan_) return;
  std::vector<session::PlannedObject> planned = model_->planned();
  command_.TakeOwners(owners, planned);
  model_->Show(std::move(planned), !leaves_odd_out_->isChecked());
  ShowSums();
}

void CommandDialog::ShowSums() {
  const bool with_odd = !leaves_odd_out_->isChecked();
  const std::vector<session::PlannedObject>& planned = model_->planned();
  bool is_any_written = false;
  for (const session::PlannedObject& object : planned) {
    is_any_written = is_any_written || object.IsWritten(with_odd);
  }
  sums_->setText(planned.empty() ? QString() : ToQString(PlanText(planned, with_odd)));
  write_->setEnabled(is_any_written && !pause_.isActive());
}

void CommandDialog::accept() {
  if (!write_->isEnabled()) return;
  // Asked once more, and waited for: the answer beside the window may not be there yet.
  std::vector<session::PlannedObject> planned = command_.PlanAll(Command());
  const std::vector<std::string> addresses = session::SelectionCommand::NewAddressesOf(planned);
  if (!addresses.empty()) {
    session::AddressOwners owners;
    errands_.Run("Looking who has these addresses...", [&](session::IErrand& errand) {
      store_.StopOn(errand.stop());
      owners = session::FindAddressOwners(store_, addresses);
      store_.StopOn({});
    });
    command_.TakeOwners(owners, planned);
  }
  model_->Show(planned, !leaves_odd_out_->isChecked());
  ShowSums();
  if (!write_->isEnabled()) return;
  if (command_.Write(planned, !leaves_odd_out_->isChecked())) return QDialog::accept();
  // What was written is there; what was not is as it was.
  if (!command_.Read().Ok()) return QDialog::reject();
  Changed();
}

}  // namespace pelora::console
