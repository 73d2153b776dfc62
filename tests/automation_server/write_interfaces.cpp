// Writes src/windows/mirelo.idl, after a table has changed.

#include <iostream>

#include "automation_server/interface_text.h"

int main() { std::cout << mirelo::testing::InterfaceText(); }
