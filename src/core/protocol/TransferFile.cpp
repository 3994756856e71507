#include "protocol/TransferFile.h"

#include "shell/ErrorNumbers.h"

namespace r6183 {

void TransferFile::Open(const std::string& path) {
  Close();
  out_.open(path, std::ios::binary | std::ios::trunc);
  if (!out_) throw RuntimeError(err::PathFileAccessError, "cannot write " + path);
}

void TransferFile::Close() {
  if (out_.is_open()) out_.close();
  out_.clear();
}

void TransferFile::PrintLine(std::string_view text) {
  if (!out_.is_open()) throw RuntimeError(err::BadFileNameOrNumber);
  out_ << text << "\r\n";
  out_.flush();
}

}  // namespace r6183
