// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "hosts/session/commands/name_patterns.h"
#include "hosts/session/find/view_file.h"

namespace pelora::console {

/// What the console remembers of a user in his own folder: the columns of each view and how they
/// lie, the place of the window, the views that he has made, and what names follow in a company.
///
/// What is found there is taken as if anybody had written it; what cannot be written is not
/// remembered.
class Remembered final {
 public:
  /// In the folder that the desktop has for settings.
  Remembered();

  /// The columns that the user chose for a view; none when he chose none.
  [[nodiscard]] std::optional<std::vector<std::string>> Columns(const QString& view) const;
  void SetColumns(const QString& view, const std::vector<std::string>& columns);
  /// `ObjectListPane::Layout` of a view.
  [[nodiscard]] QByteArray Layout(const QString& view) const;
  void SetLayout(const QString& view, const QByteArray& layout);

  /// Anything else of a name of its own: the window's place, say.
  [[nodiscard]] QByteArray Bytes(const QString& name) const;
  void SetBytes(const QString& name, const QByteArray& bytes);

  /// What names of new users follow in a company of a directory (its name or path), by
  /// distinguished name; none: what belongs to no company.
  [[nodiscard]] session::NamePatterns Patterns(const std::string& directory,
                                               const std::string& company) const;
  void SetPatterns(const std::string& directory, const std::string& company,
                   const session::NamePatterns& patterns);

  /// The user's views; a sentence when their file holds none.
  [[nodiscard]] session::ReadViews Views() const;
  /// A sentence when they cannot be written; empty otherwise.
  [[nodiscard]] QString SetViews(const std::vector<session::View>& views);

 private:
  [[nodiscard]] std::string ViewFile() const;

  mutable QSettings settings_;
};

}  // namespace pelora::console
