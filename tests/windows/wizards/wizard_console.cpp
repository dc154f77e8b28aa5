// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/wizards/wizard_console.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <utility>

#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/provider/provider_object.h"
#include "tests/windows/support/modal_sheet.h"

namespace pelora::windows::test {
namespace {

constexpr int kBackButton = 0x3023;
constexpr int kNextButton = 0x3024;
constexpr int kFinishButton = 0x3025;
constexpr ULONG kPreCommit = DSA_NEWOBJ_CTX_PRECOMMIT;
constexpr ULONG kCommit = DSA_NEWOBJ_CTX_COMMIT;
constexpr ULONG kPostCommit = DSA_NEWOBJ_CTX_POSTCOMMIT;
constexpr ULONG kCleanup = DSA_NEWOBJ_CTX_CLEANUP;

/// A status as the log has it: small ones in decimal.
std::string StatusText(HRESULT status) {
  if (status >= 0) return std::to_string(status);
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(status));
  return text.data();
}

PROPSHEETHEADERW HeaderOf(std::vector<HPROPSHEETPAGE>& pages, DWORD flags) {
  PROPSHEETHEADERW header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = flags;
  header.pszCaption = L"New Object";
  header.nPages = static_cast<UINT>(pages.size());
  header.phpage = pages.data();
  return header;
}

}  // namespace

WizardConsole::WizardConsole() {
  site_.on_buttons = [this](ULONG page, bool valid) {
    Note("SetButtons " + std::to_string(page) + (valid ? " on" : " off"));
    buttons_ = PSWIZB_BACK | (valid ? PSWIZB_NEXT : 0);
    SendMessageW(window_, PSM_SETWIZBUTTONS, 0, buttons_);
  };
  site_.on_create = [this](const std::wstring& name) {
    Note("CreateNew " + ToNarrow(name));
    HandOut(ToNarrow(name));
    return S_OK;
  };
}

WizardConsole::~WizardConsole() { Close(); }

std::string WizardConsole::PathOf(const std::string& name) {
  return "LDAP://dc1/CN=" + name + ",OU=Sales,DC=fake,DC=example";
}

HRESULT WizardConsole::Add(std::string_view class_name, bool is_primary) {
  Ref<::IDsAdminNewObjExt> extension;
  if (const HRESULT status = Activate(ClassId(class_name), extension); status != S_OK) {
    return status;
  }
  std::wstring title = L"New Object";
  std::wstring container = L"fake.example/Größe & 月";
  DSA_NEWOBJ_DISPINFO info = {sizeof(info), nullptr, title.data(), container.data()};
  if (extensions_.empty()) {
    // Another wizard begins.
    has_primary_ = false;
    object_name_.clear();
  }
  has_primary_ = has_primary_ || is_primary;
  site_.is_primary = has_primary_;
  HRESULT status = extension->Initialize(nullptr, nullptr, L"whatever", &site_, &info);
  PageCollector collector;
  if (status == S_OK) status = extension->AddPages(collector.function(), collector.parameter());
  for (const HPROPSHEETPAGE page : collector.Take()) pages_.push_back(page);
  extensions_.push_back(std::move(extension));
  return status;
}

std::vector<HPROPSHEETPAGE> WizardConsole::TakePages() {
  std::vector<HPROPSHEETPAGE> pages;
  if (!has_primary_) pages.push_back(first_page_.Make());
  pages.insert(pages.end(), pages_.begin(), pages_.end());
  pages.push_back(last_page_.Make());
  pages_.clear();
  return pages;
}

bool WizardConsole::Show() {
  std::vector<HPROPSHEETPAGE> pages = TakePages();
  const PROPSHEETHEADERW header = HeaderOf(pages, PSH_WIZARD | PSH_MODELESS);
  window_ = reinterpret_cast<HWND>(PropertySheetW(&header));
  HandleWaitingMessages();
  // What was said of the buttons while the window was being made had none to reach.
  SendMessageW(window_, PSM_SETWIZBUTTONS, 0, buttons_);
  return window_ != nullptr;
}

void WizardConsole::Run(const std::function<void()>& play) {
  std::vector<HPROPSHEETPAGE> pages = TakePages();
  const PROPSHEETHEADERW header = HeaderOf(pages, PSH_WIZARD);
  (void)RunModalSheet(header, [&](HWND wizard) {
    window_ = wizard;
    SendMessageW(window_, PSM_SETWIZBUTTONS, 0, buttons_);
    play();
  });
  window_ = nullptr;
}

void WizardConsole::CloseWindow() {
  if (window_ == nullptr) return;
  DestroyWindow(std::exchange(window_, nullptr));
  HandleWaitingMessages();
}

void WizardConsole::Close() {
  object_.Reset();
  CloseWindow();
  for (const HPROPSHEETPAGE page : std::exchange(pages_, {})) DestroyPropertySheetPage(page);
  extensions_.clear();
}

bool WizardConsole::IsOpen() const { return IsWindow(window_) != FALSE && Page() != nullptr; }

HWND WizardConsole::Page() const {
  return reinterpret_cast<HWND>(SendMessageW(window_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

bool WizardConsole::IsNextEnabled() const {
  return IsWindowEnabled(GetDlgItem(window_, kNextButton)) != FALSE;
}

void WizardConsole::Press(int button) {
  const HWND control = GetDlgItem(window_, button);
  if (IsWindowEnabled(control) == FALSE) return;
  SendMessageW(window_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
               reinterpret_cast<LPARAM>(control));
  HandleWaitingMessages();
}

void WizardConsole::Back() { Press(kBackButton); }
void WizardConsole::Next() { Press(kNextButton); }
void WizardConsole::Finish() { Press(kFinishButton); }
void WizardConsole::Cancel() { Press(IDCANCEL); }

void WizardConsole::NoteDirectory() {
  const std::string path = ' ' + PathOf(object_name_);
  for (std::string line : directory_.Log()) {
    if (const std::size_t at = line.find(path); at != std::string::npos) {
      line.replace(at + 1, path.size() - 1, "<new>");
    }
    log_.push_back(std::move(line));
  }
  directory_.ClearCalls();
}

void WizardConsole::Note(const std::string& line) {
  NoteDirectory();
  log_.push_back(line);
}

std::vector<std::string> WizardConsole::TakeLog() {
  NoteDirectory();
  return std::exchange(log_, {});
}

void WizardConsole::HandOut(const std::optional<std::string>& name) {
  object_.Reset();
  if (name) {
    object_name_ = *name;
    const Ref<pelora::IADs> made =
        faulty_.Wrap(directory_.MakeNewObject(PathOf(*name), interfaces_));
    object_ = Ref<::IADs>::Adopt(static_cast<::IADsUser*>(new ProviderObject(made)));
  }
  for (const Ref<::IDsAdminNewObjExt>& extension : extensions_) {
    const HRESULT status = extension->SetObject(object_.Get());
    Note(std::string("SetObject ") + (object_ ? "new" : "none") + " = " + StatusText(status));
  }
}

void WizardConsole::OnShown(HWND window, bool is_last) {
  buttons_ = is_last ? PSWIZB_BACK | PSWIZB_FINISH : PSWIZB_NEXT;
  SendMessageW(window, PSM_SETWIZBUTTONS, 0, buttons_);
  if (!is_last) return;
  summaries_.clear();
  for (const Ref<::IDsAdminNewObjExt>& extension : extensions_) {
    UniqueBstr text;
    if (SUCCEEDED(extension->GetSummaryInfo(text.Put()))) summaries_.push_back(TextOf(text.Get()));
  }
}

bool WizardConsole::OnNext() {
  if (name_ != object_name_) HandOut(name_);
  return true;
}

bool WizardConsole::OnFinish() { return Commit(); }

void WizardConsole::WriteData(ULONG phase) {
  for (const Ref<::IDsAdminNewObjExt>& extension : extensions_) {
    const HRESULT status = extension->WriteData(window_, phase);
    Note("WriteData " + std::to_string(phase) + " = " + StatusText(status));
  }
}

bool WizardConsole::Commit() {
  if (looks_first_ && !object_) {
    Fail(E_FAIL, kPreCommit);
    return false;
  }
  WriteData(kPreCommit);
  if (!object_) {
    Fail(E_FAIL, kPreCommit);
    return false;
  }
  const HRESULT status = object_->SetInfo();
  if (FAILED(status)) {
    Fail(status, kCommit);
    return false;
  }
  WriteData(kPostCommit);
  return true;
}

void WizardConsole::Fail(HRESULT status, ULONG phase) {
  if (object_) HandOut(object_name_);
  WriteData(kCleanup);
  const HRESULT answer = extensions_.front()->OnError(window_, status, phase);
  Note("OnError " + StatusText(status) + " " + std::to_string(phase) + " = " + StatusText(answer));
}

}  // namespace pelora::windows::test
