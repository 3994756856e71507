#include "shell/ProductIdentity.h"

#include <iterator>

#include "shell/Labels.h"
#include "shell/Registry.h"
#include "shell/Session.h"

namespace r6183 {

namespace {

struct ProductRow {
  const char* brand;
  const char* model;
  const char* title;
  const char* date;
  const char* helpHtml;  // compiled HTML help, for browser 4 and later
  const char* helpOld;   // the older help form
  const char* icon;
};

constexpr ProductRow kProducts[] = {
    {"Lumetra", "8362", "Lumetra 8362 Haldric Communications System", "06/15/2000", "8362.chm",
     "8362.hlp", "/8362.ico"},
    {"Orvane", "R-6183", "Orvane R-6183 Programming Tool", "11/06/2001", "6183.chm", "6183.hlp",
     "/r6183.ico"},
    {"Vespane", "KT-48", "Vespane KT-48 Programming Tool", "11/06/2001", "KT48.chm", "KT48.hlp",
     "/kt48.ico"},
    {"Tarnel Brightway", "PN-48", "Tarnel Brightway PN-48 Programming Tool", "11/06/2001",
     "PN48hlp.chm", "PN48hlp.hlp", "/PN-48.ico"},
    {"Orvane", "MF-48", "Orvane MF-48 Programming Tool", "11/06/2001", "MF48hlp.chm", "MF48hlp.hlp",
     "/MF-48.ico"},
};
constexpr int kProductCount = static_cast<int>(std::size(kProducts));

// The R-6183 once shipped a second help set; the build keeps it switched off.
constexpr bool kUseAlternateHelp = false;
constexpr const char* kAlternateHelpHtml = "6183s.chm";
constexpr const char* kAlternateHelpOld = "6183s.hlp";

constexpr int kHtmlHelpBrowser = 4;
constexpr const char* kMaker = "Orvane";
constexpr const char* kVersionText = "Version - 2.00";

}  // namespace

ProductIdentity IdentityFor(int productIndex, int browserVersion) {
  ProductIdentity id;
  if (productIndex < 0 || productIndex >= kProductCount) return id;
  const ProductRow& row = kProducts[productIndex];
  const bool html = browserVersion >= kHtmlHelpBrowser;

  id.ProductBrand = row.brand;
  id.ProductModel = row.model;
  id.ProductTitle = row.title;
  id.ProductDate = row.date;
  id.HelpFileName = html ? row.helpHtml : row.helpOld;
  id.IconName = row.icon;
  if (productIndex == 0) id.HelpFileName = row.helpHtml;  // this product ships HTML help only
  if (productIndex == 1 && kUseAlternateHelp)
    id.HelpFileName = html ? kAlternateHelpHtml : kAlternateHelpOld;

  const std::string years = productIndex == 0 ? "1996-2000" : "1996-2001";
  const std::string holder = productIndex == 2 ? row.brand : kMaker;
  id.LegalNotice = "Copyright (C) " + years + " " + holder + ". All rights reserved.";
  id.ProductVersionText = kVersionText;
  id.ProductCaption = id.ProductModel + " " + "Programming Tool  -  " + id.ProductDate;
  id.ProductCode = productIndex;
  return id;
}

int BrowserVersionFrom(std::string_view versionText) {
  const std::string_view major = versionText.substr(0, versionText.find('.'));
  std::size_t i = 0;
  while (i < major.size() && major[i] == ' ') ++i;
  int n = 0;
  for (; i < major.size() && major[i] >= '0' && major[i] <= '9'; ++i) {
    if (n > 100000) break;  // no browser has such a version; keep clear of overflow
    n = n * 10 + (major[i] - '0');
  }
  return n;
}

std::array<std::string, 9> ReportFileNames(int productIndex) {
  static constexpr const char* kStems[] = {"sched", "event",   "bgm",     "class", "clid",
                                           "dip",   "pagegrp", "phonlst", "clocks"};
  std::string prefix, suffix;
  switch (productIndex) {
    case 0:
      prefix = "s";
      break;
    case 2:
      prefix = "c";
      break;
    case 3:
      suffix = "CC";
      break;
    case 4:
      prefix = "I";
      break;
    default:
      break;
  }
  std::array<std::string, 9> names;
  for (std::size_t i = 0; i < names.size(); ++i)
    names[i] = "reports/" + prefix + kStems[i] + suffix + ".rpt";
  return names;
}

void AA_Sys_WhoAmi(Session& session) {
  const std::string version =
      GetRegString(RegistryHive::LocalMachine, "Software\\Microsoft\\Internet Explorer", "Version");
  session.product = IdentityFor(kProductIndex, BrowserVersionFrom(version));

  step(session.journal(), Where{labels::AA_Sys_WhoAmi, "iniSysOpt"}, [&] {
    std::string_view icon = session.product.IconName;
    while (!icon.empty() && icon.front() == '/') icon.remove_prefix(1);
    if (icon.empty() || !session.appDir().Has(icon)) throw RuntimeError(err::FileNotFound);
    session.product.IconPath = session.appDir().PathOf(icon);
  });
}

}  // namespace r6183
