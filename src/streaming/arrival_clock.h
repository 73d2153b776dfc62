#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirelo {

// The moment at which a record arrives, in the zone that the user chose: the host's clock and a displacement.
class ArrivalClock {
 public:
  struct Texts {
    std::string date;  // in the user's format
    std::string time;  // hh:mm:ss
  };

  ArrivalClock(std::int32_t hours, std::int32_t minutes) : hours_(hours), minutes_(minutes) {}

  // The texts are made once for each second of the clock. Error 5 when the displacement leads out of the
  // calendar.
  const Texts& GetDisplacedDateTime(const std::string& format);

  // Whether the displacement is so wild that the call above may fail.
  bool MayFail() const {
    constexpr std::int64_t kCentury = std::int64_t{100} * 366 * 24 * 60;
    const std::int64_t minutes = std::int64_t{hours_} * 60 + minutes_;
    return minutes > kCentury || minutes < -kCentury;
  }

  // To be called when the format changes.
  void Forget() { second_.reset(); }

 private:
  std::int32_t hours_;
  std::int32_t minutes_;
  std::optional<std::int64_t> second_;  // that the texts are of
  Texts texts_;
};

}  // namespace mirelo
