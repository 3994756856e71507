#pragma once
// Who the program is: one code base serves five products that differ only in their
// words, help file, icon and report file names. The index is fixed in the build.
#include <array>
#include <string>
#include <string_view>

namespace r6183 {

class Session;

inline constexpr int kProductIndex = 1;

struct ProductIdentity {
  std::string ProductBrand;
  std::string ProductModel;
  std::string ProductTitle;
  std::string ProductVersionText;
  std::string ProductDate;
  std::string HelpFileName;
  std::string LegalNotice;
  std::string ProductCaption;
  std::string IconName;  // with its leading "/", relative to the application directory
  std::string IconPath;  // the icon file found in the application directory, or empty
  int ProductCode = -1;  // the product index, -1 until established
};

// The words of one product row for a given browser version (which picks the help
// file form). Indexes outside 0 to 4 give empty words.
ProductIdentity IdentityFor(int productIndex, int browserVersion);

// The browser version from the registry text "major.minor...": the integer before
// the first point, 0 for an empty text.
int BrowserVersionFrom(std::string_view versionText);

// The nine report file names of a product, relative to the application directory
// ("reports/sched.rpt" for product 1), in the order the required-file check uses.
std::array<std::string, 9> ReportFileNames(int productIndex);

// Establishes the identity of the built-in product in the session; a missing icon
// file is journalled and start-up goes on.
void AA_Sys_WhoAmi(Session& session);

}  // namespace r6183
