#pragma once
// The help book: HTML pages in help/ of the application directory, opened at
// help/index.html. Both help file names of the product (the ".chm" and the ".hlp"
// form) lead to the same book.
#include <string>

namespace r6183 {

class Session;

// The path of help/index.html when the product has a help file of either form and the
// book is installed; empty otherwise.
std::string HelpBookPath(const Session& session);

}  // namespace r6183
