#pragma once
// The settings file: a private-profile INI file read and written key by key, the
// file opened afresh at each call. Sections and keys match without regard to case;
// a missing file, section or key reads as 0 or as empty text. Writing keeps every
// other byte of the file as it was.
#include <cstdint>
#include <string>
#include <string_view>

namespace r6183 {

class Journal;

class INIClass {
 public:
  // The longest text a read gives back (the rest of a longer value is cut).
  static constexpr std::size_t kMaxStringChars = 127;

  explicit INIClass(Journal& journal) : journal_(journal) {}

  void SetFileName(const std::string& name) { fileName_ = name; }
  void SetSectionName(const std::string& name) { sectionName_ = name; }

  // The leading decimal number of the value; a number outside 16 bits is journalled
  // as Overflow and reads as 0.
  int16_t ReadINT_From_INI(const std::string& key);
  std::string ReadString_From_INI(const std::string& key);
  // Sets `key` to `value`, adding the key or the section when missing. Failures are
  // passed over.
  void WriteINI(const std::string& key, const std::string& value);

 private:
  Journal& journal_;
  std::string fileName_;
  std::string sectionName_;
};

namespace ini {
// The raw value of `key` in `section` of an INI text: blanks and one pair of
// matching quotes removed; empty when missing.
std::string Lookup(std::string_view text, std::string_view section, std::string_view key);
// The INI text with `key` of `section` set to `value`, everything else unchanged. The
// value is quoted when a read would not give it back otherwise (blanks or a carriage
// return at an end, quotes around it); a line break in it is the caller's fault.
std::string Update(std::string_view text, std::string_view section, std::string_view key,
                   std::string_view value);
// The platform's integer read of a text: blanks, sign, digits up to the first other
// character. Saturates far outside 32 bits.
int64_t LeadingInteger(std::string_view text);
}  // namespace ini

}  // namespace r6183
