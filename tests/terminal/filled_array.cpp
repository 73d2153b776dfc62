#include "terminal/output.h"

// The name of a file, say, as the system hands it over: an array that is seen as const and was filled
// outside. It is no literal, and must not compile where it would be taken for one.
struct Entry {
  char name[8];
};

#ifdef MIRELO_PRINTS_FILLED_ARRAY
void Print(mirelo::terminal::Output& out, const Entry& entry) { out << entry.name; }
#else
void Print(mirelo::terminal::Output& out, const Entry& entry) { out << std::string_view(entry.name); }
#endif
