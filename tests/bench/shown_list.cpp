// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/shown_list.h"

#include <QApplication>
#include <stdexcept>

#include "tests/lab/lab.h"

namespace pelora::lab {

using State = console::ContainerListing::State;

ShownList::ShownList(ldap::NetworkSession& session) : reader_(session.open_another()) {
  pane_.resize(600, 800);
  pane_.show();
  listing_.SetReader(&reader_);
}

ShownList::~ShownList() { listing_.SetReader(nullptr); }

void ShownList::Show(const std::string& container) {
  listing_.Show({.listing = {.base = container, .below = false}, .columns = {"type", "remark"}});
  while (listing_.state() == State::kReading) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  QApplication::processEvents();
  if (listing_.state() != State::kWhole) throw std::runtime_error("not listed: " + container);
}

void ShownList::LookAway() { Show("CN=Builtin," + Base()); }

}  // namespace pelora::lab
