#pragma once
// Text on the line. The unit speaks Windows-1252: one character is one byte in a frame,
// in its length and in its checksum. Documents keep UTF-8; text changes code on its way
// into a message (ToLine, LineField) and on its way out of one (FromLine), and nowhere
// else. A message in hand (msg_str) is always in the line's code.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace r6183 {

// A character of a UTF-8 text that the line cannot carry.
struct Uncarried {
  std::string character;  // as it stands in the text: one UTF-8 character, or the stray byte
  std::size_t position = 0;  // 1-based, in characters
  enum class Kind { OutsideCodePage, Control, NotText } kind = Kind::OutsideCodePage;

  // For a message: "Ω" in quotes, "the control character 09", "the byte E9, which is not text".
  std::string Shown() const;
};

// The first character of `text` that the line cannot carry: a character outside the code
// page, a control character (the payload is printable text, and a CR or NUL would end
// the frame), or a byte that is not UTF-8. Nothing when all of it goes.
std::optional<Uncarried> FirstUncarried(std::string_view text);
inline bool LineCarries(std::string_view text) { return !FirstUncarried(text); }

// UTF-8 to the line's bytes, one byte a character. Raises RuntimeError
// (InvalidProcedureCall) naming the first character the line cannot carry.
std::string ToLine(std::string_view text);
// A fixed field of a message: `text` left-aligned, cut or filled with blanks to `width`
// characters, in the line's bytes. Only what is kept must be carried.
std::string LineField(std::string_view text, std::size_t width);
// The line's bytes as UTF-8; every byte is one character. The five bytes that the code
// page leaves undefined come back as the control characters of the same number.
std::string FromLine(std::string_view bytes);

// What an entry field or the command line tells a person whose text holds a character
// that the unit `model` cannot show; nothing when the text can be sent.
std::optional<std::string> LineTextRefusal(std::string_view text, std::string_view model);

}  // namespace r6183
