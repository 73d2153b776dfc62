#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <vector>

#include "automation/variant.h"
#include "automation_server/member.h"

namespace mirelo::automation_server {

// The place of a member in its class's public interface, from 1.
using MemberId = std::int32_t;

// One class as automation clients see it.
class Class {
 public:
  using Is = bool (*)(const Object&);
  using Make = std::function<std::shared_ptr<Object>()>;

  // Members and events stand in the order of the public interface. `make` is null for a class whose objects
  // clients are only handed. `type` is what members declare that take or give such an object.
  Class(std::string_view name, const std::type_info& type, Is is, Make make, std::vector<Member> members,
        std::vector<EventMember> events = {});
  Class(const Class&) = delete;
  Class& operator=(const Class&) = delete;
  Class(Class&&) = default;

  // As clients write it; it is also the TypeName of the class's objects.
  std::string_view name() const { return name_; }
  const std::type_info& type() const { return *type_; }
  bool IsClassOf(const Object& object) const { return is_(object); }

  bool IsCreatable() const { return make_ != nullptr; }
  // A new object. Error 429 for a class that is not creatable; whatever its making raises.
  std::shared_ptr<Object> New() const;

  const std::vector<Member>& members() const { return members_; }
  const std::vector<EventMember>& events() const { return events_; }

  // Names are found in letters of either case.
  std::optional<MemberId> Find(std::string_view name) const;
  // The member that the object's own name stands for.
  std::optional<MemberId> Default() const;
  // What For Each walks by.
  std::optional<MemberId> Enumeration() const;
  // Error 438 for a number that no member has.
  const Member& At(MemberId id) const;

 private:
  struct Hash {
    std::size_t operator()(std::string_view name) const;
  };
  struct Equal {
    bool operator()(std::string_view a, std::string_view b) const;
  };

  template <class Test>
  std::optional<MemberId> First(Test&& test) const;

  std::string_view name_;
  const std::type_info* type_;
  Is is_;
  Make make_;
  std::vector<Member> members_;
  std::vector<EventMember> events_;
  std::unordered_map<std::string_view, MemberId, Hash, Equal> ids_;
};

}  // namespace mirelo::automation_server
