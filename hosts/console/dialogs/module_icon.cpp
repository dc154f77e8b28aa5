// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/module_icon.h"

#include <QBuffer>
#include <QImageReader>
#include <cstdlib>
#include <optional>

namespace pelora::console {
namespace {

using resources::ResourceFile;

// An icon resource is the directory of an icon file whose entries name resources of their own
// instead of places in the file.
constexpr qsizetype kHeaderSize = 6;
constexpr qsizetype kCountOffset = 4;
constexpr qsizetype kResourceEntrySize = 14;
constexpr qsizetype kNumberOffset = 12;
/// Of an entry: what stands in both forms.
constexpr qsizetype kSharedSize = 12;
constexpr qsizetype kFileEntrySize = 16;

QByteArray BytesOf(std::span<const std::byte> data) {
  return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())};
}

std::uint16_t ReadNumber(const QByteArray& bytes, qsizetype offset) {
  const auto low = static_cast<std::uint8_t>(bytes[offset]);
  const auto high = static_cast<std::uint8_t>(bytes[offset + 1]);
  return static_cast<std::uint16_t>(low | high << 8);
}

void AppendNumber(QByteArray& bytes, qsizetype number) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.append(static_cast<char>(static_cast<std::uint64_t>(number) >> shift & 0xFF));
  }
}

/// The icon as a file of its own; empty when it is not whole.
QByteArray IconFile(const ResourceFile& module, std::uint16_t number) {
  const auto group = module.Find(resources::kGroupIconType, number);
  if (!group) return {};
  const QByteArray directory = BytesOf(group->data);
  if (directory.size() < kHeaderSize) return {};
  const qsizetype count = ReadNumber(directory, kCountOffset);
  if (directory.size() < kHeaderSize + count * kResourceEntrySize) return {};
  QByteArray file = directory.left(kHeaderSize);
  QByteArray images;
  const qsizetype first_image = kHeaderSize + count * kFileEntrySize;
  for (qsizetype i = 0; i < count; ++i) {
    const qsizetype entry = kHeaderSize + i * kResourceEntrySize;
    const auto image =
        module.Find(resources::kIconType, ReadNumber(directory, entry + kNumberOffset));
    if (!image) return {};
    file.append(directory.mid(entry, kSharedSize));
    AppendNumber(file, first_image + images.size());
    images.append(BytesOf(image->data));
  }
  return file + images;
}

}  // namespace

QPixmap ReadModuleIcon(const ResourceFile& module, std::uint16_t number, int height) {
  QByteArray file = IconFile(module, number);
  QBuffer buffer(&file);
  QImageReader reader(&buffer, "ico");
  QImage nearest;
  for (int i = 0; i < reader.imageCount() && reader.jumpToImage(i); ++i) {
    const QImage image = reader.read();
    const auto distance = [height](const QImage& other) {
      return std::abs(other.height() - height);
    };
    if (!image.isNull() && (nearest.isNull() || distance(image) < distance(nearest)))
      nearest = image;
  }
  if (nearest.isNull() || nearest.height() == height) return QPixmap::fromImage(nearest);
  return QPixmap::fromImage(nearest.scaledToHeight(height, Qt::SmoothTransformation));
}

}  // namespace pelora::console
