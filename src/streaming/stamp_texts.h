#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo {

// The server's stamps as texts in the user's format. The quotes of a stream share few stamps at a time, so
// texts that were made are kept and found again.
class StampTexts {
 public:
  static constexpr std::size_t kStampSize = 14;

  // A stamp MMDDYYYYHHMMSS is written as MM/DD/YYYY HH:MM:SS, and that shown in `format`: the region says how
  // a date is shown, not how the stamp is read. A stamp that is no date comes back as MM/DD/YYYY HH:MM:SS,
  // and so does any with an empty format. The reference holds until the next call.
  const std::string& Text(std::string_view stamp, const std::string& format);

  // To be called when the format changes.
  void Forget() { entries_.clear(); }

 private:
  struct Entry {
    bool used = false;
    std::array<char, kStampSize> stamp{};
    std::string text;
  };
  // Each stamp has one place in the cache; of those that share a place only the newest is kept.
  static constexpr unsigned kPlacesLog2 = 8;

  Entry& PlaceOf(std::string_view stamp);

  std::vector<Entry> entries_;
};

}  // namespace mirelo
