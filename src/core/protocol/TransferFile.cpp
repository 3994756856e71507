#include "protocol/TransferFile.h"

#include <cstdio>

#include "protocol/LineText.h"
#include "shell/ErrorNumbers.h"
#include "shell/Session.h"

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
  out_ << FromLine(text) << "\r\n";
  out_.flush();
}

void TransferFile::Rewrite(Session& s, const std::string& name) {
  Close();
  Open(s.appDir().PathOf(name));
  PrintLine(TransferFileHeader(s));
}

std::string TransferFileHeader(Session& s) {
  const LocalDateTime t = s.clock().Now();
  char buf[64];
  std::snprintf(buf, sizeof buf, "Date - Time - %02d/%02d/%04d %02d:%02d:%02d", t.month, t.day, t.year, t.hour,
                t.minute, t.second);
  return buf;
}

}  // namespace r6183
