#include "protocol/LineText.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <optional>

#include "shell/ErrorNumbers.h"

namespace r6183 {
namespace {

// The C library's own Windows-1252 converter, as the reference for every byte.
std::optional<std::string> LibraryDecoding(unsigned char byte) {
  iconv_t cd = iconv_open("UTF-8", "CP1252");
  if (cd == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  char in[1] = {static_cast<char>(byte)};
  char out[8] = {};
  char* ip = in;
  char* op = out;
  std::size_t il = 1, ol = sizeof out;
  const std::size_t r = iconv(cd, &ip, &il, &op, &ol);
  iconv_close(cd);
  if (r == static_cast<std::size_t>(-1)) return std::nullopt;
  return std::string(out, op);
}

TEST(LineText, EveryPrintableByteOfTheCodePageGoesBothWaysAsTheLibraryDecodesIt) {
  const iconv_t probe = iconv_open("UTF-8", "CP1252");
  ASSERT_NE(probe, reinterpret_cast<iconv_t>(-1)) << "no CP1252 converter";
  iconv_close(probe);
  int printable = 0;
  for (int b = 0x20; b <= 0xFF; ++b) {
    SCOPED_TRACE(b);
    const std::string byte(1, static_cast<char>(b));
    const std::string text = FromLine(byte);
    const auto library = LibraryDecoding(static_cast<unsigned char>(b));
    if (b == 0x7F || (b >= 0x80 && b <= 0x9F && !library)) {
      // DEL and the five bytes the code page leaves undefined come in as controls and
      // never go out again
      EXPECT_FALSE(LineCarries(text));
      EXPECT_EQ(FirstUncarried(text)->kind, Uncarried::Kind::Control);
      continue;
    }
    ++printable;
    ASSERT_TRUE(library.has_value());
    EXPECT_EQ(text, *library);
    EXPECT_EQ(ToLine(text), byte);
  }
  EXPECT_EQ(printable, 95 + 27 + 96);
}

TEST(LineText, FirstUncarriedNamesTheCharacterItsPlaceAndWhy) {
  using K = Uncarried::Kind;
  const struct {
    std::string text;
    std::optional<std::size_t> position;  // nothing: the whole text goes
    K kind;
    std::string shown;
  } cases[] = {
      {"Café crème ½ €5", {}, K::OutsideCodePage, ""},
      {"", {}, K::OutsideCodePage, ""},
      {"Œuvre “Žižek” – 3‰", {}, K::OutsideCodePage, ""},
      {"Room Ω", 6, K::OutsideCodePage, "\"Ω\""},
      {"東京", 1, K::OutsideCodePage, "\"東\""},
      {"ok 😀", 4, K::OutsideCodePage, "\"😀\""},
      {"ab\tc", 3, K::Control, "the control character 09"},
      {"line\rbreak", 5, K::Control, "the control character 0D"},
      {std::string("nul\0x", 5), 4, K::Control, "the control character 00"},
      {"\xC2\x81", 1, K::Control, "the control character 81"},
      {"Caf\xE9", 4, K::NotText, "the byte E9, which is not text"},     // a Latin-1 byte in a document
      {"\xC0\xAF", 1, K::NotText, "the byte C0, which is not text"},     // an overlong form
      {"é\xED\xA0\x80", 2, K::NotText, "the byte ED, which is not text"},  // a surrogate
      {"\xE2\x82", 1, K::NotText, "the byte E2, which is not text"},     // cut short
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto u = FirstUncarried(c.text);
    ASSERT_EQ(u.has_value(), c.position.has_value());
    EXPECT_EQ(LineCarries(c.text), !u);
    if (!u) {
      EXPECT_EQ(FromLine(ToLine(c.text)), c.text);
      continue;
    }
    EXPECT_EQ(u->position, *c.position);
    EXPECT_EQ(u->kind, c.kind);
    EXPECT_EQ(u->Shown(), c.shown);
    try {
      ToLine(c.text);
      ADD_FAILURE() << "converted";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), err::InvalidProcedureCall);
      EXPECT_NE(std::string(e.what()).find(c.shown), std::string::npos) << e.what();
    }
  }
}

// Fields count and cut in characters of the line, which are its bytes.
TEST(LineText, FieldsAreFilledAndCutInCharactersOfTheLine) {
  const struct {
    std::string text;
    std::size_t width;
    std::string bytes;  // empty: refused
  } cases[] = {
      {"Café", 15, "Caf\xE9           "},
      {"ÀÉÎÕÜàéîõüçñßøå", 15, "\xC0\xC9\xCE\xD5\xDC\xE0\xE9\xEE\xF5\xFC\xE7\xF1\xDF\xF8\xE5"},
      {"ÀÉÎÕÜàéîõüçñßøåÆ", 15, "\xC0\xC9\xCE\xD5\xDC\xE0\xE9\xEE\xF5\xFC\xE7\xF1\xDF\xF8\xE5"},
      {"€1", 4, "\x80" "1  "},
      {"Ω", 4, ""},
      {"Fourteen chars Ω", 15, "Fourteen chars "},  // what is cut off needs no carrying
      {"Fourteen charsΩ", 15, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    if (c.bytes.empty()) {
      EXPECT_THROW(LineField(c.text, c.width), RuntimeError);
    } else {
      EXPECT_EQ(LineField(c.text, c.width), c.bytes);
    }
  }
}

TEST(LineText, RefusalOfAnEntryTellsThePersonWhatToChange) {
  EXPECT_EQ(LineTextRefusal("Café Ωmega", "R-6183"),
            "The R-6183 cannot show \"Ω\". Use only the letters, digits and signs of Western European languages.");
  EXPECT_EQ(LineTextRefusal("tab\there", "R-6183"),
            "The R-6183 cannot show the control character 09. Use only the letters, digits and signs of Western "
            "European languages.");
  EXPECT_EQ(LineTextRefusal("Straße “Nord” – 2€", "R-6183"), std::nullopt);
}

}  // namespace
}  // namespace r6183
