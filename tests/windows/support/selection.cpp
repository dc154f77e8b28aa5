// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/selection.h"

#include <dsclient.h>

#include <cstring>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows::test {
namespace {

constexpr const wchar_t* kClass = L"user";

void Append(std::vector<std::byte>& bytes, const void* data, std::size_t size) {
  const auto* const first = static_cast<const std::byte*>(data);
  bytes.insert(bytes.end(), first, first + size);
}

DWORD AppendText(std::vector<std::byte>& bytes, const std::wstring& text) {
  const auto offset = static_cast<DWORD>(bytes.size());
  Append(bytes, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  return offset;
}

/// A `DSOBJECTNAMES` block, laid out through the system's own structures.
std::vector<std::byte> MakeBlock(const std::vector<std::string>& paths) {
  const std::size_t head = offsetof(DSOBJECTNAMES, aObjects) + paths.size() * sizeof(DSOBJECT);
  std::vector<std::byte> bytes(head);
  std::vector<DSOBJECT> objects;
  for (const std::string& path : paths) {
    DSOBJECT object = {};
    object.offsetName = AppendText(bytes, ToWide(path));
    object.offsetClass = AppendText(bytes, kClass);
    objects.push_back(object);
  }
  const auto count = static_cast<UINT>(objects.size());
  std::memcpy(&bytes[offsetof(DSOBJECTNAMES, cItems)], &count, sizeof(count));
  if (!objects.empty()) {
    std::memcpy(&bytes[offsetof(DSOBJECTNAMES, aObjects)], objects.data(),
                objects.size() * sizeof(DSOBJECT));
  }
  return bytes;
}

HGLOBAL MakeGlobal(const std::vector<std::byte>& bytes) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
  GlobalUnlock(block);
  return block;
}

CLIPFORMAT ObjectNamesFormat() {
  return static_cast<CLIPFORMAT>(RegisterClipboardFormatW(CFSTR_DSOBJECTNAMES));
}

}  // namespace

Selection::Selection(const std::vector<std::string>& paths)
    : block_(MakeGlobal(MakeBlock(paths))) {}

Selection::~Selection() { GlobalFree(block_); }

void Selection::Replace(const std::vector<std::byte>& bytes) {
  GlobalFree(block_);
  block_ = MakeGlobal(bytes);
}

STDMETHODIMP Selection::QueryInterface(REFIID iid, void** object) {
  const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IDataObject);
  *object = offered ? this : nullptr;
  if (!offered) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP Selection::QueryGetData(FORMATETC* format) {
  const bool known = format->cfFormat == ObjectNamesFormat() && format->lindex == -1 &&
                     format->dwAspect == DVASPECT_CONTENT && format->ptd == nullptr &&
                     (format->tymed & TYMED_HGLOBAL) != 0;
  return known ? S_OK : DV_E_FORMATETC;
}

STDMETHODIMP Selection::GetData(FORMATETC* format, STGMEDIUM* medium) {
  *medium = {};
  const HRESULT known = QueryGetData(format);
  if (known != S_OK) return known;
  if (FAILED(status_)) return status_;
  ++rendered_;
  medium->tymed = medium_;
  medium->hGlobal = block_;
  medium->pUnkForRelease = &owner_;
  return status_;
}

}  // namespace pelora::windows::test
