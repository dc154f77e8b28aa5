// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/windows/choosers/chooser_headers.h"

namespace pelora::windows::test {

/// What was chosen, as an object picker hands it over: a data object of the system's that renders
/// a `DS_SELECTION_LIST` in global memory, its strings elsewhere. It counts what is done with it,
/// and spoils the strings when the medium is released, so that a later look at them shows; the next
/// rendering mends them.
///
/// Lives on the stack of its test; a reference that is not given back shows in `references`.
class PickedObjects final : public ::IDataObject {
 public:
  /// Paths of the chosen objects, in order.
  explicit PickedObjects(const std::vector<std::string>& paths);
  PickedObjects(const PickedObjects&) = delete;
  PickedObjects& operator=(const PickedObjects&) = delete;
  virtual ~PickedObjects();

  /// Puts the strings behind the list, into its own memory.
  void MoveStringsInside();
  /// The list's memory, to be damaged.
  [[nodiscard]] DS_SELECTION_LIST& list() const;
  /// Lets the last string, which lies inside, run on to the end of the memory.
  void LoseTheEnd();
  /// Leaves only the first bytes of the list.
  void Cut(std::size_t size) { Reallocate(size); }

  /// Rendering fails from now on.
  void FailWith(HRESULT status) { status_ = status; }
  /// What medium is claimed to be rendered from now on.
  void RenderAs(DWORD medium) { medium_ = medium; }
  /// Renders a medium without memory from now on.
  void HideMemory() { hidden_ = true; }

  /// References that others hold.
  [[nodiscard]] ULONG references() const { return references_; }
  [[nodiscard]] std::size_t rendered() const { return rendered_; }
  /// Times that the rendered medium was released.
  [[nodiscard]] std::size_t released() const { return owner_.released; }
  /// Times that the memory was locked and not unlocked.
  [[nodiscard]] UINT locks() const { return GlobalFlags(memory_) & GMEM_LOCKCOUNT; }

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
  /// Named as the medium's owner, so that releasing the medium reaches the test.
  struct Owner final : ::IUnknown {
    explicit Owner(PickedObjects& objects) : picked(objects) {}
    virtual ~Owner() = default;
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override;

    PickedObjects& picked;
    std::size_t released = 0;
  };

  void Reallocate(std::size_t size);

  std::vector<std::wstring> originals_;
  std::vector<std::wstring> strings_;
  HGLOBAL memory_;
  Owner owner_{*this};
  ULONG references_ = 0;
  std::size_t rendered_ = 0;
  HRESULT status_ = S_OK;
  DWORD medium_ = TYMED_HGLOBAL;
  bool hidden_ = false;
};

}  // namespace pelora::windows::test
