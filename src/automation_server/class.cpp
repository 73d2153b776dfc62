#include "automation_server/class.h"

#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::automation_server {

std::size_t Class::Hash::operator()(std::string_view name) const { return HashText(name); }
bool Class::Equal::operator()(std::string_view a, std::string_view b) const { return EqualText(a, b); }

Class::Class(std::string_view name, const std::type_info& type, Is is, Make make, std::vector<Member> members,
             std::vector<EventMember> events)
    : name_(name),
      type_(&type),
      is_(is),
      make_(std::move(make)),
      members_(std::move(members)),
      events_(std::move(events)) {
  MemberId id = 0;
  for (const Member& member : members_) ids_.emplace(member.name, ++id);
}

std::shared_ptr<Object> Class::New() const {
  if (make_ == nullptr) throw Errors::CannotCreateObject();
  return make_();
}

std::optional<MemberId> Class::Find(std::string_view name) const {
  const auto found = ids_.find(name);
  if (found == ids_.end()) return std::nullopt;
  return found->second;
}

std::optional<MemberId> Class::Default() const {
  return First([](const Member& member) { return member.is_default; });
}

std::optional<MemberId> Class::Enumeration() const {
  return First([](const Member& member) { return member.kind == Member::Kind::kEnumeration; });
}

template <class Test>
std::optional<MemberId> Class::First(Test&& test) const {
  MemberId id = 0;
  for (const Member& member : members_) {
    ++id;
    if (test(member)) return id;
  }
  return std::nullopt;
}

const Member& Class::At(MemberId id) const {
  if (id < 1 || static_cast<std::size_t>(id) > members_.size()) throw Errors::MemberNotFound();
  return members_[static_cast<std::size_t>(id) - 1];
}

}  // namespace mirelo::automation_server
