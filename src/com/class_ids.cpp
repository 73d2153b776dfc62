#include "com/class_ids.h"

#include <algorithm>
#include <array>
#include <vector>

namespace mirelo::com {

namespace {

constexpr GUID Id(unsigned char kind, unsigned char number) {
  return {0x0416BE29, 0x8C0D, 0x4093, {0xB2, 0x84, 0xCC, 0xB1, 0xAD, 0x1F, kind, number}};
}
constexpr unsigned char kClass = 0x3F;
constexpr unsigned char kEvents = 0x40;
constexpr unsigned char kInterface = 0x41;
constexpr unsigned char kLibrary = 0x42;
constexpr unsigned char kConstants = 0x43;

constexpr std::array kClasses{
    ClassId{"cMirelo", Id(kClass, 1)},         ClassId{"cQTStreaming", Id(kClass, 2)},
    ClassId{"cQTData", Id(kClass, 3)},         ClassId{"cQTDatas", Id(kClass, 4)},
    ClassId{"cTickerDateTime", Id(kClass, 5)}, ClassId{"cTickerDateTimes", Id(kClass, 6)},
    ClassId{"CAppSettings", Id(kClass, 7)},    ClassId{"WinInet", Id(kClass, 8)},
};

constexpr std::array kInterfaces{
    ClassId{"cMirelo", Id(kInterface, 1)},         ClassId{"cQTStreaming", Id(kInterface, 2)},
    ClassId{"cQTData", Id(kInterface, 3)},         ClassId{"cQTDatas", Id(kInterface, 4)},
    ClassId{"cTickerDateTime", Id(kInterface, 5)}, ClassId{"cTickerDateTimes", Id(kInterface, 6)},
    ClassId{"CAppSettings", Id(kInterface, 7)},    ClassId{"WinInet", Id(kInterface, 8)},
};

constexpr std::array kConstantLists{ClassId{"StatusRunQueryQT", Id(kConstants, 1)}};

constexpr GUID kTypeLibrary = Id(kLibrary, 1);

constexpr std::array kEventInterfaces{
    ClassId{"cQTStreaming", Id(kEvents, 2)},
    ClassId{"WinInet", Id(kEvents, 8)},
};

const GUID& IdIn(std::span<const ClassId> list, std::string_view class_name) {
  const auto known = std::ranges::find(list, class_name, &ClassId::name);
  return known != list.end() ? known->id : GUID_NULL;
}

}  // namespace

namespace {

std::vector<ClassId>& KnownIds() {
  static std::vector<ClassId> known(kClasses.begin(), kClasses.end());
  return known;
}

}  // namespace

std::span<const ClassId> ClassIds() { return KnownIds(); }

void AddClassId(std::string_view class_name, unsigned char number) {
  KnownIds().push_back({class_name, Id(kClass, number)});
}

const CLSID& ClassIdOf(std::string_view class_name) { return IdIn(KnownIds(), class_name); }

const IID& InterfaceOf(std::string_view class_name) { return IdIn(kInterfaces, class_name); }

const IID& EventsOf(std::string_view class_name) { return IdIn(kEventInterfaces, class_name); }

const GUID& ConstantsOf(std::string_view enumeration) { return IdIn(kConstantLists, enumeration); }

const GUID& TypeLibraryId() { return kTypeLibrary; }

}  // namespace mirelo::com
