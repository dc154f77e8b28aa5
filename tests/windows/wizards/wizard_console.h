// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/windows/provider/ldap_namespace.h"
#include "tests/windows/support/extension_module.h"
#include "tests/windows/support/page_collector.h"
#include "tests/windows/support/window_player.h"
#include "tests/windows/wizards/own_page.h"
#include "tests/windows/wizards/wizard_site.h"

namespace pelora::windows::test {

/// A console that makes objects, as the extension meets it: a directory behind the system's
/// functions, and a wizard of the system's with a first page of its own (unless a primary extension
/// asks for the name), the extensions' pages, and a last page that commits.
///
/// Everything that passes between console and extensions, and between anyone and the new object, is
/// written down in one log, in order: `SetButtons 0 on`, `Put <new> peloraAccount 0`,
/// `WriteData 1 = 1`.
class WizardConsole final : private OwnPageEvents {
 public:
  WizardConsole();
  ~WizardConsole();
  WizardConsole(const WizardConsole&) = delete;
  WizardConsole& operator=(const WizardConsole&) = delete;

  [[nodiscard]] pelora::testing::FakeDirectory& directory() { return directory_; }
  [[nodiscard]] pelora::testing::FaultPlan& plan() { return faulty_.plan(); }
  [[nodiscard]] WizardSite& site() { return site_; }
  /// The path under which an object of that name is made.
  [[nodiscard]] static std::string PathOf(const std::string& name);
  /// Looks for the new object before it begins to commit, and gives up when there is none.
  void LookBeforeCommitting() { looks_first_ = true; }
  /// What the next object that is made offers beside `IADs`.
  void Offer(std::vector<Guid> interfaces) { interfaces_ = std::move(interfaces); }

  /// Activates a class, initialises it and takes its page. The references are kept to the end. A
  /// primary one comes first and makes that there is no first page of the console's own.
  [[nodiscard]] HRESULT Add(std::string_view class_name, bool is_primary = false);
  /// Shows the wizard.
  [[nodiscard]] bool Show();
  /// Shows the wizard and waits until it is over. `play` is the person in front of it.
  void Run(const std::function<void()>& play);
  /// Closes the wizard, which releases its pages, and then the extensions.
  void Close();
  /// Closes the wizard alone.
  void CloseWindow();

  [[nodiscard]] HWND window() const { return window_; }
  /// Whether the wizard still stands: Finish and Cancel may have ended it.
  [[nodiscard]] bool IsOpen() const;
  /// The dialog of the page that shows.
  [[nodiscard]] HWND Page() const;
  [[nodiscard]] WindowPlayer User() const { return WindowPlayer(Page()); }
  /// The name that the console's own page asks for.
  void SetName(std::string name) { name_ = std::move(name); }
  [[nodiscard]] bool IsNextEnabled() const;
  void Back();
  void Next();
  void Finish();
  void Cancel();

  [[nodiscard]] ::IDsAdminNewObjExt& extension(std::size_t index) { return *extensions_[index]; }
  /// Hands the extensions another object under a name, or none.
  void HandOut(const std::optional<std::string>& name);
  /// What the extensions say of the object, on the last page.
  [[nodiscard]] const std::vector<std::string>& summaries() const { return summaries_; }
  [[nodiscard]] std::vector<std::string> TakeLog();

 private:
  void OnShown(HWND window, bool is_last) override;
  [[nodiscard]] bool OnNext() override;
  [[nodiscard]] bool OnFinish() override;

  /// The pages in their order, given away.
  [[nodiscard]] std::vector<HPROPSHEETPAGE> TakePages();
  /// Writes a line down, behind what the directory was asked meanwhile.
  void Note(const std::string& line);
  void NoteDirectory();
  [[nodiscard]] bool Commit();
  void WriteData(ULONG phase);
  void Fail(HRESULT status, ULONG phase);
  void Press(int button);

  pelora::testing::FakeDirectory directory_;
  pelora::testing::FaultDirectory faulty_{directory_};
  LdapNamespace provider_{faulty_};
  WizardSite site_;
  OwnPage first_page_{*this, false};
  OwnPage last_page_{*this, true};
  bool has_primary_ = false;
  bool looks_first_ = false;
  std::vector<HPROPSHEETPAGE> pages_;
  std::vector<Ref<::IDsAdminNewObjExt>> extensions_;
  std::vector<Guid> interfaces_ = {pelora::IID_IADsUser};
  std::string name_;
  std::string object_name_;
  Ref<::IADs> object_;
  HWND window_ = nullptr;
  LPARAM buttons_ = 0;
  std::vector<std::string> summaries_;
  std::vector<std::string> log_;
};

}  // namespace pelora::windows::test
