// Text beyond plain ASCII over a real pseudo-terminal: r6183ctl against r6183-sim, with the
// bytes that crossed the wire checked against frames written out here by hand. The
// simulator encodes with the tool's own message routines, so only the wire can tell
// whether both get the code of the line wrong in the same way.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <vector>

#include "CtlRun.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

// Every character of Windows-1252 beyond ASCII with its byte, written out by hand.
struct Character {
  std::string text;  // UTF-8
  char byte;
};

std::vector<std::string> Utf8Characters(const std::string& s) {
  std::vector<std::string> out;
  for (std::size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    const std::size_t n = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
    out.push_back(s.substr(i, n));
    i += n;
  }
  return out;
}

std::vector<Character> CodePage() {
  const auto high = Utf8Characters("€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ");
  const std::string highBytes =
      "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F";
  // A0 to FF in order; the no-break space and the soft hyphen written by their numbers
  const auto latin = Utf8Characters(
      "\u00A0¡¢£¤¥¦§¨©ª«¬\u00AD®¯°±²³´µ¶·¸¹º»¼½¾¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþÿ");
  std::vector<Character> all;
  for (std::size_t i = 0; i < high.size() && i < highBytes.size(); ++i) all.push_back({high[i], highBytes[i]});
  for (std::size_t i = 0; i < latin.size(); ++i) all.push_back({latin[i], static_cast<char>(0xA0 + i)});
  return all;
}

// Three hexadecimal digits of the byte sum modulo 4096.
std::string Sum(const std::string& bytes) {
  unsigned sum = 0;
  for (unsigned char c : bytes) sum += c;
  const char* hex = "0123456789ABCDEF";
  return {hex[(sum >> 8) & 15], hex[(sum >> 4) & 15], hex[sum & 15]};
}

// The frames of one letter in what crossed the wire, checksum included, without the
// control bytes and the NUL after each CR.
std::vector<std::string> FramesOf(const std::string& wire, char letter) {
  std::vector<std::string> frames;
  std::string frame;
  for (const char c : wire) {
    if (c == '\0' || c == '\x06' || c == '\x15') continue;
    if (c != '\r') {
      frame += c;
      continue;
    }
    if (!frame.empty() && frame[0] == letter) frames.push_back(frame);
    frame.clear();
  }
  return frames;
}

struct Station {
  std::string archnum, description;  // UTF-8, as the document holds them
  std::string frame;                 // the C frame, written out byte by byte
};

// 96 stations whose descriptions run through every character of the code page beyond
// ASCII, one to fifteen characters long.
std::vector<Station> Stations() {
  const auto page = CodePage();
  std::vector<Station> stations;
  std::size_t next = 0;
  for (int n = 1; n <= 96; ++n) {
    Station s;
    s.archnum = std::to_string(2000 + n);
    std::string bytes;
    const int length = 1 + n % 15;
    for (int k = 0; k < length; ++k, ++next) {
      s.description += page[next % page.size()].text;
      bytes += page[next % page.size()].byte;
    }
    const std::string payload = std::string("C") + (n < 10 ? "0" : "") + std::to_string(n) + s.archnum + bytes +
                                std::string(15 - length, ' ');
    s.frame = payload + Sum(payload);
    stations.push_back(s);
  }
  return stations;
}

std::vector<std::string> ClidRows(const std::string& path) {
  SQLite::Database db(path);
  SQLite::Statement q(db, "SELECT clid_station, archnum, clid_string FROM Clid ORDER BY clid_station");
  std::vector<std::string> rows;
  while (q.executeStep())
    rows.push_back(q.getColumn(0).getString() + "|" + q.getColumn(1).getString() + "|" + q.getColumn(2).getString());
  return rows;
}

TEST(AccentedTextOverAPty, SendAndReceiveCarryEachCharacterAsOneByteOfTheCodePage) {
  const auto page = CodePage();
  ASSERT_EQ(page.size(), 27u + 96u);
  const auto stations = Stations();
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string site = dir.str("site.mdb");
  std::filesystem::copy_file(dir.path() / "DEFAULT", site);
  std::vector<std::string> expected;  // the rows as they come back: filled with blanks to 4 and 15
  {
    SQLite::Database db(site, SQLite::OPEN_READWRITE);
    db.exec("UPDATE Config SET System_Config = 3");
    SQLite::Statement update(db, "UPDATE Clid SET archnum = ?, clid_string = ? WHERE clid_station = ?");
    for (std::size_t i = 0; i < stations.size(); ++i) {
      update.bind(1, stations[i].archnum);
      update.bind(2, stations[i].description);
      update.bind(3, static_cast<int>(i + 1));
      update.exec();
      update.reset();
      const std::size_t length = 1 + (i + 1) % 15;
      expected.push_back(std::to_string(i + 1) + "|" + stations[i].archnum + "|" + stations[i].description +
                         std::string(15 - length, ' '));
    }
  }
  const std::string in = dir.str("wire-in"), out = dir.str("wire-out"), back = dir.str("back.mdb");
  test::SimProcess sim(R6183_SIM_PATH, {"--wire-in", in, "--wire-out", out});
  ASSERT_FALSE(sim.device().empty());
  std::string printed;
  EXPECT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 0) << printed;
  EXPECT_NE(printed.find("Send data completed successfully."), std::string::npos) << printed;
  EXPECT_EQ(test::Ctl(dir, "receive '" + back + "' --port '" + sim.device() + "'", printed), 0) << printed;
  EXPECT_NE(printed.find("Receive Data completed successfully."), std::string::npos) << printed;
  ASSERT_EQ(sim.Stop(), 0);

  std::vector<std::string> reference;
  for (const Station& s : stations) reference.push_back(s.frame);
  EXPECT_EQ(FramesOf(test::ReadFile(in), 'C'), reference);   // what the tool sent
  EXPECT_EQ(FramesOf(test::ReadFile(out), 'C'), reference);  // what the unit sent back
  EXPECT_EQ(ClidRows(back), expected);
  // the transfer's data file shows the descriptions as the operator wrote them
  const std::string rx = test::ReadFile(dir.path() / "rx_data.txt");
  EXPECT_NE(rx.find("\r\nC14" + stations[13].archnum + stations[13].description + stations[13].frame.substr(22) +
                    "\r\n"),
            std::string::npos)
      << rx;
}

// A document with a character the unit cannot show is refused before a byte goes out.
TEST(AccentedTextOverAPty, SendOfTextOutsideTheCodePageIsRefusedBeforeTheLine) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string site = dir.str("site.mdb");
  std::filesystem::copy_file(dir.path() / "DEFAULT", site);
  SQLite::Database(site, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET clid_string = 'Café' WHERE clid_station = 1;"
            "UPDATE Clid SET clid_string = '東京 Office' WHERE clid_station = 5");
  const std::string in = dir.str("wire-in");
  test::SimProcess sim(R6183_SIM_PATH, {"--wire-in", in});
  ASSERT_FALSE(sim.device().empty());
  std::string printed;
  EXPECT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 1);
  EXPECT_NE(printed.find("Station 5 cannot be sent to the R-6183: its description \"東京 Office\" holds \"東\", "
                         "which the R-6183 cannot show."),
            std::string::npos)
      << printed;
  ASSERT_EQ(sim.Stop(), 0);
  EXPECT_EQ(test::ReadFile(in), "");
}

}  // namespace
}  // namespace r6183
