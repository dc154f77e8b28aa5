// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/malloc_counter.h"

#include <set>
#include <stdexcept>

namespace pelora::windows::test {

/// Sees every call of the component library's allocator. Blocks from before it are not its
/// business.
class MallocCounter::Spy final : public ::IMallocSpy {
 public:
  [[nodiscard]] long live() const { return static_cast<long>(blocks_.size()); }
  [[nodiscard]] long freed_twice() const { return freed_twice_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IMallocSpy);
    *object = offered ? this : nullptr;
    if (!offered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    Keep(block);
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, WINBOOL /*spied*/) override {
    if (block == nullptr) return nullptr;
    blocks_.erase(block);
    if (freed_.insert(block).second) return block;
    ++freed_twice_;
    return nullptr;
  }
  STDMETHODIMP_(void) PostFree(WINBOOL /*spied*/) override {}
  STDMETHODIMP_(SIZE_T)
  PreRealloc(void* block, SIZE_T size, void** new_block, WINBOOL /*spied*/) override {
    was_ours_ = blocks_.erase(block) != 0;
    // Where it lay another one may lie before this is over.
    if (was_ours_) freed_.insert(block);
    *new_block = block;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, WINBOOL /*spied*/) override {
    if (was_ours_) Keep(block);
    freed_.erase(block);
    return block;
  }
  STDMETHODIMP_(void*) PreGetSize(void* block, WINBOOL /*spied*/) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, WINBOOL /*spied*/) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, WINBOOL /*spied*/) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void* /*block*/, WINBOOL /*spied*/, int actual) override {
    return actual;
  }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}

 private:
  ~Spy() = default;

  void Keep(void* block) {
    if (block == nullptr) return;
    blocks_.insert(block);
    freed_.erase(block);
  }

  ULONG references_ = 1;
  std::set<void*> blocks_;
  std::set<void*> freed_;
  long freed_twice_ = 0;
  bool was_ours_ = false;
};

MallocCounter::MallocCounter() : spy_(new Spy) {
  if (FAILED(CoRegisterMallocSpy(spy_))) throw std::runtime_error("another counter lives");
}

MallocCounter::~MallocCounter() {
  // Blocks that are still allocated keep the spy in its place until they are freed.
  CoRevokeMallocSpy();
  spy_->Release();
}

long MallocCounter::live() const { return spy_->live(); }
long MallocCounter::freed_twice() const { return spy_->freed_twice(); }

}  // namespace pelora::windows::test
