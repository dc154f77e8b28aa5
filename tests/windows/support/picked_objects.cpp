// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/picked_objects.h"

#include <algorithm>
#include <cstring>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows::test {
namespace {

std::size_t ListSize(std::size_t count) {
  return offsetof(DS_SELECTION_LIST, aDsSelection) + count * sizeof(DS_SELECTION);
}

}  // namespace

PickedObjects::PickedObjects(const std::vector<std::string>& paths)
    : memory_(GlobalAlloc(GHND, ListSize(paths.size()))) {
  list().cItems = static_cast<ULONG>(paths.size());
  for (const std::string& path : paths) originals_.push_back(ToWide(path));
  strings_ = originals_;
  for (std::size_t entry = 0; entry < strings_.size(); ++entry) {
    list().aDsSelection[entry].pwzADsPath = strings_[entry].data();
  }
}

PickedObjects::~PickedObjects() { GlobalFree(memory_); }

// Movable memory counts its locks; it moves only when it is reallocated.
DS_SELECTION_LIST& PickedObjects::list() const {
  auto* const list = static_cast<DS_SELECTION_LIST*>(GlobalLock(memory_));
  GlobalUnlock(memory_);
  return *list;
}

void PickedObjects::Reallocate(std::size_t size) {
  const HGLOBAL other = GlobalAlloc(GHND, size);
  const std::size_t kept = std::min<std::size_t>(size, GlobalSize(memory_));
  std::memcpy(GlobalLock(other), &list(), kept);
  GlobalUnlock(other);
  GlobalFree(memory_);
  memory_ = other;
}

void PickedObjects::MoveStringsInside() {
  std::size_t place = ListSize(strings_.size());
  std::size_t size = place;
  for (const std::wstring& text : strings_) size += (text.size() + 1) * sizeof(wchar_t);
  Reallocate(size);
  for (std::size_t entry = 0; entry < strings_.size(); ++entry) {
    auto* const text = reinterpret_cast<wchar_t*>(reinterpret_cast<std::byte*>(&list()) + place);
    const std::wstring& original = strings_[entry];
    std::copy_n(original.c_str(), original.size() + 1, text);
    list().aDsSelection[entry].pwzADsPath = text;
    place += (original.size() + 1) * sizeof(wchar_t);
  }
}

void PickedObjects::LoseTheEnd() {
  wchar_t* const text = list().aDsSelection[strings_.size() - 1].pwzADsPath;
  std::byte* const end = reinterpret_cast<std::byte*>(&list()) + GlobalSize(memory_);
  std::fill(text, reinterpret_cast<wchar_t*>(end), L'x');
}

STDMETHODIMP_(ULONG) PickedObjects::Owner::Release() {
  ++released;
  for (std::wstring& text : picked.strings_) std::ranges::fill(text, L'?');
  return 1;
}

STDMETHODIMP PickedObjects::QueryInterface(REFIID iid, void** object) {
  const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IDataObject);
  *object = offered ? this : nullptr;
  if (!offered) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP PickedObjects::QueryGetData(FORMATETC* format) {
  const auto known =
      static_cast<CLIPFORMAT>(RegisterClipboardFormatW(CFSTR_DSOP_DS_SELECTION_LIST));
  return format->cfFormat == known && format->lindex == -1 &&
                 format->dwAspect == DVASPECT_CONTENT && format->ptd == nullptr &&
                 format->tymed == TYMED_HGLOBAL
             ? S_OK
             : DV_E_FORMATETC;
}

STDMETHODIMP PickedObjects::GetData(FORMATETC* format, STGMEDIUM* medium) {
  *medium = {};
  const HRESULT known = QueryGetData(format);
  if (known != S_OK) return known;
  if (FAILED(status_)) return status_;
  ++rendered_;
  // Where they are: the list points at them.
  for (std::size_t entry = 0; entry < strings_.size(); ++entry) {
    std::ranges::copy(originals_[entry], strings_[entry].begin());
  }
  medium->tymed = medium_;
  medium->hGlobal = hidden_ ? nullptr : memory_;
  medium->pUnkForRelease = &owner_;
  return status_;
}

}  // namespace pelora::windows::test
