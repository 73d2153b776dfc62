#pragma once

#include "com/system.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <utility>
#include <vector>

#include "com/held.h"

namespace mirelo::com {

// A client's walk through a list that does not change meanwhile, by one of COM's interfaces for walks. `Item`
// is what the list holds and has `void Give(Given& place) const`, which puts a counted reference there.
template <class Interface, class Given, class Item>
class Walker final : public Interface {
 public:
  Walker(const IID& own, std::vector<Item> items, std::size_t next = 0)
      : own_(own), items_(std::move(items)), next_(next) {}
  virtual ~Walker() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    if (id != IID_IUnknown && id != own_) return E_NOINTERFACE;
    *place = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Given* places, ULONG* fetched) override {
    if (places == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    const auto given = std::min<std::size_t>(count, items_.size() - next_);
    for (std::size_t i = 0; i < given; ++i) items_[next_++].Give(places[i]);
    if (fetched != nullptr) *fetched = static_cast<ULONG>(given);
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const auto skipped = std::min<std::size_t>(count, items_.size() - next_);
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interface** place) override {
    if (place == nullptr) return E_POINTER;
    *place = Held<Interface>(new Walker(own_, items_, next_)).Release();
    return S_OK;
  }

 private:
  const IID& own_;
  std::vector<Item> items_;
  std::size_t next_;
  std::atomic<ULONG> references_ = 0;
};

}  // namespace mirelo::com
