#include "sim/WireTap.h"

#include <stdexcept>

namespace r6183::sim {

namespace {
void OpenCopy(std::ofstream& out, const std::string& path) {
  if (path.empty()) return;
  out.open(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot write " + path);
}
}  // namespace

WireTap::WireTap(SerialLine& line, const std::string& readPath, const std::string& writtenPath) : l_(line) {
  OpenCopy(read_, readPath);
  OpenCopy(written_, writtenPath);
}

void WireTap::Write(std::string_view bytes) {
  l_.Write(bytes);
  if (written_.is_open()) written_.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
}

std::optional<char> WireTap::ReadByte() {
  const auto c = l_.ReadByte();
  if (c && read_.is_open()) read_.put(*c).flush();
  return c;
}

// What is thrown away was read off the wire all the same.
void WireTap::DiscardInput() {
  if (read_.is_open())
    while (auto c = l_.ReadByte()) read_.put(*c);
  read_.flush();
  l_.DiscardInput();
}

}  // namespace r6183::sim
