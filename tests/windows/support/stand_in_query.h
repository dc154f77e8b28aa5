// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/windows/choosers/chooser_headers.h"
#include "tests/windows/support/class_object.h"
#include "tests/windows/support/selection.h"

namespace pelora::windows::test {

/// Stands in the place of the system's directory query window while it lives: it writes down every
/// field that it is given and hands out what the test found. Unless something is found, every query
/// is cancelled.
///
/// Lives on the stack of its test; a reference that is not given back shows in `references`.
class StandInQuery final : public ::ICommonQuery {
 public:
  StandInQuery();
  virtual ~StandInQuery() = default;
  StandInQuery(const StandInQuery&) = delete;
  StandInQuery& operator=(const StandInQuery&) = delete;

  /// What the next window hands out, and with which status.
  void Find(Selection& found, HRESULT status = S_OK);
  /// What the next window answers, handing out nothing.
  void Answer(HRESULT status) { answer_ = status; }
  [[nodiscard]] ClassObject& class_object() { return class_object_; }

  /// A line for each record that it was given, with every field.
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }
  /// The owner that the last window was given.
  [[nodiscard]] HWND owner() const { return owner_; }
  [[nodiscard]] ULONG references() const { return references_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP OpenQueryWindow(HWND owner, OPENQUERYWINDOW* window, ::IDataObject** found) override;

 private:
  ULONG references_ = 0;
  HRESULT answer_ = S_FALSE;
  Selection* found_ = nullptr;
  HWND owner_ = nullptr;
  std::vector<std::string> log_;
  ClassObject class_object_;
};

}  // namespace pelora::windows::test
