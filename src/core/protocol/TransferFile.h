#pragma once
// A text file of a transfer ("tx_data.txt", "rx_data.txt", "log_file.txt"), written
// line by line with CR LF, in UTF-8 for the operator's log viewer. What is printed is
// the line's text (frames, msg_str) among our own plain ASCII words, so every line is
// turned from the line's code page as it is written. Printing to a file that is not open raises "Bad file name
// or number", as the routines that print expect.
#include <fstream>
#include <string>
#include <string_view>

namespace r6183 {

class Session;

class TransferFile {
 public:
  // Opens for output, replacing what was there; raises on failure.
  void Open(const std::string& path);
  void Close();
  bool IsOpen() const { return out_.is_open(); }
  void PrintLine(std::string_view text);
  // Closes the file, rewrites `name` in the application directory and prints the first
  // line "Date - Time - " with the present date and time. Raises on failure.
  void Rewrite(Session& s, const std::string& name);

 private:
  std::ofstream out_;
};

// "Date - Time - " and the present date and time: the first line of a transfer's files.
std::string TransferFileHeader(Session& s);

}  // namespace r6183
