#include <charconv>

#include "protocol/SerialLine.h"
#include "shell/Clock.h"
#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

LineSettings LineSettings::Parse(std::string_view text) {
  LineSettings s;
  std::vector<std::string> parts;
  std::string part;
  for (char c : text) {
    if (c == ',') {
      parts.push_back(Trim(part));
      part.clear();
    } else {
      part += c;
    }
  }
  parts.push_back(Trim(part));
  auto number = [](const std::string& p) {
    int v = 0;
    const auto r = std::from_chars(p.data(), p.data() + p.size(), v);
    if (r.ec != std::errc() || r.ptr != p.data() + p.size()) throw RuntimeError(err::InvalidProcedureCall);
    return v;
  };
  if (parts.size() != 4 || parts[1].size() != 1) throw RuntimeError(err::InvalidProcedureCall);
  s.baud = number(parts[0]);
  s.parity = ToLower(parts[1])[0];
  s.dataBits = number(parts[2]);
  s.stopBits = number(parts[3]);
  if (std::string_view("noems").find(s.parity) == std::string_view::npos || s.dataBits < 5 || s.dataBits > 8 ||
      s.stopBits < 1 || s.stopBits > 2 || s.baud <= 0)
    throw RuntimeError(err::InvalidProcedureCall);
  return s;
}

std::pair<std::unique_ptr<MemoryLine>, std::unique_ptr<MemoryLine>> MemoryLine::Pair(Clock& clock) {
  std::unique_ptr<MemoryLine> a(new MemoryLine(clock)), b(new MemoryLine(clock));
  a->peer_ = b.get();
  b->peer_ = a.get();
  return {std::move(a), std::move(b)};
}

void MemoryLine::Open(const LineSettings&, Handshake) {
  if (failOpen_) throw RuntimeError(err::PermissionDenied, "the port is in use");
  open_ = true;
  ++opens_;
}

void MemoryLine::Write(std::string_view bytes) {
  if (!open_) throw RuntimeError(err::InvalidProcedureCall, "the port is not open");
  written_.append(bytes);
  if (!peer_) return;
  for (char c : bytes)
    if (c != '\0') peer_->input_.push_back(c);  // the receiving end drops NUL bytes
}

std::optional<char> MemoryLine::ReadByte() {
  if (input_.empty()) return std::nullopt;
  const char c = input_.front();
  input_.pop_front();
  return c;
}

bool MemoryLine::WaitForInput(std::chrono::milliseconds timeout) {
  if (!input_.empty()) return true;
  clock_.Pause(timeout);
  return !input_.empty();
}

}  // namespace r6183
