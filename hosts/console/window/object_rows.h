// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <array>
#include <deque>
#include <string>

#include "hosts/session/find/list_columns.h"

namespace pelora::console {

/// Texts of which many repeat: equal ones are mostly the same characters in memory, too.
class SharedTexts {
 public:
  /// A text equal to `text`: one that was given before, if it is among the latest.
  [[nodiscard]] QString Shared(QString text);

 private:
  static constexpr std::size_t kPlaces = 256;

  std::array<QString, kPlaces> latest_;
};

/// What the rows of a list hold, made for 100,000 of them: what repeats is kept once, and nothing
/// that is there moves when more come.
class ObjectRows {
 public:
  /// The row has `columns` texts; those for which the object has no cell are empty. Where memory
  /// runs out nothing is added.
  void Add(session::ListedObject listed, std::size_t columns);
  /// Leaves out the first `count` rows.
  void DropFirst(std::size_t count);
  /// Leaves out all rows but the first `count`.
  void KeepFirst(std::size_t count);

  [[nodiscard]] std::size_t Count() const { return rows_.size(); }
  [[nodiscard]] session::DirectoryObject ObjectAt(std::size_t row) const;
  [[nodiscard]] const std::string& DnAt(std::size_t row) const { return rows_[row].dn; }
  [[nodiscard]] const session::ObjectKind& KindAt(std::size_t row) const {
    return *rows_[row].kind;
  }
  [[nodiscard]] session::ObjectMark MarkAt(std::size_t row) const { return rows_[row].mark; }
  /// `session::ListedObject::attribute`.
  [[nodiscard]] const std::string& AttributeAt(std::size_t row) const {
    return rows_[row].attribute;
  }
  [[nodiscard]] const QString& TextAt(std::size_t row, int column) const {
    return rows_[row].texts[column];
  }

 private:
  struct Row {
    std::string dn;
    std::string name;
    std::string description;
    std::string attribute;
    const session::ObjectKind* kind = nullptr;
    session::ObjectMark mark = session::ObjectMark::kNone;
    /// Made for the view once: it asks for them at every drawing.
    QList<QString> texts;
  };

  [[nodiscard]] const session::ObjectKind* Kept(session::ObjectKind kind);

  std::deque<Row> rows_;
  /// Of all rows that there ever were; a directory has no more than it has classes.
  std::deque<session::ObjectKind> kinds_;
  SharedTexts texts_;
};

}  // namespace pelora::console
