#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo {

// The MD5 message digest of RFC 1321, as QuoteTracker's login wants it. It proves knowledge of a secret to a
// peer on the same machine; it is no protection against anyone who can try secrets. What it copies of a text
// it wipes.
class MD5 {
 public:
  using Digest = std::array<std::uint8_t, 16>;

  static Digest Of(std::string_view bytes);

  // The digest of a text's bytes in the ANSI code page, one byte a character, as 32 upper case hexadecimal
  // digits.
  std::string DigestString(std::string_view text) const;
};

}  // namespace mirelo
