#include "automation_server/automation_object.h"

#include <unordered_map>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation_server/classes.h"

namespace mirelo::automation_server {

namespace {

using Doors = std::unordered_map<const Object*, std::weak_ptr<AutomationObject>>;

// Never taken down: clients may hold doors until the process ends.
Doors& OpenDoors() {
  static Doors& doors = *new Doors;
  return doors;
}

// Clients know errors of one kind.
template <class Body>
decltype(auto) RaisingRuntimeErrors(Body&& body) {
  return AnyFailureAs(CurrentError, std::forward<Body>(body));
}

// A client's arguments as the member takes them: as many as there are parameters, those left out filled in.
class ArgumentsInOrder {
 public:
  ArgumentsInOrder(const Member& member, Arguments& given) : member_(member), given_(given) {
    const std::size_t count = member.parameters.size();
    if (given.size() > count) throw Errors::WrongNumberOfArguments();
    values_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const bool left_out = i >= given.size() || !given[i];
      const std::optional<Variant>& value = left_out ? member.parameters[i].default_value : given[i];
      if (!value) throw Errors::ArgumentNotOptional();
      values_.push_back(*value);
    }
  }
  // What the member left in its references goes back, also when it failed behind that.
  ~ArgumentsInOrder() {
    for (std::size_t i = 0; i < given_.size(); ++i) {
      if (given_[i] && member_.parameters[i].by_reference) *given_[i] = std::move(values_[i]);
    }
  }
  ArgumentsInOrder(const ArgumentsInOrder&) = delete;
  ArgumentsInOrder& operator=(const ArgumentsInOrder&) = delete;

  std::span<Variant> values() { return values_; }

 private:
  const Member& member_;
  Arguments& given_;
  std::vector<Variant> values_;
};

Variant CallMember(const ObjectPtr& object, const Member& member, Arguments& arguments);
void PutMember(const ObjectPtr& object, const Member& member, const Member::Put& put, const Variant& value,
               Arguments& arguments);

bool ArgumentsAreForItsValue(const Member& member, const Arguments& arguments) {
  return member.kind == Member::Kind::kProperty && member.parameters.empty() && !arguments.empty();
}

Variant ValueOf(const ObjectPtr& object, const Member& member) {
  Arguments none;
  return CallMember(object, member, none);
}

const Member& DefaultMemberOf(const ObjectPtr& object) {
  const Class& table = ClassOf(Referred(object.get()));
  const auto id = table.Default();
  if (!id) throw Errors::MemberNotFound();
  return table.At(*id);
}

// What a property holds has elements only where it may be an array: error 450, else 13 for one that is none.
template <class Value>
auto& ArrayIn(const Member& member, Value& value) {
  if (member.type != ValueType::kVariant) throw Errors::WrongNumberOfArguments();
  return value.AsArray();
}

template <class AnArray>
auto& ElementAt(AnArray& array, const Arguments& indexes) {
  for (const auto& index : indexes) {
    if (!index) throw Errors::ArgumentNotOptional();
  }
  if (indexes.size() > 2) throw Errors::SubscriptOutOfRange();
  if (indexes.size() == 1) return array(indexes[0]->ToInt32());
  return array(indexes[0]->ToInt32(), indexes[1]->ToInt32());
}

Variant ElementOf(const Member& member, const Variant& value, Arguments& arguments) {
  if (!value.IsObject()) return ElementAt(ArrayIn(member, value), arguments);
  return CallMember(value.AsObject(), DefaultMemberOf(value.AsObject()), arguments);
}

// An object is assigned by what its name alone stands for.
void PutDefault(const ObjectPtr& object, const Variant& value, Arguments& arguments) {
  const Member& assigned = DefaultMemberOf(object);
  PutMember(object, assigned, assigned.let, value, arguments);
}

void PutElement(const ObjectPtr& object, const Member& member, const Variant& value, Arguments& arguments) {
  Variant whole = ValueOf(object, member);
  if (whole.IsObject()) return PutDefault(whole.AsObject(), value, arguments);
  if (member.let == nullptr) throw Errors::MemberNotFound();
  ElementAt(ArrayIn(member, whole), arguments) = value;
  member.let(object, {}, whole);
}

Variant CallMember(const ObjectPtr& object, const Member& member, Arguments& arguments) {
  if (member.get == nullptr) throw Errors::MemberNotFound();
  if (ArgumentsAreForItsValue(member, arguments)) {
    return ElementOf(member, ValueOf(object, member), arguments);
  }
  ArgumentsInOrder in_order(member, arguments);
  return member.get(object, in_order.values());
}

void PutMember(const ObjectPtr& object, const Member& member, const Member::Put& put, const Variant& value,
               Arguments& arguments) {
  if (ArgumentsAreForItsValue(member, arguments)) return PutElement(object, member, value, arguments);
  if (put == nullptr) throw Errors::MemberNotFound();
  ArgumentsInOrder in_order(member, arguments);
  put(object, in_order.values(), value);
}

// Assigns the property, or sets its reference, or assigns the object that it always holds.
void LetMember(const ObjectPtr& object, const Member& member, const Variant& value, Arguments& arguments) {
  const Member::Put& put = member.let != nullptr ? member.let : member.set;
  const bool holds_an_object = member.kind == Member::Kind::kProperty && member.type == ValueType::kObject;
  if (put != nullptr || !holds_an_object) return PutMember(object, member, put, value, arguments);
  Arguments none;
  PutDefault(CallMember(object, member, arguments).AsObject(), value, none);
}

}  // namespace

std::shared_ptr<AutomationObject> AutomationObject::Of(const std::shared_ptr<Object>& object) {
  if (object == nullptr) return nullptr;
  const auto open = OpenDoors().find(object.get());
  if (open != OpenDoors().end()) return open->second.lock();
  auto door = std::make_shared<AutomationObject>(Key(), object);
  OpenDoors().emplace(object.get(), door);
  return door;
}

AutomationObject::AutomationObject(Key, std::shared_ptr<Object> object)
    : object_(std::move(object)), class_(ClassOf(*object_)) {}

AutomationObject::~AutomationObject() { OpenDoors().erase(object_.get()); }

MemberId AutomationObject::IdOf(std::string_view name) const {
  const auto id = class_.Find(name);
  if (!id) throw Errors::MemberNotFound();
  return *id;
}

std::size_t AutomationObject::PlaceOf(MemberId member, std::string_view parameter) const {
  const std::vector<Parameter>& parameters = class_.At(member).parameters;
  for (std::size_t place = 0; place < parameters.size(); ++place) {
    if (EqualText(parameters[place].name, parameter)) return place;
  }
  throw Errors::NamedArgumentNotFound();
}

// In the members below nothing may be asked of this door once the object was called: it may be gone then.

Variant AutomationObject::Call(MemberId member, Arguments& arguments) {
  const auto object = object_;
  const Member& called = class_.At(member);
  return RaisingRuntimeErrors([&] { return CallMember(object, called, arguments); });
}

Variant AutomationObject::Get(MemberId member, Arguments arguments) {
  if (class_.At(member).kind != Member::Kind::kProperty) throw Errors::MemberNotFound();
  return Call(member, arguments);
}

void AutomationObject::Let(MemberId member, const Variant& value, Arguments arguments) {
  const auto object = object_;
  const Member& assigned = class_.At(member);
  RaisingRuntimeErrors([&] { LetMember(object, assigned, value, arguments); });
}

void AutomationObject::Set(MemberId member, const Variant& value, Arguments arguments) {
  if (!value.IsObject()) throw Errors::ObjectRequired();
  const auto object = object_;
  const Member& assigned = class_.At(member);
  RaisingRuntimeErrors([&] { PutMember(object, assigned, assigned.set, value, arguments); });
}

Variant AutomationObject::Value(Arguments arguments) {
  const auto object = object_;
  return RaisingRuntimeErrors([&] { return CallMember(object, DefaultMemberOf(object), arguments); });
}

std::shared_ptr<Enumeration> AutomationObject::NewEnum() {
  const auto id = class_.Enumeration();
  if (!id) throw Errors::MemberNotFound();
  return std::dynamic_pointer_cast<Enumeration>(Call(*id).AsObject());
}

Subscription AutomationObject::Subscribe(EventSink sink) {
  return {object_, class_.events(), std::move(sink)};
}

}  // namespace mirelo::automation_server
