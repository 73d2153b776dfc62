// The program mirelo: it plays the part of the spreadsheet's macros, which call the library.

#include "app/mirelo_program.h"
#include "app/run_program.h"

int main(int argc, char** argv) {
  return mirelo::app::RunProgram([&] { return mirelo::app::MireloProgram().Run(argc, argv); });
}
