#pragma once

#include <string>

namespace mirelo::testing {

// The path of this program of the build that the running test belongs to: all of a build stand beside each
// other. A test's own sources may have been compiled by another build, so they cannot tell.
std::string BuiltProgram(const std::string& name);

}  // namespace mirelo::testing
