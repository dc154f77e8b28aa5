// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "directory/select_ad_object.h"
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"

namespace pelora::test {

/// What a chooser gives that nothing was chosen in.
inline constexpr HRESULT kCancelled = E_INVALIDARG;
inline const std::string kHelga =
    "CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

/// The console's choosers over the sample company, in front of a person.
class ChoosersTest : public ConsoleTest {
 protected:
  /// What is to be done in the next chooser.
  void Play(std::function<void(ChooserUser&)> script) {
    modal_scripts().Add([script = std::move(script)](QWidget& window) {
      ChooserUser user(window);
      // The desktop of the tests activates no window by itself.
      contract::Activate(window);
      script(user);
    });
  }
  /// As above, once everything there is has been found.
  void PlaySearched(std::function<void(ChooserUser&)> script) {
    Play([script = std::move(script)](ChooserUser& user) {
      user.WaitForSearch();
      script(user);
    });
  }

  HRESULT PickUsers(SelectionMode mode = SelectionMode::kMultiple) {
    return chooser_.SelectUsers(nullptr, names_, mode);
  }

  console::QtChoosers choosers_{*session().store,
                                session().open_another,
                                // Long enough that Enter alone begins a search.
                                {.limit = 1000, .typing_pause = std::chrono::minutes(10)}};
  console::QtMessageBox message_box_;
  console::ConsolePlatform platform_{session().service, message_box_, choosers_, module()};
  SelectADObject chooser_{platform_.platform()};
  std::vector<std::string> names_ = {"from before"};
};

}  // namespace pelora::test
