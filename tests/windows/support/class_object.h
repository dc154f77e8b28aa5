// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Puts an object of the test's own in the place of a class of the system's, for as long as it
/// lives: whoever activates the class in this apartment gets that one object. It lives on the stack
/// of its test.
class ClassObject final : public ::IClassFactory {
 public:
  ClassObject(const CLSID& class_id, ::IUnknown& instance);
  virtual ~ClassObject();
  ClassObject(const ClassObject&) = delete;
  ClassObject& operator=(const ClassObject&) = delete;

  /// Activations fail from now on.
  void FailWith(HRESULT status) { status_ = status; }
  /// Activations asked for, failed ones too.
  [[nodiscard]] std::size_t activations() const { return activations_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(::IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL /*lock*/) override { return S_OK; }

 private:
  ::IUnknown& instance_;
  DWORD registration_ = 0;
  HRESULT status_ = S_OK;
  std::size_t activations_ = 0;
};

}  // namespace pelora::windows::test
