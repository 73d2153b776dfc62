#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

// A reference from one part to another, or to something outside of the file.
struct Relationship {
  std::string id;
  std::string type;    // the last word of its type's address, such as "worksheet"
  std::string target;  // the name of a part, or an address when external
  bool external = false;
};

// The relationships of `part`, out of the part that lists them, whose root element is `list`.
std::vector<Relationship> RelationshipsIn(pugi::xml_node list, const std::string& part);

// The name of the part that lists another one's relationships; of the whole package for an empty name.
std::string RelationshipsPartOf(const std::string& part);

class Relationships {
 public:
  // Those of a part, none when it has no list of them; of the whole package for an empty name.
  Relationships(Package& package, const std::string& part);

  const std::vector<Relationship>& all() const { return all_; }
  // Null when there is none.
  const Relationship* FindId(std::string_view id) const;
  const Relationship* FindType(std::string_view type) const;

 private:
  std::vector<Relationship> all_;
};

}  // namespace mirelo::workbook
