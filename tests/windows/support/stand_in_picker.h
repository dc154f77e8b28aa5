// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/windows/choosers/chooser_headers.h"
#include "tests/windows/support/class_object.h"
#include "tests/windows/support/picked_objects.h"

namespace pelora::windows::test {

/// Stands in the place of the system's object picker while it lives: it writes down every field
/// that it is given and hands out what the test chose. Unless something is chosen, every choice is
/// cancelled.
///
/// Lives on the stack of its test; a reference that is not given back shows in `references`.
class StandInPicker final : public ::IDsObjectPicker {
 public:
  StandInPicker();
  virtual ~StandInPicker() = default;
  StandInPicker(const StandInPicker&) = delete;
  StandInPicker& operator=(const StandInPicker&) = delete;

  /// What the next dialog hands out, and with which status.
  void Choose(PickedObjects& picked, HRESULT status = S_OK);
  /// What the next dialog answers, handing out nothing.
  void Answer(HRESULT status) { answer_ = status; }
  /// What happens while the next dialog is open.
  void WhileOpen(std::function<void()> action) { while_open_ = std::move(action); }
  void FailInitialize(HRESULT status) { initialized_ = status; }
  [[nodiscard]] ClassObject& class_object() { return class_object_; }

  /// A line for each call, with every field of the records it was given.
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }
  /// The owner that the last dialog was given.
  [[nodiscard]] HWND owner() const { return owner_; }
  [[nodiscard]] ULONG references() const { return references_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP Initialize(DSOP_INIT_INFO* init) override;
  STDMETHODIMP InvokeDialog(HWND owner, ::IDataObject** chosen) override;

 private:
  ULONG references_ = 0;
  HRESULT initialized_ = S_OK;
  HRESULT answer_ = S_FALSE;
  PickedObjects* picked_ = nullptr;
  std::function<void()> while_open_;
  HWND owner_ = nullptr;
  std::vector<std::string> log_;
  ClassObject class_object_;
};

}  // namespace pelora::windows::test
