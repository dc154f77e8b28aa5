// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/mnemonics.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <algorithm>
#include <set>
#include <vector>

#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr qsizetype kNone = -1;

/// A text without its mark, and the places of its letters, the best first.
struct Caption {
  QString text;
  std::vector<qsizetype> places;
};

Caption Read(const QString& marked) {
  Caption caption{.text = WithoutMnemonic(marked), .places = {}};
  const QChar own = MnemonicOf(marked);
  const auto add = [&caption](qsizetype place) {
    if (!caption.text[place].isLetterOrNumber()) return;
    if (std::ranges::find(caption.places, place) == caption.places.end()) {
      caption.places.push_back(place);
    }
  };
  const auto begins_word = [&caption](qsizetype place) {
    return place == 0 || !caption.text[place - 1].isLetterOrNumber();
  };
  for (const bool only_own : {true, false}) {
    for (const bool only_first : {true, false}) {
      for (qsizetype place = 0; place < caption.text.size(); ++place) {
        if (only_own && caption.text[place].toUpper() != own) continue;
        if (!only_first || begins_word(place)) add(place);
      }
    }
  }
  return caption;
}

/// Who has which letter. Whoever finds all of his taken asks those who have them to take others.
class Letters {
 public:
  Letters(std::vector<Caption> captions, const QString& taken) : captions_(std::move(captions)) {
    for (const QChar letter : taken) taken_.insert(letter.toUpper());
    places_.assign(captions_.size(), kNone);
  }

  void Give(std::size_t caption) {
    asked_.clear();
    (void)Find(caption);
  }
  [[nodiscard]] QString Marked(std::size_t caption) const {
    const Caption& of = captions_[caption];
    const qsizetype place = places_[caption];
    if (place == kNone) return AsPlainLabel(of.text);
    return AsPlainLabel(of.text.left(place)) + QLatin1Char('&') + AsPlainLabel(of.text.mid(place));
  }

 private:
  [[nodiscard]] bool Find(std::size_t caption) {
    for (const bool only_free : {true, false}) {
      for (const qsizetype place : captions_[caption].places) {
        const QChar letter = captions_[caption].text[place].toUpper();
        if (taken_.contains(letter)) continue;
        const auto owner = owners_.constFind(letter);
        const bool is_free = owner == owners_.constEnd();
        if (!is_free && (only_free || asked_.contains(letter))) continue;
        asked_.insert(letter);
        if (!is_free && !Find(*owner)) continue;
        owners_.insert(letter, caption);
        places_[caption] = place;
        return true;
      }
    }
    return false;
  }

  std::vector<Caption> captions_;
  std::vector<qsizetype> places_;
  QMap<QChar, std::size_t> owners_;
  // The toolkit's own sets end the program where there is no memory.
  std::set<QChar> taken_;
  std::set<QChar> asked_;
};

}  // namespace

QChar MnemonicOf(const QString& text) {
  const QKeySequence key = QKeySequence::mnemonic(text);
  return key.isEmpty() ? QChar() : QChar(key[0].key());
}

QStringList WithMnemonics(const QStringList& texts, const QString& taken) {
  std::vector<Caption> captions;
  for (const QString& text : texts) captions.push_back(Read(text));
  Letters letters(std::move(captions), taken);
  for (const bool has_own : {true, false}) {
    for (qsizetype at = 0; at < texts.size(); ++at) {
      if (MnemonicOf(texts[at]).isNull() != has_own) letters.Give(static_cast<std::size_t>(at));
    }
  }
  QStringList marked;
  for (qsizetype at = 0; at < texts.size(); ++at) {
    marked.append(letters.Marked(static_cast<std::size_t>(at)));
  }
  return marked;
}

QString MnemonicsIn(const QWidget& window, const QWidget* except) {
  QString letters;
  const auto add = [&](const QWidget& widget, const QString& text) {
    const QChar letter = MnemonicOf(text);
    if (&widget != except && widget.isVisible() && !letter.isNull()) letters.append(letter);
  };
  for (const auto* button : window.findChildren<QAbstractButton*>()) add(*button, button->text());
  for (const auto* frame : window.findChildren<QGroupBox*>()) add(*frame, frame->title());
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) add(*label, label->text());
  }
  return letters;
}

}  // namespace pelora::console
