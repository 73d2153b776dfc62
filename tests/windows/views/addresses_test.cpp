// Files and addresses that are opened with the machine's own programs.

#include <cwchar>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "windows/views/sample_form.h"

namespace mirelo::windows {
namespace {

// A kind of address of the tests' own, whose program writes down what it was asked to open.
class OwnScheme {
 public:
  OwnScheme() {
    const std::wstring command = L"cmd.exe /c echo %1>" + file_.wstring();
    Set(nullptr, nullptr, L"URL:Mirelo's tests");
    Set(nullptr, L"URL Protocol", L"");
    Set(L"shell\\open\\command", nullptr, command.c_str());
  }
  ~OwnScheme() {
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, kScheme);
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }
  OwnScheme(const OwnScheme&) = delete;
  OwnScheme& operator=(const OwnScheme&) = delete;

  // What it was asked for within some seconds.
  std::string Opened() const {
    std::string line;
    for (int i = 0; i < 200 && line.empty(); ++i) {
      ::Sleep(50);
      std::ifstream written(file_);
      std::getline(written, line);
    }
    return line;
  }

 private:
  static void Set(const wchar_t* below, const wchar_t* name, const wchar_t* text) {
    HKEY key = nullptr;
    ::RegCreateKeyW(HKEY_CLASSES_ROOT, kScheme, &key);
    ::RegSetKeyValueW(key, below, name, REG_SZ, text,
                      static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t)));
    ::RegCloseKey(key);
  }
  static constexpr const wchar_t* kScheme = L"mirelo-test";
  const std::filesystem::path file_ =
      std::filesystem::temp_directory_path() / ("mirelo-opened-" + std::to_string(::GetCurrentProcessId()));
};

TEST_F(Controls, OpenAddressesWithTheirProgram) {
  const OwnScheme scheme;
  EXPECT_GT(desktop.ShellExecuteA("open", "mirelo-test:support?subject=An-error"), 32);
  EXPECT_EQ(scheme.Opened(), "mirelo-test:support?subject=An-error");
}

TEST_F(Controls, OpenNothingThatIsNoFileOrAddress) {
  EXPECT_LE(desktop.ShellExecuteA("open", "Z:\\no\\such\\file.txt"), 32);
  EXPECT_EQ(desktop.ShellExecuteA("open", ""), 31);
}

}  // namespace
}  // namespace mirelo::windows
