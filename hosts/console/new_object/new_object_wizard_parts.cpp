// SPDX-License-Identifier: Apache-2.0
// The widgets of the wizard's window.
#include <QFrame>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/filled_fields.h"

namespace pelora::console {
namespace {

constexpr int kIconExtent = 32;

/// The head that an extension's page has in its template, for a page of the console's own.
QWidget* MakeHead(session::ObjectIcon icon, const QString& container, QWidget& parent) {
  auto* head = new QWidget(&parent);
  auto* picture = new QLabel(head);
  picture->setPixmap(IconOf(icon).pixmap(kIconExtent));
  auto* place = new NameLabel(head);
  place->setText(QStringLiteral("Create in:  %1").arg(container));
  place->setObjectName(QStringLiteral("own_container"));
  place->setWordWrap(true);
  // However long it is, it widens no wizard.
  QSizePolicy room(QSizePolicy::Ignored, QSizePolicy::Preferred);
  room.setHeightForWidth(true);
  place->setSizePolicy(room);
  auto* row = new QHBoxLayout;
  row->addWidget(picture);
  row->addWidget(place, 1);
  auto* rule = new QFrame(head);
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  auto* layout = new QVBoxLayout(head);
  layout->setContentsMargins({});
  layout->addLayout(row);
  layout->addWidget(rule);
  return head;
}

/// `Readable`, of any number of lines.
QString ReadableLines(QString text) {
  QStringList lines = text.remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
  for (QString& line : lines) line = Readable(line);
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

void QtNewObjectWizard::MakeLayout(const QString& container) {
  container_ = container;
  stack_ = new QStackedWidget(this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(stack_);
  MakeOwnPage();
  MakeSummary();
  foot_ = new PageFoot(this);
  layout->addWidget(foot_);
  MakeButtons(*layout);
}

void QtNewObjectWizard::MakeOwnPage() {
  if (!parts_.kind.HasOwnPage()) return;
  auto* page = new QWidget;
  own_page_ = new OwnPage(parts_.kind, parts_.own_context, page);
  own_page_->SetPatterns(parts_.start.patterns.patterns);
  own_page_->change_patterns = [this] { ChangePatterns(); };
  if (const auto& model = parts_.start.model) {
    session::OwnValues values;
    model->TakeOver(values);
    own_page_->TakeOver(values);
  }
  own_page_->on_changed = [this] {
    machine_.SetOwnPageComplete(own_page_->WhyIncomplete().isEmpty());
  };
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(MakeHead(parts_.kind.icon, container_, *page));
  layout->addWidget(own_page_, 1);
  stack_->addWidget(page);
}

void QtNewObjectWizard::MakeSummary() {
  auto* page = new QWidget;
  auto* heading =
      new QLabel(QStringLiteral("When you click Finish, this object will be &created:"), page);
  summary_ = new QPlainTextEdit(page);
  summary_->setObjectName(QStringLiteral("summary"));
  summary_->setReadOnly(true);
  summary_->setTabChangesFocus(true);
  heading->setBuddy(summary_);
  failure_ = new NameLabel(page);
  failure_->setObjectName(QStringLiteral("creation_failure"));
  failure_->setWordWrap(true);
  failure_->hide();
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(MakeHead(parts_.kind.icon, container_, *page));
  layout->addWidget(heading);
  layout->addWidget(summary_, 1);
  layout->addWidget(failure_);
  stack_->addWidget(page);
}

void QtNewObjectWizard::MakeButtons(QVBoxLayout& layout) {
  const auto make = [this](const char* text, const char* name, std::function<void()> click) {
    auto* button = new QPushButton(QString::fromLatin1(text), this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, std::move(click));
    return button;
  };
  back_ = make("< &Back", "wizard_back", [this] { machine_.Back(); });
  next_ = make("&Next >", "wizard_next", [this] { Next(); });
  finish_ = make("&Finish", "wizard_finish", [this] { Finish(); });
  cancel_ = make("Cancel", "wizard_cancel", [this] { reject(); });
  for (QPushButton* button : {back_, cancel_}) button->setAutoDefault(false);
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton* button : {back_, next_, finish_, cancel_}) row->addWidget(button);
  layout.addLayout(row);
}

void QtNewObjectWizard::FillSummary() {
  QStringList paragraphs;
  if (own_page_ != nullptr) {
    QStringList lines;
    for (const std::string& line :
         session::SummaryOf(parts_.kind, own_page_->Values(), parts_.own_context)) {
      lines.append(ToQString(line));
    }
    paragraphs.append(lines.join(QLatin1Char('\n')));
  }
  for (const std::string& summary : machine_.Summaries()) {
    paragraphs.append(ToQString(summary).trimmed());
  }
  QStringList fields;
  for (std::size_t at = 0; at < dialogs_.size(); ++at) {
    const std::size_t place = machine_.OwnPages() + at;
    QtDialog* const dialog = Dialog(place);
    const std::vector<FieldRow>& rows = watched_[at]->rows();
    if (dialog == nullptr || rows.empty()) continue;
    for (const std::string& line :
         session::FilledFields(rows, machine_.pages().Template(place), *dialog)) {
      fields.append(ToQString(line));
    }
  }
  if (!fields.isEmpty()) paragraphs.append(fields.join(QLatin1Char('\n')));
  QStringList taken;
  for (const std::string& line : TakenOverBeside().lines) taken.append(ToQString(line));
  if (!taken.isEmpty()) {
    taken.prepend(QStringLiteral("As %1 has it:").arg(ToQString(parts_.start.model->name())));
    paragraphs.append(taken.join(QLatin1Char('\n')));
  }
  summary_->setPlainText(ReadableLines(paragraphs.join(QStringLiteral("\n\n"))));
  failure_->hide();
}

}  // namespace pelora::console
