// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_rows.h"

#include <QHash>
#include <algorithm>
#include <utility>

#include "hosts/console/text/qt_text.h"

namespace pelora::console {

QString SharedTexts::Shared(QString text) {
  QString& latest = latest_[qHash(text) % kPlaces];
  if (latest != text) latest = std::move(text);
  return latest;
}

const session::ObjectKind* ObjectRows::Kept(session::ObjectKind kind) {
  const auto known = std::ranges::find(kinds_, kind);
  if (known != kinds_.end()) return &*known;
  kinds_.push_back(std::move(kind));
  return &kinds_.back();
}

void ObjectRows::Add(session::ListedObject listed, std::size_t columns) {
  Row row{.dn = std::move(listed.object.dn),
          .name = std::move(listed.object.name),
          .description = std::move(listed.object.description),
          .attribute = std::move(listed.attribute),
          .kind = Kept(std::move(listed.object.kind)),
          .mark = listed.object.mark,
          .texts = {}};
  row.texts.reserve(static_cast<qsizetype>(columns));
  for (std::size_t column = 0; column < columns; ++column) {
    const bool has_cell = column < listed.cells.size();
    row.texts.append(texts_.Shared(has_cell ? ToQString(listed.cells[column]) : QString()));
  }
  rows_.push_back(std::move(row));
}

void ObjectRows::DropFirst(std::size_t count) {
  rows_.erase(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(count));
}

void ObjectRows::KeepFirst(std::size_t count) {
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(count), rows_.end());
}

session::DirectoryObject ObjectRows::ObjectAt(std::size_t row) const {
  const Row& kept = rows_[row];
  return {.dn = kept.dn,
          .name = kept.name,
          .description = kept.description,
          .kind = *kept.kind,
          .mark = kept.mark};
}

}  // namespace pelora::console
