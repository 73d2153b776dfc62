#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::quotetracker {

// A request of the HTTP interface: "/req?" name "(" arguments joined by commas ")".
struct Command {
  std::string name;
  std::vector<std::string>
      arguments;  // none for "()", else one more than there are commas; may be empty texts
};

// Reads the resource of a request. Escapes such as %20 are resolved first, and a percent sign that begins
// none stands for itself. Nothing for a resource of another form, and for one with a control character, which
// could break the lines of the reply.
std::optional<Command> ParseCommand(std::string_view resource);

}  // namespace mirelo::quotetracker
