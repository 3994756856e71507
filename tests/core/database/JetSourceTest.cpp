#include "database/JetSource.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <map>
#include <sstream>

#include "DbTestSupport.h"
#include "shell/Text.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;
using test::ErrorOf;

const fs::path kSamples(R6183_JET_SAMPLES);
#define REQUIRE_SAMPLES() \
  if (!fs::is_directory(kSamples)) GTEST_SKIP() << "no Jet samples at " << kSamples << ": reader unchecked"

std::string Sample(const std::string& name) { return (kSamples / name).string(); }

std::vector<fs::path> SampleFiles() {
  std::vector<fs::path> files;
  for (const auto& e : fs::directory_iterator(kSamples))
    if (e.path().extension() == ".mdb") files.push_back(e.path());
  std::sort(files.begin(), files.end());
  return files;
}

// A hung read kills the test program (SIGALRM) instead of blocking the run.
struct HangGuard {
  HangGuard() { ::alarm(10); }
  ~HangGuard() { ::alarm(0); }
};

bool IsSystemName(const std::string& name) {
  return name.size() >= 4 && EqualsNoCase(name.substr(0, 4), "MSys");
}

// A value as the independent reader printed it.
std::string Cell(const Value& v, const std::string& type) {
  if (v.IsNull()) return "NULL";
  if (v.IsBytes()) return "<blob " + std::to_string(v.ByteData().size()) + ">";
  char buf[64] = {};
  std::string s;
  if (v.IsInteger()) {
    s = std::to_string(v.Integer());
  } else if (v.IsReal() && type == "currency") {
    std::snprintf(buf, sizeof buf, "%.4f", v.Real());
    s = buf;
  } else if (v.IsReal()) {
    s.assign(buf, std::to_chars(buf, buf + sizeof buf, v.Real()).ptr);  // shortest, as the other reader
  } else {
    for (char ch : v.Text()) s += ch == '\n' ? "\\n" : ch == '\r' ? "\\r" : std::string(1, ch);
  }
  return "[" + s + "]";
}

// The user tables of a file in the line format of the *.expected.txt files.
std::vector<std::string> Dump(TableSource& src) {
  std::vector<std::string> out;
  std::size_t tables = 0, rows = 0;
  for (const auto& name : src.TableNames()) {
    if (IsSystemName(name)) continue;
    const SourceTable t = src.ReadTable(name);
    out.push_back("TABLE " + t.name + " cols=" + std::to_string(t.columns.size()) +
                  " rowCount=" + std::to_string(t.rows.size()));
    for (std::size_t i = 0; i < t.columns.size(); ++i) {
      const auto& c = t.columns[i];
      out.push_back("  COL " + std::to_string(i) + " name=" + c.name +
                    " type=" + (c.type == "guid" ? "repid" : c.type) + " size=" + std::to_string(c.size));
    }
    for (std::size_t r = 0; r < t.rows.size(); ++r) {
      std::string line = "  ROW " + std::to_string(r) + ":";
      for (std::size_t i = 0; i < t.rows[r].size(); ++i) line += " " + Cell(t.rows[r][i], t.columns[i].type);
      out.push_back(line);
    }
    out.push_back("  ROWS " + std::to_string(t.rows.size()));
    ++tables;
    rows += t.rows.size();
  }
  out.push_back("SUMMARY tables=" + std::to_string(tables) + " rows=" + std::to_string(rows));
  return out;
}

TEST(JetSource, EverySampleReadsAsTheIndependentReaderReadsIt) {
  REQUIRE_SAMPLES();
  const auto files = SampleFiles();
  ASSERT_FALSE(files.empty());
  for (const auto& mdb : files) {
    SCOPED_TRACE(mdb.filename().string());
    std::vector<std::string> expected;
    std::istringstream in(test::ReadFile(fs::path(mdb).replace_extension(".expected.txt")));
    for (std::string line; std::getline(in, line);) expected.push_back(line);
    HangGuard guard;
    const auto got = Dump(*OpenJetSource(mdb.string()));
    int shown = 0;
    for (std::size_t i = 0; i < std::min(got.size(), expected.size()) && shown < 3; ++i) {
      if (got[i] == expected[i]) continue;
      ADD_FAILURE() << "line " << i + 1 << "\n  got:      " << got[i] << "\n  expected: " << expected[i];
      ++shown;
    }
    EXPECT_EQ(got.size(), expected.size());
  }
}

// What the line format hides: the kind of each value.
TEST(JetSource, ValuesComeAsIntegersRealsTextsAndBytes) {
  REQUIRE_SAMPLES();
  const auto t = OpenJetSource(Sample("testV1997.mdb"))->ReadTable("Table1");
  const std::vector<Value> row1 = {"abcdefg", "hijklmnop", 2, 222, 333333333, 444.555,  // text to double
                                   "1974-09-21 00:00:00", 3.5, 1};  // datetime, currency, boolean
  EXPECT_EQ(t.rows.at(1), row1);
  EXPECT_EQ(t.rows.at(0).at(5), Value(0.0));  // a double, however round
  const auto project = OpenJetSource(Sample("test2V2000.mdb"))->ReadTable("MSP_PROJECTS").rows.at(0);
  EXPECT_EQ(project.at(4), Value());                    // memo
  EXPECT_EQ(project.at(36), Value());                   // datetime
  EXPECT_EQ(project.at(73).ByteData().size(), 22970u);  // OLE
}

TEST(JetSource, ListsUserTablesAndMSysTablesInCatalogueOrderAndFindsThemInAnyCase) {
  REQUIRE_SAMPLES();
  const auto src = OpenJetSource(Sample("testUnicodeCompV2003.mdb"));
  // the hidden system table f_..._Data, not named MSys..., stays out
  EXPECT_EQ(src->TableNames(),
            (std::vector<std::string>{"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships",
                                      "MSysAccessStorage", "MSysNameMap", "MSysNavPaneGroupCategories",
                                      "MSysNavPaneGroups", "MSysNavPaneGroupToObjects",
                                      "MSysNavPaneObjectIDs", "Table"}));
  EXPECT_EQ(src->ReadTable("TABLE").rows.size(), 8u);
  EXPECT_GT(src->ReadTable("msysobjects").rows.size(), 10u);
  EXPECT_EQ(ErrorOf([&] { src->ReadTable("Table9"); }), err::TableNotFound);
}

TEST(JetSource, AValueLongerThanTheLimitRaisesInsteadOfBeingCut) {
  REQUIRE_SAMPLES();
  for (const char* file : {"test2V1997.mdb", "test2V2000.mdb"}) {  // a memo of about 400 characters
    SCOPED_TRACE(file);
    EXPECT_EQ(ErrorOf([&] { jet::Open(Sample(file), 256)->ReadTable("MSP_PROJECTS"); }), err::FieldTooSmall);
    EXPECT_EQ(jet::Open(Sample(file), 1024)->ReadTable("MSP_PROJECTS").rows.size(), 1u);
  }
}

struct Damaged {
  std::string what, bytes;
  bool openFails = false;
};

// Cut copies of a sample, and copies with one page zeroed, each page in turn.
std::vector<Damaged> DamagedCopies(const std::string& whole, std::size_t page) {
  std::vector<Damaged> copies = {
      {"header then zeros", whole.substr(0, 100) + std::string(whole.size() - 100, '\0'), true},
      {"one page", whole.substr(0, page), true},
      {"three pages", whole.substr(0, 3 * page)},
      {"half", whole.substr(0, whole.size() / 2)},
      {"last page missing", whole.substr(0, whole.size() - page)},
  };
  for (std::size_t p = 1; p < whole.size() / page; ++p)
    copies.push_back({"page " + std::to_string(p) + " zeroed",
                      std::string(whole).replace(p * page, page, std::string(page, '\0'))});
  return copies;
}

// A damaged file gives each table exactly as the whole file holds it or raises 3343,
// within a second; it never hangs, crashes or hands out less.
TEST(JetSource, DamagedFilesRaiseOrReadWholeTables) {
  REQUIRE_SAMPLES();
  test::TempDir dir;
  const std::string path = dir.str("damaged.mdb");
  int raised = 0, whole = 0;
  for (const auto& mdb : SampleFiles()) {
    std::map<std::string, SourceTable> intact;
    const auto good = OpenJetSource(mdb.string());
    for (const auto& n : good->TableNames()) intact[n] = good->ReadTable(n);
    const std::size_t page = DetectFormat(mdb.string()) == FileFormat::Jet3 ? 2048 : 4096;
    for (const auto& d : DamagedCopies(test::ReadFile(mdb), page)) {
      SCOPED_TRACE(mdb.filename().string() + ", " + d.what);
      test::WriteFile(path, d.bytes);
      HangGuard guard;
      const auto start = std::chrono::steady_clock::now();
      std::unique_ptr<TableSource> src;
      const int16_t openError = ErrorOf([&] { src = OpenJetSource(path); });
      if (d.openFails || openError) {
        EXPECT_EQ(openError, err::NotADatabase);
        ++raised;
        continue;
      }
      for (const auto& n : src->TableNames()) {
        SourceTable t;
        if (const int16_t e = ErrorOf([&] { t = src->ReadTable(n); })) {
          EXPECT_EQ(e, err::NotADatabase) << n;
          ++raised;
        } else {
          EXPECT_EQ(t.rows, intact.at(n).rows) << n;
          ++whole;
        }
      }
      EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    }
  }
  EXPECT_GT(raised, 0);
  EXPECT_GT(whole, 0);  // a cut file still gives the tables before the cut
}

TEST(JetSource, OpensNothingButAJetFile) {
  test::TempDir dir;
  test::WriteFile(dir.path() / "zeros.mdb", std::string(8192, '\0'));  // libmdb alone would open it
  EXPECT_EQ(ErrorOf([&] { OpenJetSource(dir.str("zeros.mdb")); }), err::NotADatabase);
  EXPECT_EQ(ErrorOf([&] { OpenJetSource((test::StagedAppDir() / "DEFAULT").string()); }), err::NotADatabase);
  EXPECT_EQ(ErrorOf([&] { OpenJetSource(dir.str("none.mdb")); }), err::FileNotFound);
}

TEST(JetDateText, CountsDaysFromTheEpochAndTheTimeForwardEvenBeforeIt) {
  const std::pair<double, const char*> cases[] = {
      {0.0, "1899-12-30 00:00:00"},
      {61.0, "1900-03-01 00:00:00"},  // no 29 February 1900
      {36585.5, "2000-02-29 12:00:00"},
      {38751.924363425924, "2006-02-03 22:11:05"},
      {-1.25, "1899-12-29 06:00:00"},  // the day before, six in the morning
      {-0.5, "1899-12-30 12:00:00"},
      {0.99999999, "1899-12-31 00:00:00"},  // rounds up into the next day
      {-1.99999999, "1899-12-30 00:00:00"},
      {2958465.999988426, "9999-12-31 23:59:59"},
      {-657434.0, "0100-01-01 00:00:00"},
  };
  for (const auto& [days, text] : cases) EXPECT_EQ(jet::DateText(days), text) << days;
  for (double outside : {-657435.0, 2958466.0, std::nan(""), HUGE_VAL})
    EXPECT_EQ(ErrorOf([&] { jet::DateText(outside); }), err::DataTypeConversion) << outside;
}

}  // namespace
}  // namespace r6183
