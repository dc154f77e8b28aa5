// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/taken_for_markup.h"

#include <QAbstractItemView>
#include <QAction>
#include <QLabel>
#include <QTextDocument>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

constexpr QLatin1String kElement("<img");

/// Takes texts down, each with the place where it stands and what the toolkit makes of it there.
class Reader {
 public:
  /// A text that is drawn as it is.
  void Plain(const QString& text) {
    if (text.contains(kElement)) ++shown_.places;
  }
  /// A text in which the toolkit looks for markup.
  void Guessed(const std::string& place, const QString& text) {
    if (!Qt::mightBeRichText(text)) return Plain(text);
    if (text.contains(kElement)) {
      shown_.faults.push_back(place + ": " + console::ToUtf8(text));
      return;
    }
    QTextDocument document;
    document.setHtml(text);
    Plain(document.toPlainText());
  }
  void Rows(const QAbstractItemModel& model, const QModelIndex& parent) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
      for (int column = 0; column < model.columnCount(parent); ++column) {
        const QModelIndex index = model.index(row, column, parent);
        Plain(index.data().toString());
        for (const Qt::ItemDataRole role : {Qt::ToolTipRole, Qt::WhatsThisRole}) {
          Guessed("row", index.data(role).toString());
        }
      }
      Rows(model, model.index(row, 0, parent));
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
    label->textFormat() == Qt::PlainText ? reader.Plain(label->text())
                                         : reader.Guessed("label", label->text());
  }
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    reader.Guessed("tooltip", widget->toolTip());
    reader.Guessed("what's this", widget->whatsThis());
  }
  for (const QAction* action : window.findChildren<QAction*>()) {
    reader.Guessed("action", action->toolTip());
  }
  for (const QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
    if (view->model() != nullptr) reader.Rows(*view->model(), {});
  }
  return reader.shown();
}

}  // namespace pelora::test
