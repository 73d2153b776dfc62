#include "com/class_ids.h"

#include <algorithm>
#include <array>

namespace mirelo::com {

namespace {

constexpr GUID Id(unsigned char kind, unsigned char number) {
  return {0x0416BE29, 0x8C0D, 0x4093, {0xB2, 0x84, 0xCC, 0xB1, 0xAD, 0x1F, kind, number}};
}
constexpr unsigned char kClass = 0x3F;
constexpr unsigned char kEvents = 0x40;

constexpr std::array kClasses{
    ClassId{"cMirelo", Id(kClass, 1)},         ClassId{"cQTStreaming", Id(kClass, 2)},
    ClassId{"cQTData", Id(kClass, 3)},         ClassId{"cQTDatas", Id(kClass, 4)},
    ClassId{"cTickerDateTime", Id(kClass, 5)}, ClassId{"cTickerDateTimes", Id(kClass, 6)},
    ClassId{"CAppSettings", Id(kClass, 7)},    ClassId{"WinInet", Id(kClass, 8)},
};

constexpr std::array kEventInterfaces{
    ClassId{"cQTStreaming", Id(kEvents, 2)},
    ClassId{"WinInet", Id(kEvents, 8)},
};

}  // namespace

std::span<const ClassId> ClassIds() { return kClasses; }

const IID& EventsOf(std::string_view class_name) {
  const auto* const known = std::ranges::find(kEventInterfaces, class_name, &ClassId::name);
  return known != kEventInterfaces.end() ? known->id : IID_NULL;
}

}  // namespace mirelo::com
