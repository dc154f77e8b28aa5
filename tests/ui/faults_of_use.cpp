// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/faults_of_use.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSet>
#include <QTextEdit>
#include <QToolButton>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/dialogs/static_controls.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

using console::MnemonicOf;
using console::ToUtf8;

bool IsInput(const QWidget& widget) {
  if (qobject_cast<const QHeaderView*>(&widget) != nullptr) return false;
  return qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
         qobject_cast<const QTextEdit*>(&widget) != nullptr;
}

/// A line in which a control of its own is typed into.
bool IsPart(const QWidget& widget) {
  return qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(widget.parentWidget()) != nullptr;
}

/// Has keys that everybody knows, or belongs to the toolkit.
bool NeedsNoLetter(const QAbstractButton& button) {
  static const QSet<QString> known = {QStringLiteral("OK"), QStringLiteral("Cancel"),
                                      QStringLiteral("Close")};
  const bool is_tool = qobject_cast<const QToolButton*>(&button) != nullptr;
  return is_tool || button.text().isEmpty() ||
         known.contains(console::WithoutMnemonic(button.text()));
}

/// Inputs without a text that could hold a letter.
bool IsReachedOtherwise(const QWidget& input) {
  static const QSet<QString> known = {
      // Each comes first on its page, or right behind a control that has a letter: Tab leads there.
      QStringLiteral("control_284"), QStringLiteral("control_311"), QStringLiteral("control_1002"),
      QStringLiteral("control_1007"), QStringLiteral("results_reason"),
      QStringLiteral("review_ldif"), QStringLiteral("conflicts_choice"),
      QStringLiteral("box_details"),
      // Down leads from the line above to the list, and Tab to the tree.
      QStringLiteral("object_list"), QStringLiteral("container_tree")};
  return known.contains(input.objectName()) || (input.focusPolicy() & Qt::TabFocus) == 0;
}

std::string NameOf(const QWidget& widget) {
  return ToUtf8(widget.objectName()) + " (" + widget.metaObject()->className() + ")";
}

std::string SizeText(QSize size) {
  return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

template <class Widget>
QList<Widget*> Shown(const QWidget& window) {
  QList<Widget*> shown;
  for (auto* widget : window.findChildren<Widget*>()) {
    if (widget->isVisible() && widget->window() == &window) shown.append(widget);
  }
  return shown;
}

/// What is reached by each letter of a window.
class Letters {
 public:
  explicit Letters(const QWidget& window) {
    for (const auto* button : Shown<QAbstractButton>(window)) {
      if (!NeedsNoLetter(*button)) Add(button->text(), button);
    }
    for (const auto* frame : Shown<QGroupBox>(window)) AddFrame(*frame);
    for (const auto* label : Shown<QLabel>(window)) {
      if (label->buddy() != nullptr) Add(label->text(), label->buddy());
    }
    if (const auto* bar = window.findChild<QMenuBar*>()) AddMenu(bar->actions());
    for (const auto* input : Shown<QWidget>(window)) {
      if (input->contextMenuPolicy() == Qt::ActionsContextMenu) AddMenu(input->actions());
      if (!IsInput(*input) || IsPart(*input) || reached_.contains(input)) continue;
      const bool has_keyboard = window.focusWidget() == input;
      if (has_keyboard || IsReachedOtherwise(*input)) continue;
      faults_.push_back("no letter leads to " + NameOf(*input));
    }
  }

  [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }

 private:
  void Add(const QString& text, const QWidget* reached) {
    const QChar letter = MnemonicOf(text);
    if (letter.isNull()) {
      faults_.push_back("no letter in \"" + ToUtf8(text) + "\"");
    } else if (letters_.contains(letter)) {
      faults_.push_back("one letter for \"" + ToUtf8(text) + "\" and \"" +
                        ToUtf8(letters_.value(letter)) + "\"");
    }
    letters_.insert(letter, text);
    reached_.insert(reached);
  }
  void AddFrame(const QGroupBox& frame) {
    const auto* const group = dynamic_cast<const console::GroupFrame*>(&frame);
    if (group == nullptr || MnemonicOf(frame.title()).isNull()) return;
    Add(frame.title(), group->next());
  }
  void AddMenu(const QList<QAction*>& entries) {
    for (std::string& fault : FaultsOfMenu(entries)) faults_.push_back(std::move(fault));
  }

  QMap<QChar, QString> letters_;
  QSet<const QWidget*> reached_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> FaultsOfKeys(const QWidget& window) { return Letters(window).faults(); }

std::vector<std::string> FaultsOfMenu(const QList<QAction*>& entries) {
  std::vector<std::string> faults;
  QMap<QChar, QString> used;
  for (const QAction* entry : entries) {
    if (entry->isSeparator() || !entry->isVisible()) continue;
    const QChar letter = MnemonicOf(entry->text());
    if (letter.isNull()) {
      faults.push_back("no letter in menu \"" + ToUtf8(entry->text()) + "\"");
    } else if (used.contains(letter)) {
      faults.push_back("one letter for \"" + ToUtf8(entry->text()) + "\" and \"" +
                       ToUtf8(used.value(letter)) + "\"");
    }
    used.insert(letter, entry->text());
    if (entry->menu() == nullptr) continue;
    for (std::string& fault : FaultsOfMenu(entry->menu()->actions())) {
      faults.push_back(std::move(fault));
    }
  }
  return faults;
}

std::vector<std::string> FaultsOfTexts(const QWidget& window) {
  std::vector<std::string> faults;
  for (const auto* label : Shown<QLabel>(window)) {
    if (!label->wordWrap() || label->text().isEmpty()) continue;
    const bool is_hint = dynamic_cast<const console::HintLabel*>(label) != nullptr;
    if (!is_hint && dynamic_cast<const console::NameLabel*>(label) != nullptr) continue;
    const bool is_box = label->objectName().startsWith(QLatin1String("qt_msgbox"));
    const int broken = Qt::TextWordWrap | (is_hint || is_box ? Qt::TextWrapAnywhere : 0);
    const QRect room = label->contentsRect();
    const QRect lines(0, 0, room.width(), QWIDGETSIZE_MAX);
    const QSize taken = label->fontMetrics().boundingRect(lines, broken, label->text()).size();
    if (taken.width() <= room.width() && taken.height() <= room.height()) continue;
    faults.push_back(NameOf(*label) + " of " + SizeText(room.size()) + " for " + SizeText(taken) +
                     ": " + ToUtf8(label->text()));
  }
  return faults;
}

std::vector<std::string> FaultsOfNames(const QWidget& window) {
  std::vector<std::string> faults;
  for (auto* widget : Shown<QWidget>(window)) {
    const bool is_control =
        IsInput(*widget) || qobject_cast<const QAbstractButton*>(widget) != nullptr;
    if (!is_control || IsPart(*widget) || widget->focusPolicy() == Qt::NoFocus) continue;
    QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(widget);
    if (heard == nullptr || heard->text(QAccessible::Name).trimmed().isEmpty()) {
      faults.push_back("nameless: " + NameOf(*widget));
    }
  }
  return faults;
}

}  // namespace pelora::test
