// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/console.h"

#include <utility>

namespace pelora::windows::test {

using pelora::testing::DirectoryCall;
using pelora::testing::FaultPoint;

Console::~Console() {
  for (const HPROPSHEETPAGE page : pages_) DestroyPropertySheetPage(page);
}

void Console::FailBinding(std::size_t nth, HRESULT status) {
  // Bindings before it take one call each.
  faulty_.plan().Fail(FaultPoint::kOpenObject, nth, status);
  faulty_.plan().Fail(FaultPoint::kOpenObject, nth + 1, status);
}

void Console::Select(const std::vector<std::string>& paths) {
  paths_ = paths;
  selection_.emplace(paths);
}

HRESULT Console::AddTab(REFCLSID class_id) {
  Ref<::IShellExtInit> init;
  const HRESULT status = Activate(class_id, init);
  return status == S_OK ? AddTab(*init) : status;
}

HRESULT Console::AddTab(::IShellExtInit& init) {
  PageCollector collector;
  const HRESULT initialised = init.Initialize(nullptr, &*selection_, nullptr);
  if (initialised != S_OK) return initialised;
  const auto sheet_extension = QueryFor<::IShellPropSheetExt>(init);
  if (!sheet_extension) return E_NOINTERFACE;
  const HRESULT added = sheet_extension->AddPages(collector.function(), collector.parameter());
  if (added != S_OK) return added;
  for (const HPROPSHEETPAGE page : collector.Take()) pages_.push_back(page);
  return S_OK;
}

bool Console::Show() {
  if (pages_.empty()) return false;
  sheet_.emplace(std::exchange(pages_, {}));
  return sheet_->window() != nullptr;
}

bool Console::Open(std::string_view class_name) {
  return AddTab(ClassId(class_name)) == S_OK && Show();
}

std::vector<std::string> Console::TakeCalls() {
  std::vector<std::string> lines = Numbered(directory_.Log());
  directory_.ClearCalls();
  return lines;
}

std::vector<std::string> Console::TakeWrites() {
  using Kind = DirectoryCall::Kind;
  std::vector<std::string> lines =
      Numbered(directory_.Log({Kind::kPut, Kind::kPutEx, Kind::kSetInfo}));
  directory_.ClearCalls();
  return lines;
}

std::vector<std::string> Console::Numbered(std::vector<std::string> lines) const {
  for (std::string& line : lines) {
    for (std::size_t index = 0; index < paths_.size(); ++index) {
      const std::size_t at = line.find(' ' + paths_[index]);
      if (at == std::string::npos) continue;
      line.replace(at + 1, paths_[index].size(), '<' + std::to_string(index + 1) + '>');
      break;
    }
  }
  return lines;
}

}  // namespace pelora::windows::test
