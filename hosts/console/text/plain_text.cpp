// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/text/plain_text.h"

#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QMessageBox>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>

namespace pelora::console {
namespace {

/// Longer texts are of no use in a box or a tooltip, and one of a megabyte takes minutes to lay
/// out.
constexpr qsizetype kLongestText = 2000;

bool IsHarmful(QChar character) {
  const char16_t unit = character.unicode();
  const bool is_control = character.category() == QChar::Other_Control;
  const bool turns_direction =
      (unit >= u'\u202A' && unit <= u'\u202E') || (unit >= u'\u2066' && unit <= u'\u2069');
  return turns_direction || (is_control && unit != u'\n' && unit != u'\t');
}

/// From now on a label whose text can be selected breaks its lines within a word, too, when the
/// word is longer than a line. It does so until it is given another text.
void BreakLongWords(QLabel& label) {
  auto* const document = label.findChild<QTextDocument*>();
  if (document == nullptr) return;
  const auto break_words = [document] {
    QTextOption option = document->defaultTextOption();
    if (option.wrapMode() != QTextOption::WordWrap) return;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document->setDefaultTextOption(option);
  };
  // The label goes back to words alone each time that it is laid out.
  QObject::connect(document->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged,
                   document, break_words);
}

}  // namespace

QString Readable(const QString& text) {
  // Lists ask with every row that they draw.
  if (text.size() <= kLongestText && std::ranges::none_of(text, IsHarmful)) return text;
  QString readable = text.left(kLongestText);
  for (QChar& character : readable) {
    if (IsHarmful(character)) character = QChar(QChar::ReplacementCharacter);
  }
  if (text.size() > kLongestText) readable += QChar(u'\u2026');
  return readable;
}

void SetPlainTitle(QWidget& window, const QString& title) {
  QString shown = Readable(title).replace(QLatin1Char('\n'), QLatin1Char(' '));
  window.setWindowTitle(shown.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

QString PlainToolTip(const QString& text) {
  if (text.isEmpty()) return {};
  return QStringLiteral("<div style=\"white-space: pre-wrap\">%1</div>")
      .arg(Readable(text).toHtmlEscaped());
}

void SetPlainToolTip(QWidget& widget, const QString& text) {
  widget.setToolTip(PlainToolTip(text));
  // Without a description of its own it would hear the tooltip's markup.
  widget.setAccessibleDescription(Readable(text));
}

void ShowPlainly(QLabel& label) { label.setTextFormat(Qt::PlainText); }

void SetPlainTexts(QMessageBox& box, const QString& text, const QString& addition) {
  box.setTextFormat(Qt::PlainText);
  box.setText(Readable(text));
  box.setInformativeText(Readable(addition));
  // What a box is told of formats and selecting concerns its text alone.
  for (QLabel* label : box.findChildren<QLabel*>()) {
    ShowPlainly(*label);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    BreakLongWords(*label);
  }
}

}  // namespace pelora::console
