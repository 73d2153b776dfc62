#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace mirelo::fuzzing {

// Changes the text of an XML part in one place, most often so that it stays well-formed: elements are
// repeated, moved and left out, values replaced by others that are of interest to a reader of workbooks.
void MutateXml(std::string& text, std::mt19937& random);

// Changes bytes anywhere in the text, as the fuzzer thinks best.
void MutateBytes(std::string& text, std::mt19937& random);

}  // namespace mirelo::fuzzing
