#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mirelo::testing {

struct ProgramResult {
  int exit_code = -1;  // 128 and the signal's number for a program that a signal ended
  int signal = 0;      // that number
  std::string out;
  std::string err;
};

// Runs the program mirelo of this build to its end, in `folder`, with a home of its own there, so that no
// test sees the settings of the person who runs it, and without root's right to write what is read-only.
// `input` is its standard input.
ProgramResult RunMirelo(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                        const std::string& input = "");

// The same with the program of that file.
ProgramResult RunProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                         const std::vector<std::string>& arguments, const std::string& input = "");

// Runs mirelo with nobody to read its standard output, nor, where `errors_too`, its standard error stream.
ProgramResult RunMireloUnread(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                              bool errors_too = false);

// Runs mirelo with its standard output on a disk without room.
ProgramResult RunMireloOnFullDisk(const std::filesystem::path& folder,
                                  const std::vector<std::string>& arguments);

// Runs mirelo in a shell that limits something, by the names of setrlimit(2): RLIMIT_FSIZE, say, in bytes.
ProgramResult RunMireloWithin(int resource, std::uint64_t most, const std::filesystem::path& folder,
                              const std::vector<std::string>& arguments);

}  // namespace mirelo::testing
