// The program mirelo: it plays the part of the spreadsheet's macros, which call the library.

#include <exception>
#include <iostream>

#include "app/exit_code.h"
#include "app/mirelo_program.h"

int main(int argc, char** argv) {
  try {
    return mirelo::app::MireloProgram().Run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return mirelo::app::kFailed;
  }
}
