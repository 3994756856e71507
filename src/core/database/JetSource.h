#pragma once
// The Jet reader's internals that its tests reach.
#include <cstddef>
#include <memory>
#include <string>

#include "database/TableSource.h"

namespace r6183::jet {

// How many bytes a memo or OLE chunk may take once read: far above any value a document
// holds. A value that would not fit raises an error instead of being cut. Tables without
// such columns take their values into buffers of a kilobyte, which a text of 255
// characters fits.
inline constexpr std::size_t kBindSize = std::size_t{1} << 20;

// A Jet date (days since 1899-12-30, the fraction the time of day, counted forward
// even for days before that date) as "yyyy-mm-dd hh:mm:ss", to the nearest second.
// Raises 3421 outside the years 100 to 9999.
std::string DateText(double days);

// OpenJetSource with another limit for text and memo values.
std::unique_ptr<TableSource> Open(const std::string& path, std::size_t bindSize);

}  // namespace r6183::jet
