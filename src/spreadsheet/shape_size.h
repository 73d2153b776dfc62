#pragma once

#include <cstdint>

#include "host/excel/constants.h"

namespace mirelo::spreadsheet {

// Sizes of what floats over cells are whole pixels from 1 to kGreatestShape. What clients give is rounded to
// them, and error 1004 when it is not above 0 or too large.
std::int32_t PixelsOfSize(double points);
// A size times a factor. Error 1004 also unless `relative_to_original_size` is false.
std::int32_t ScaledPixels(std::int32_t pixels, double factor,
                          host::excel::MsoTriState relative_to_original_size);

}  // namespace mirelo::spreadsheet
