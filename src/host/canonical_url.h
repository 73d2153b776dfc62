#pragma once

#include <string>
#include <string_view>

namespace mirelo::host {

// A resource (path and query) in canonical form, as browser mode makes it: tabs and line ends go, and so do
// blanks at the end; in the path, a blank becomes %20, a backslash %5C, and dot segments are resolved. The
// query, and what stands behind "#", keep their blanks and everything else.
std::string CanonicalUrl(std::string_view url);

// The resource as it stands in a request line: "/" in front if it is missing, and what would break the line
// (blanks and control characters) percent-encoded. Bytes above 127 stay.
std::string RequestTarget(std::string_view resource);

}  // namespace mirelo::host
