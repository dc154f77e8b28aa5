// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QPalette>

namespace pelora::test {

/// Sets the colours of a dark theme for as long as it lives.
class DarkTheme {
 public:
  DarkTheme() {
    QPalette dark(QColor(0x31, 0x36, 0x3B));
    dark.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    dark.setColor(QPalette::Text, QColor(0xEF, 0xF0, 0xF1));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
      dark.setColor(QPalette::Disabled, role, QColor(0x80, 0x86, 0x8B));
    }
    QApplication::setPalette(dark);
  }
  ~DarkTheme() { QApplication::setPalette(light_); }
  DarkTheme(const DarkTheme&) = delete;
  DarkTheme& operator=(const DarkTheme&) = delete;

 private:
  QPalette light_ = QApplication::palette();
};

}  // namespace pelora::test
