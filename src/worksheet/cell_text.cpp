#include "worksheet/cell_text.h"

#include "host/clock.h"
#include "host/excel/range.h"
#include "host/host.h"

namespace mirelo {

std::string TextOf(const Variant& value) { return value.ToText(host::Host::Current().clock().Regional()); }

std::string TextOf(host::excel::Range& cell) { return TextOf(cell.Value()); }

}  // namespace mirelo
