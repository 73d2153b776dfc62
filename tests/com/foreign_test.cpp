#include "com/foreign.h"

#include "automation/runtime_error.h"
#include "com/calling_object.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr auto kSpreadsheetsRefusal = static_cast<HRESULT>(0x800AC472);
constexpr int kForGood = 1'000'000;

class ForeignObjects : public ComTest {
 protected:
  VARIANT Passed() {
    VARIANT value = Plain(VT_DISPATCH);
    value.pdispVal = &object;
    return value;
  }
  static constexpr LCID kEnglishOfAmerica = 1033;

  CallingObject object;
  com::Foreign foreign{Held<IDispatch>(&object)};
};

TEST_F(ForeignObjects, AreHeldAndGivenBackAsTheyAre) {
  {
    const Variant value = com::FromClient(Passed());
    ASSERT_TRUE(value.IsObject());
    EXPECT_EQ(value.TypeName(), "Object");
    ClientValue back;
    com::ToClient(value, *back);
    ASSERT_EQ(back->vt, VT_DISPATCH);
    EXPECT_EQ(back->pdispVal, static_cast<IDispatch*>(&object));
    EXPECT_EQ(object.references, 4U) << "the test's own, the fixture's, the value's, and the client's";
  }
  EXPECT_EQ(object.references, 2U);
}

TEST_F(ForeignObjects, PassThroughAPropertyThatHoldsAnything) {
  const Client facade = NewHeld("cMirelo");
  InvokeId(facade, IdOf(facade, "masPrevVolume"), DISPATCH_PROPERTYPUTREF, {Passed()}, {DISPID_PROPERTYPUT});
  const Variant held = CallIt(facade, "masPrevVolume");
  const auto* const same = dynamic_cast<const com::Foreign*>(held.AsObject().get());
  ASSERT_NE(same, nullptr);
  EXPECT_EQ(same->reference().get(), static_cast<IDispatch*>(&object));
}

TEST_F(ForeignObjects, AreNoneOfAClassThatAPropertyIsOf) {
  const Client facade = NewHeld("cMirelo");
  EXPECT_EQ(NumberOf([&] {
              InvokeId(facade, IdOf(facade, "ExcelApplication"), DISPATCH_PROPERTYPUTREF, {Passed()},
                       {DISPID_PROPERTYPUT});
            }),
            13);
}

TEST_F(ForeignObjects, AreCalledByTheNamesOfTheirMembersInEnglish) {
  EXPECT_EQ(foreign.Get("Range", std::vector<Variant>{"A1", 2}).ToInt32(), 5);
  foreign.Let("HasAxis", true, std::vector<Variant>{1, 2});
  EXPECT_THAT(object.calls, ElementsAre("get A1 2", "put 1 2 True"));
  EXPECT_THAT(object.languages, Each(kEnglishOfAmerica));
  EXPECT_EQ(NumberOf([&] { foreign.Get("Absent"); }), 438);
}

TEST_F(ForeignObjects, OfAnotherProcessAreAskedAgainWhileTheyRefuse) {
  object.is_elsewhere = true;
  for (const HRESULT refusal : {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER, kSpreadsheetsRefusal}) {
    object.refusal = refusal;
    object.refusals = 2;
    EXPECT_EQ(foreign.Get("Value").ToInt32(), 5);
    object.refusals = 1;
    foreign.Let("Value", 3);
  }
  EXPECT_THAT(object.calls, ElementsAre("get", "put 3", "get", "put 3", "get", "put 3"))
      << "each is done once";
  EXPECT_EQ(object.tries, 15);
}

TEST_F(ForeignObjects, AreOfTheClassThatTheyTellOf) {
  EXPECT_EQ(foreign.TypeName(), "Object") << "it tells of none";
  object.class_name = "_Chart";
  EXPECT_EQ(foreign.TypeName(), "Chart");
  const int questions = object.questions;
  EXPECT_EQ(foreign.TypeName(), "Chart");
  EXPECT_EQ(object.questions, questions) << "which it is not asked again";
}

TEST_F(ForeignObjects, OfAnotherProcessAreAskedAgainForTheirClass) {
  object.is_elsewhere = true;
  object.class_name = "Range";
  object.refusal = RPC_E_CALL_REJECTED;
  object.refusals_to_tell = 2;
  EXPECT_EQ(foreign.TypeName(), "Range");
}

TEST_F(ForeignObjects, ThatGoOnRefusingToTellOfTheirClassAreNotTakenForAnother) {
  object.is_elsewhere = true;
  object.class_name = "Range";
  object.refusal = RPC_E_CALL_REJECTED;
  object.refusals_to_tell = kForGood;
  const RuntimeError error = ErrorOf([&] { foreign.TypeName(); });
  EXPECT_EQ(error.Number(), RPC_E_CALL_REJECTED);
  EXPECT_THAT(error.Description(), HasSubstr("takes no calls now"));
  object.refusals_to_tell = 0;
  EXPECT_EQ(foreign.TypeName(), "Range") << "it is asked once more later";
}

// Their own interface, asked instead, would tell of another.
TEST_F(ForeignObjects, OfAnotherProcessAreAskedAgainForTheClassThatTheyProvide) {
  object.is_elsewhere = true;
  object.class_name = "IDispatchOfRange";
  object.provided_class = "Range";
  object.refusal = kSpreadsheetsRefusal;
  object.refusals_to_provide = kForGood;
  EXPECT_THAT(ErrorOf([&] { foreign.TypeName(); }).Description(), HasSubstr("takes no calls now"));
  object.refusals_to_provide = 2;
  EXPECT_EQ(foreign.TypeName(), "Range");
}

TEST_F(ForeignObjects, OfThisProcessFailAtOnceWhenTheyRefuse) {
  object.refusal = kSpreadsheetsRefusal;
  object.refusals = kForGood;
  const RuntimeError error = ErrorOf([&] { foreign.Let("Value", 3); });
  EXPECT_EQ(object.tries, 1);
  EXPECT_EQ(error.Number(), 0xC472);
  EXPECT_THAT(error.Description(), HasSubstr("a cell is being edited there, or a dialog is open"));
}

TEST_F(ForeignObjects, SayThatTheyAreBusyHoweverTheyRefuse) {
  object.refusal = kSpreadsheetsRefusal;
  object.is_refusing_by_exception = true;
  object.refusals = kForGood;
  EXPECT_THAT(ErrorOf([&] { foreign.Get("Value"); }).Description(), HasSubstr("takes no calls now"));
}

TEST_F(ForeignObjects, OfAnotherProcessFailWhenTheyRefuseForLong) {
  object.is_elsewhere = true;
  object.refusal = RPC_E_SERVERCALL_RETRYLATER;
  object.refusals = kForGood;
  const RuntimeError error = ErrorOf([&] { foreign.Let("Value", 3); });
  EXPECT_EQ(error.Number(), RPC_E_SERVERCALL_RETRYLATER);
  EXPECT_THAT(error.Description(), HasSubstr("takes no calls now"));
  EXPECT_GT(object.tries, 10);
  EXPECT_THAT(object.calls, ::testing::IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
