// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// The selection as a console hands it over: a data object of the system's that renders
/// `DsObjectNames` in one block of global memory, which stays the console's. It counts what is done
/// with it.
///
/// Lives on the stack of its test; a reference that is not given back shows in `references`.
class Selection final : public ::IDataObject {
 public:
  /// Paths of the selected objects, in order.
  explicit Selection(const std::vector<std::string>& paths);
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;
  virtual ~Selection();

  /// References that others hold.
  [[nodiscard]] ULONG references() const { return references_; }
  [[nodiscard]] std::size_t rendered() const { return rendered_; }
  /// Times that the block was locked and not unlocked.
  [[nodiscard]] UINT locks() const { return GlobalFlags(block_) & GMEM_LOCKCOUNT; }
  /// Times that the rendered medium was released.
  [[nodiscard]] std::size_t released() const { return owner_.released; }

  /// What rendering answers from now on.
  void FailWith(HRESULT status) { status_ = status; }
  /// What medium is claimed to be rendered from now on.
  void RenderAs(DWORD medium) { medium_ = medium; }
  /// Puts other bytes into the block.
  void Replace(const std::vector<std::byte>& bytes);

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  STDMETHODIMP QueryGetData(FORMATETC* format) override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
  STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, WINBOOL) override { return E_NOTIMPL; }
  STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
  STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

 private:
  /// Named as the medium's owner, so that releasing the medium releases this and not the block.
  struct Owner final : ::IUnknown {
    virtual ~Owner() = default;
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override {
      ++released;
      return 1;
    }
    std::size_t released = 0;
  };

  HGLOBAL block_;
  Owner owner_;
  ULONG references_ = 0;
  std::size_t rendered_ = 0;
  HRESULT status_ = S_OK;
  DWORD medium_ = TYMED_HGLOBAL;
};

}  // namespace pelora::windows::test
