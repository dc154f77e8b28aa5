// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace pelora::console {

/// UTF-8 to Qt's text and back. A lone surrogate survives the way there and back, so that a text
/// that nobody touched is never written as another.
[[nodiscard]] QString ToQString(std::string_view text);
[[nodiscard]] std::string ToUtf8(const QString& text);

/// A label's text as it is read out: without its mnemonic mark, and "&&" as "&".
[[nodiscard]] QString WithoutMnemonic(const QString& label);

/// `text` such that a label shows it as it is, whatever "&" it holds.
[[nodiscard]] QString AsPlainLabel(const QString& text);

}  // namespace pelora::console
