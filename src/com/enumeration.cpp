#include "com/enumeration.h"

#include <atomic>
#include <optional>
#include <utility>

#include "com/foreign.h"
#include "com/own_thread.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

using automation_server::Enumeration;

class Walk final : public IEnumVARIANT {
 public:
  explicit Walk(std::shared_ptr<Enumeration> items) : items_(std::move(items)), first_(items_->Clone()) {}
  virtual ~Walk() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    if (id != IID_IUnknown && id != IID_IEnumVARIANT) return E_NOINTERFACE;
    *place = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* places, ULONG* fetched) override {
    if (places == nullptr) return E_POINTER;
    if (fetched != nullptr) *fetched = 0;
    ULONG done = 0;
    const HRESULT result = OnOwnThread([&]() -> HRESULT {
      for (; done < count; ++done) {
        const std::optional<Variant> item = items_->Next();
        if (!item) return S_FALSE;
        ::VariantInit(&places[done]);
        ToClient(Leaving(*item), places[done]);
      }
      return S_OK;
    });
    // Who is told of a failure takes nothing.
    if (FAILED(result)) {
      for (; done > 0; --done) ::VariantClear(&places[done - 1]);
    }
    if (fetched != nullptr) *fetched = done;
    return result;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    return OnOwnThread([&]() -> HRESULT {
      for (; count > 0; --count) {
        if (!items_->Next()) return S_FALSE;
      }
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    return OnOwnThread([&]() -> HRESULT {
      items_ = first_->Clone();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** place) override {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    return OnOwnThread([&]() -> HRESULT {
      *place = WalkOf(items_->Clone()).Release();
      return S_OK;
    });
  }

 private:
  std::shared_ptr<Enumeration> items_;
  const std::shared_ptr<Enumeration> first_;  // stands where the walk began
  std::atomic<ULONG> references_ = 0;
};

}  // namespace

Held<IEnumVARIANT> WalkOf(std::shared_ptr<Enumeration> items) {
  return Held<IEnumVARIANT>(new Walk(std::move(items)));
}

}  // namespace mirelo::com
