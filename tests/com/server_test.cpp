// What Windows asks of the library, and what the library writes into the registry.

#include "com/server.h"

#include <string>

#include "com/class_ids.h"
#include "com/client.h"
#include "com/type_information.h"

namespace mirelo::testing {
namespace {

void Ready() {}

class Servers : public ComTest {
 protected:
  static Held<IClassFactory> FactoryOf(std::string_view name) {
    Held<IClassFactory> factory;
    com::Require(com::GetFactory(com::ClassIdOf(name), IID_IClassFactory, factory.Place(), Ready));
    return factory;
  }
};

TEST_F(Servers, MakeTheClassesThatTheyKnow) {
  const auto factory = FactoryOf("cMirelo");
  Client made;
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, made.Place()), S_OK);
  EXPECT_EQ(ValueOf(made).TypeName(), "cMirelo");
  made = {};
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, made.Place()), E_NOINTERFACE);
  EXPECT_FALSE(made);
}

TEST_F(Servers, KnowNoOthers) {
  void* place = &place;
  EXPECT_EQ(com::GetFactory(com::TypeLibraryId(), IID_IClassFactory, &place, Ready),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(place, nullptr);
  place = &place;
  EXPECT_EQ(com::GetFactory(com::ClassIdOf("cMirelo"), IID_IDispatch, &place, Ready), E_NOINTERFACE);
  EXPECT_EQ(place, nullptr);
}

TEST_F(Servers, AreRefusedWhereNothingCanBePut) {
  EXPECT_EQ(com::GetFactory(com::ClassIdOf("cMirelo"), IID_IClassFactory, nullptr, Ready), E_POINTER);
  EXPECT_EQ(FactoryOf("cMirelo")->CreateInstance(nullptr, IID_IDispatch, nullptr), E_POINTER);
}

TEST_F(Servers, MakeNoPartsOfOtherObjects) {
  const Client outer = NewHeld("cMirelo");
  void* place = &place;
  EXPECT_EQ(FactoryOf("cQTData")->CreateInstance(outer.get(), IID_IUnknown, &place), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(place, nullptr);
}

TEST_F(Servers, AreHeldByTheirObjectsFactoriesAndLocks) {
  ASSERT_FALSE(com::IsHeld());
  {
    const auto factory = FactoryOf("cMirelo");
    EXPECT_TRUE(com::IsHeld());
    factory->LockServer(TRUE);
  }
  EXPECT_TRUE(com::IsHeld()) << "by the lock";
  FactoryOf("cMirelo")->LockServer(FALSE);
  EXPECT_FALSE(com::IsHeld());
  {
    const Client made = NewHeld("cMirelo");
    EXPECT_TRUE(com::IsHeld());
  }
  EXPECT_FALSE(com::IsHeld());
}

// The roots of the registry lie elsewhere meanwhile, since Wine writes a user's type libraries for all users.
class Registrations : public Servers {
 protected:
  Registrations() {
    for (Aside& each : asides_) {
      const std::wstring path = std::wstring(kAside) + L"\\" + each.name;
      com::Require(HRESULT_FROM_WIN32(::RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0,
                                                        KEY_ALL_ACCESS, nullptr, &each.key, nullptr)));
    }
    for (const Aside& each : asides_)
      com::Require(HRESULT_FROM_WIN32(::RegOverridePredefKey(each.root, each.key)));
    com::UseTypeLibraryOf(library);
  }
  ~Registrations() override {
    com::UseTypeLibraryOf({});
    for (const Aside& each : asides_) {
      ::RegOverridePredefKey(each.root, nullptr);
      ::RegCloseKey(each.key);
    }
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kAside);
  }

  static constexpr const wchar_t* kAside = L"Software\\MireloRegistrationTest";
  // Whose types are taken away is looked up in it.
  const std::wstring library = WideText(MIRELO_TYPE_LIBRARY);
  static constexpr auto kUser = com::RegisteredFor::kThisUser;

  static std::string Id(const GUID& id) {
    wchar_t text[40];
    ::StringFromGUID2(id, text, 40);
    return NarrowText(text);
  }
  // "absent" for a value that is not there.
  static std::string ValueOf(const std::string& key, const wchar_t* name = nullptr) {
    wchar_t text[300];
    DWORD size = sizeof(text);
    const std::wstring path = WideText("Software\\Classes\\" + key);
    const LSTATUS result =
        ::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return result == ERROR_SUCCESS ? NarrowText(text) : "absent";
  }

 private:
  struct Aside {
    HKEY root;
    const wchar_t* name;
    HKEY key = nullptr;
  };
  Aside asides_[3]{
      {HKEY_CURRENT_USER, L"user"}, {HKEY_LOCAL_MACHINE, L"machine"}, {HKEY_CLASSES_ROOT, L"classes"}};
};

TEST_F(Registrations, NameEachClassAndTheLibraryThatHasIt) {
  ASSERT_EQ(com::Register(library, kUser), S_OK);
  for (const com::ClassId& known : com::ClassIds()) {
    const std::string name = "Mirelo." + std::string(known.name);
    const std::string folder = "CLSID\\" + Id(known.id);
    EXPECT_EQ(ValueOf(name + "\\CLSID"), Id(known.id));
    EXPECT_EQ(ValueOf(folder), name);
    EXPECT_EQ(ValueOf(folder + "\\ProgID"), name);
    EXPECT_EQ(ValueOf(folder + "\\InprocServer32"), MIRELO_TYPE_LIBRARY);
    EXPECT_EQ(ValueOf(folder + "\\TypeLib"), Id(com::TypeLibraryId()));
    EXPECT_EQ(ValueOf(folder + "\\InprocServer32", L"ThreadingModel"), "absent")
        << "so that all are made on one thread";
  }
}

TEST_F(Registrations, AreTakenAwayAgain) {
  ASSERT_EQ(com::Register(library, kUser), S_OK);
  EXPECT_EQ(com::Unregister(kUser), S_OK);
  for (const com::ClassId& known : com::ClassIds()) {
    EXPECT_EQ(ValueOf("CLSID\\" + Id(known.id)), "absent");
    EXPECT_EQ(ValueOf("Mirelo." + std::string(known.name)), "absent");
  }
}

}  // namespace
}  // namespace mirelo::testing
