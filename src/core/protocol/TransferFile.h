#pragma once
// A text file of a transfer ("tx_data.txt", "rx_data.txt", "log_file.txt"), written
// line by line with CR LF. Printing to a file that is not open raises "Bad file name
// or number", as the routines that print expect.
#include <fstream>
#include <string>
#include <string_view>

namespace r6183 {

class TransferFile {
 public:
  // Opens for output, replacing what was there; raises on failure.
  void Open(const std::string& path);
  void Close();
  bool IsOpen() const { return out_.is_open(); }
  void PrintLine(std::string_view text);

 private:
  std::ofstream out_;
};

}  // namespace r6183
