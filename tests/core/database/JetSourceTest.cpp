#include "database/JetSource.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <set>

#include "DbTestSupport.h"
#include "shell/Text.h"

namespace r6183::test {
namespace {

const fs::path kSamples(R6183_JET_SAMPLES);

// The samples live beside the project, not in it; without them these tests say so and skip.
struct JetSource : ::testing::Test {
  void SetUp() override {
    if (!fs::is_directory(kSamples)) GTEST_SKIP() << "no Jet samples at " << kSamples;
    for (const auto& e : fs::directory_iterator(kSamples))
      if (e.path().extension() == ".mdb") files.push_back(e.path());
    std::ranges::sort(files);
    ASSERT_FALSE(files.empty());
  }
  std::vector<fs::path> files;
};

// A hung read kills the test program (SIGALRM) instead of blocking the run.
struct HangGuard {
  HangGuard() { ::alarm(10); }
  ~HangGuard() { ::alarm(0); }
};

// A value as the independent reader printed it; one of the wrong kind for its column (a
// real for a long, a number for a date) prints as such.
std::string Cell(const Value& v, const std::string& type) {
  if (v.IsNull()) return "NULL";
  const auto of = [&](std::set<std::string> types) { return types.contains(type); };
  const bool real = of({"double", "float", "currency", "numeric"}), bytes = of({"ole", "binary"});
  const bool whole = of({"boolean", "byte", "integer", "long", "complex"});
  if (v.IsReal() != real || v.IsInteger() != whole || v.IsBytes() != bytes) return "<wrong kind>";
  if (bytes) return "<blob " + std::to_string(v.ByteData().size()) + ">";
  if (whole) return "[" + std::to_string(v.Integer()) + "]";
  char buf[64];
  if (type == "currency") return "[" + std::string(buf, std::snprintf(buf, sizeof buf, "%.4f", v.Real())) + "]";
  // the shortest form, as the other reader
  if (real) return "[" + std::string(buf, std::to_chars(buf, buf + sizeof buf, v.Real()).ptr) + "]";
  std::string s;
  for (char ch : v.Text()) s += ch == '\n' ? "\\n" : ch == '\r' ? "\\r" : std::string(1, ch);
  return "[" + s + "]";
}

// The user tables of a file in the format of the *.expected.txt files. Each is read under
// its name in capitals: the file's own spelling must come back.
std::string Dump(TableSource& src) {
  const auto n = [](std::size_t i) { return std::to_string(i); };
  std::string out;
  std::size_t tables = 0, rows = 0;
  for (const auto& name : src.TableNames()) {
    if (ToUpper(name).starts_with("MSYS")) continue;
    const SourceTable t = src.ReadTable(ToUpper(name));
    out += "TABLE " + t.name + " cols=" + n(t.columns.size()) + " rowCount=" + n(t.rows.size()) + "\n";
    for (std::size_t i = 0; const auto& c : t.columns)
      out += "  COL " + n(i++) + " name=" + c.name + " type=" + (c.type == "guid" ? "repid" : c.type) +
             " size=" + n(c.size) + "\n";
    for (std::size_t r = 0; r < t.rows.size(); ++r) {
      out += "  ROW " + n(r) + ":";
      for (std::size_t i = 0; i < t.rows[r].size(); ++i) out += " " + Cell(t.rows[r][i], t.columns[i].type);
      out += "\n";
    }
    out += "  ROWS " + n(t.rows.size()) + "\n";
    ++tables;
    rows += t.rows.size();
  }
  return out + "SUMMARY tables=" + n(tables) + " rows=" + n(rows) + "\n";
}

TEST_F(JetSource, EverySampleReadsAsTheIndependentReaderReadsIt) {
  for (const auto& mdb : files) {
    HangGuard guard;
    EXPECT_EQ(Dump(*OpenJetSource(mdb.string())), ReadFile(fs::path(mdb).replace_extension(".expected.txt")))
        << mdb.filename();
  }
}

TEST_F(JetSource, AValueLongerThanTheLimitRaisesInsteadOfBeingCut) {
  for (const char* file : {"test2V1997.mdb", "test2V2000.mdb"}) {  // a memo of about 400 characters
    const std::string path = (kSamples / file).string();
    EXPECT_EQ(ErrorOf([&] { jet::Open(path, 256)->ReadTable("MSP_PROJECTS"); }), err::FieldTooSmall) << file;
    EXPECT_EQ(jet::Open(path, 1024)->ReadTable("MSP_PROJECTS").rows.size(), 1u) << file;
  }
}

// Copies of every sample cut short or with one page zeroed, each page in turn: a table
// reads exactly as the whole file holds it or raises 3343, within a second; the reader
// never hangs, crashes or hands out less.
TEST_F(JetSource, DamagedFilesRaiseOrReadWholeTables) {
  TempDir dir;
  const std::string path = dir.str("damaged.mdb");
  int raised = 0, whole = 0;
  for (const auto& mdb : files) {
    const auto intact = OpenJetSource(mdb.string());
    const std::string bytes = ReadFile(mdb);
    const std::size_t page = DetectFormat(mdb.string()) == FileFormat::Jet3 ? 2048 : 4096;
    std::vector<std::string> copies = {  // the first two can't be opened
        bytes.substr(0, 100) + std::string(bytes.size() - 100, '\0'), bytes.substr(0, page),
        bytes.substr(0, 3 * page), bytes.substr(0, bytes.size() / 2), bytes.substr(0, bytes.size() - page)};
    for (std::size_t p = 1; p < bytes.size() / page; ++p)
      copies.push_back(std::string(bytes).replace(p * page, page, page, '\0'));
    for (std::size_t i = 0; i < copies.size(); ++i) {
      SCOPED_TRACE(mdb.filename().string() + ", copy " + std::to_string(i));
      WriteFile(path, copies[i]);
      HangGuard guard;
      std::unique_ptr<TableSource> src;
      if (const int16_t e = ErrorOf([&] { src = OpenJetSource(path); }); e || i < 2) {
        EXPECT_EQ(e, err::NotADatabase);
        continue;
      }
      for (const auto& n : src->TableNames()) {
        SourceTable t;
        const int16_t e = ErrorOf([&] { t = src->ReadTable(n); });
        EXPECT_TRUE(e ? e == err::NotADatabase : t.rows == intact->ReadTable(n).rows) << n << ", error " << e;
        ++(e ? raised : whole);
      }
    }
  }
  EXPECT_GT(raised, 0);  // a damaged table raises from the read, not only from the opening
  EXPECT_GT(whole, 0);  // a cut file still gives the tables before the cut
}

TEST(JetDateText, CountsDaysFromTheEpochAndTheTimeForwardEvenBeforeIt) {
  const std::pair<double, const char*> cases[] = {
      {61.0, "1900-03-01 00:00:00"},  // no 29 February 1900
      {-1.25, "1899-12-29 06:00:00"},  // the day before, six in the morning
      {0.99999999, "1899-12-31 00:00:00"},  // rounds up into the next day
      {-1.99999999, "1899-12-30 00:00:00"},
      {2958465.999988426, "9999-12-31 23:59:59"}, {-657434.0, "0100-01-01 00:00:00"},  // the years 100 to 9999
  };
  for (const auto& [days, text] : cases) EXPECT_EQ(jet::DateText(days), text) << days;
  for (double outside : {-657435.0, 2958466.0, std::nan(""), HUGE_VAL})
    EXPECT_EQ(ErrorOf([&] { jet::DateText(outside); }), err::DataTypeConversion) << outside;
}

}  // namespace
}  // namespace r6183::test
