// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/find_bar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <algorithm>
#include <chrono>

#include "hosts/console/finding/list_line.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// A search begins when nothing has been typed for so long.
constexpr std::chrono::milliseconds kTypingPause{300};
constexpr int kAnswerCharacters = 20;
constexpr int kViewCharacters = 18;
constexpr int kWhereCharacters = 12;

std::chrono::year_month_day Today() {
  return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
}

}  // namespace

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      check_views_(session::CheckViews()),
      text_(new ListLine(this)),
      where_(new QComboBox(this)),
      views_(new QComboBox(this)),
      question_(new QLabel(this)),
      answer_(new QLineEdit(this)) {
  text_->setObjectName(QStringLiteral("find_text"));
  text_->setPlaceholderText(QStringLiteral("Names, addresses, a pasted list"));
  where_->setObjectName(QStringLiteral("find_where"));
  where_->addItems({QStringLiteral("Whole directory"), QString(), QString()});
  SetContainer({});
  where_->setMinimumContentsLength(kWhereCharacters);
  where_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  views_->setObjectName(QStringLiteral("find_view"));
  views_->setMinimumContentsLength(kViewCharacters);
  views_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  answer_->setObjectName(QStringLiteral("find_answer"));
  answer_->setMaximumWidth(kAnswerCharacters * fontMetrics().averageCharWidth());
  ShowPlainly(*question_);
  question_->setBuddy(answer_);

  auto* what = new QHBoxLayout;
  auto* view = new QHBoxLayout;
  const auto add = [this](QHBoxLayout* line, const char* label, QWidget* field, int stretch) {
    auto* text = new QLabel(QString::fromLatin1(label), this);
    text->setBuddy(field);
    line->addWidget(text);
    line->addWidget(field, stretch);
  };
  add(what, "Fin&d:", text_, 2);
  add(what, "&In:", where_, 1);
  add(view, "Vie&w:", views_, 2);
  view->addWidget(question_);
  view->addWidget(answer_);
  view->addStretch(1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addLayout(what);
  layout->addLayout(view);

  pause_.setSingleShot(true);
  pause_.setInterval(kTypingPause);
  connect(&pause_, &QTimer::timeout, this,
          [this] { Ask(!text_->text().trimmed().isEmpty() || views_->currentIndex() > 0); });
  connect(text_, &QLineEdit::textEdited, this, [this] { pause_.start(); });
  connect(answer_, &QLineEdit::textEdited, this, [this] { pause_.start(); });
  for (QLineEdit* line : {text_, answer_}) {
    connect(line, &QLineEdit::returnPressed, this, &FindBar::OnEntered);
  }
  connect(where_, &QComboBox::activated, this, [this] {
    if (is_asking_) Ask(true);
  });
  connect(views_, &QComboBox::activated, this, [this] { OnViewChosen(); });
  auto* clear =
      new QShortcut(QKeySequence(Qt::Key_Escape), text_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(clear, &QShortcut::activated, this, [this] {
    Clear();
    if (on_asked) on_asked();
  });
  auto* down =
      new QShortcut(QKeySequence(Qt::Key_Down), text_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(down, &QShortcut::activated, this, [this] {
    if (on_down) on_down();
  });
  FillViews();
}

void FindBar::FillViews() {
  const QString chosen = views_->currentText();
  views_->clear();
  for (const session::ReadyView& ready : session::ReadyViews()) {
    views_->addItem(ToQString(ready.name));
  }
  for (const std::vector<session::View>* list : {&user_views_, &check_views_}) {
    if (list->empty()) continue;
    views_->insertSeparator(views_->count());
    for (const session::View& view : *list) {
      views_->addItem(Readable(ToQString(view.name)), ToQString(view.name));
    }
  }
  // A line between the views has no text either.
  views_->setCurrentIndex(chosen.isEmpty() ? 0 : std::max(views_->findText(chosen), 0));
  ShowQuestion();
}

void FindBar::SetUserViews(std::vector<session::View> views) {
  user_views_ = std::move(views);
  FillViews();
}

void FindBar::SetContainer(const QString& name) {
  const QString shown = name.isEmpty() ? QStringLiteral("Chosen container") : Readable(name);
  where_->setItemText(static_cast<int>(Where::kBelow), QStringLiteral("%1 and below").arg(shown));
  where_->setItemText(static_cast<int>(Where::kContainer), shown);
}

FindBar::Where FindBar::where() const { return static_cast<Where>(where_->currentIndex()); }

void FindBar::Ask(bool asks) {
  pause_.stop();
  is_asking_ = asks;
  asked_ = {text_->text(), answer_->text()};
  if (on_asked) on_asked();
}

void FindBar::OnEntered() {
  const bool is_asked = is_asking_ && asked_ == QStringList{text_->text(), answer_->text()};
  if (is_asked && !text_->text().trimmed().isEmpty() && on_down) return on_down();
  Ask(true);
}

void FindBar::Clear() {
  pause_.stop();
  is_asking_ = false;
  text_->clear();
  views_->setCurrentIndex(0);
  ShowQuestion();
}

void FindBar::OnViewChosen() {
  ShowQuestion();
  Ask(true);
}

void FindBar::ShowQuestion() {
  const session::ReadyView* const ready = Ready();
  const auto question = ready == nullptr ? session::ViewQuestion::kNothing : ready->question;
  const bool asks = question != session::ViewQuestion::kNothing;
  question_->setVisible(asks);
  answer_->setVisible(asks);
  question_->setText(ToQString(session::QuestionText(question)));
  answer_->setText(ToQString(session::PresetAnswer(question, Today())));
  answer_->setAccessibleName(WithoutMnemonic(question_->text()));
}

const session::ReadyView* FindBar::Ready() const {
  const auto views = session::ReadyViews();
  const auto index = static_cast<std::size_t>(std::max(views_->currentIndex(), 0));
  return index < views.size() ? &views[index] : nullptr;
}

QString FindBar::ShowView(const QString& name, const std::optional<QString>& answer) {
  int index = views_->findText(name, Qt::MatchFixedString);
  if (index < 0) index = views_->findData(name, Qt::UserRole, Qt::MatchFixedString);
  if (index < 0) return QStringLiteral("There is no view \"%1\".").arg(name);
  views_->setCurrentIndex(index);
  ShowQuestion();
  if (answer) answer_->setText(*answer);
  Ask(true);
  return {};
}

std::string FindBar::Text() const { return ToUtf8(text_->text()); }

session::AnsweredView FindBar::View() const {
  if (const session::ReadyView* const ready = Ready(); ready != nullptr) {
    return session::Answer(*ready, ToUtf8(answer_->text()));
  }
  const std::string name = ToUtf8(views_->currentData().toString());
  for (const std::vector<session::View>* list : {&user_views_, &check_views_}) {
    const auto found = std::ranges::find(*list, name, &session::View::name);
    if (found != list->end()) return {.view = *found, .error = {}};
  }
  return {.view = {}, .error = "Choose a view."};
}

QString FindBar::ViewName() const {
  return is_asking_ ? ToQString(View().view.name) : QStringLiteral("container");
}

}  // namespace pelora::console
