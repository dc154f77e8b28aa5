// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "tests/ui/console_test.h"

namespace pelora::test {

/// Something that is looked at in a window, which stands on the screen, by a name for it.
using LookAtWindow = std::function<void(QWidget& window, const std::string& name)>;

/// Opens the console's windows, one after the other, with names of 200 characters in them wherever
/// a name is shown, has each looked at, and closes it: the main window, every tab of every kind of
/// object, every page of every wizard, and every dialog and box.
void ForEveryWindow(OpenCompany& company, contract::ModalScripts& scripts,
                    const LookAtWindow& look);

}  // namespace pelora::test
