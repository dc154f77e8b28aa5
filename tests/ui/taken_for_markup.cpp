// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/taken_for_markup.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyledItemDelegate>
#include <QTextDocument>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

constexpr QLatin1String kElement("<img");
/// Longer ones take their time to be drawn.
constexpr int kLongestText = 3000;

/// Whether a text would do something to what stands beside it.
bool IsObeyed(const QString& text) {
  return text.contains(QChar(0x202E)) || text.contains(QChar(1));
}

/// Takes texts down, each with the place where it stands and what the toolkit makes of it there.
class Reader {
 public:
  /// A text that is drawn as it is.
  void Plain(const std::string& place, const QString& text) {
    if (text.contains(kElement)) ++shown_.places;
    if (IsObeyed(text)) shown_.faults.push_back(place + ": its marks are obeyed");
    if (text.size() > kLongestText) shown_.faults.push_back(place + ": is not cut");
  }
  /// A text in which the toolkit looks for markup.
  void Guessed(const std::string& place, const QString& text) {
    if (!Qt::mightBeRichText(text)) return Plain(place, text);
    if (text.contains(kElement)) {
      shown_.faults.push_back(place + ": " + console::ToUtf8(text));
      return;
    }
    QTextDocument document;
    document.setHtml(text);
    Plain(place, document.toPlainText());
  }
  void Rows(const QAbstractItemView& view, const QModelIndex& parent) {
    const QAbstractItemModel& model = *view.model();
    const auto* const delegate = qobject_cast<const QStyledItemDelegate*>(view.itemDelegate());
    for (int row = 0; row < model.rowCount(parent); ++row) {
      for (int column = 0; column < model.columnCount(parent); ++column) {
        const QModelIndex index = model.index(row, column, parent);
        const QVariant shown = index.data();
        Plain("row",
              delegate != nullptr ? delegate->displayText(shown, view.locale()) : shown.toString());
        for (const Qt::ItemDataRole role : {Qt::ToolTipRole, Qt::WhatsThisRole}) {
          Guessed("row", index.data(role).toString());
        }
      }
      Rows(view, model.index(row, 0, parent));
    }
  }
  [[nodiscard]] const ShownTexts& shown() const { return shown_; }

 private:
  ShownTexts shown_;
};

}  // namespace

ShownTexts TextsOf(const QWidget& window) {
  Reader reader;
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    label->textFormat() == Qt::PlainText ? reader.Plain("label", label->text())
                                         : reader.Guessed("label", label->text());
  }
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    reader.Guessed("tooltip", widget->toolTip());
    reader.Guessed("what's this", widget->whatsThis());
  }
  for (const QAction* action : window.findChildren<QAction*>()) {
    reader.Guessed("action", action->toolTip());
    reader.Plain("status tip", action->statusTip());
  }
  for (const QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
    if (view->model() != nullptr) reader.Rows(*view, {});
  }
  for (const QComboBox* list : window.findChildren<QComboBox*>()) {
    for (int row = 0; row < list->count(); ++row) reader.Plain("choice", list->itemText(row));
  }
  for (const QGroupBox* frame : window.findChildren<QGroupBox*>()) {
    reader.Plain("frame", frame->title());
  }
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    reader.Plain("button", button->text());
  }
  for (const QPlainTextEdit* text : window.findChildren<QPlainTextEdit*>()) {
    if (!text->isReadOnly()) continue;
    for (const QString& line : text->toPlainText().split(QLatin1Char('\n'))) {
      reader.Plain("text", line);
    }
  }
  reader.Plain("title", window.windowTitle());
  return reader.shown();
}

}  // namespace pelora::test
