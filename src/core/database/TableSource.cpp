#include "database/TableSource.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "database/Database.h"
#include "shell/ErrorNumbers.h"

namespace r6183 {

namespace {

constexpr std::array<unsigned char, 20> kJetSignature = {
    0x00, 0x01, 0x00, 0x00, 'S', 't', 'a', 'n', 'd', 'a', 'r', 'd', ' ', 'J', 'e', 't', ' ', 'D', 'B', 0x00};
constexpr std::size_t kJetVersionOffset = 0x14;
constexpr char kSqliteMagic[] = "SQLite format 3";  // 16 bytes with the terminating zero
constexpr std::size_t kSqliteHeaderSize = 100;
constexpr std::size_t kSqliteAppIdOffset = 68;

}  // namespace

FileFormat DetectFormat(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return FileFormat::Missing;
  const auto size = std::filesystem::file_size(path, ec);
  if (ec) return FileFormat::Unreadable;

  std::ifstream in(path, std::ios::binary);
  if (!in) return FileFormat::Unreadable;
  std::array<unsigned char, kSqliteHeaderSize> head{};
  in.read(reinterpret_cast<char*>(head.data()), head.size());
  const auto got = static_cast<std::size_t>(in.gcount());
  if (in.bad()) return FileFormat::Unreadable;

  if (got > kJetVersionOffset && std::memcmp(head.data(), kJetSignature.data(), kJetSignature.size()) == 0) {
    const bool jet3 = head[kJetVersionOffset] == 0;
    // A file shorter than one page is a damaged header, not a database.
    if (size < (jet3 ? 2048u : 4096u)) return FileFormat::Unknown;
    return jet3 ? FileFormat::Jet3 : FileFormat::Jet4;
  }
  if (got == kSqliteHeaderSize && std::memcmp(head.data(), kSqliteMagic, sizeof kSqliteMagic) == 0) {
    const auto* id = &head[kSqliteAppIdOffset];
    const uint32_t appId = uint32_t{id[0]} << 24 | uint32_t{id[1]} << 16 | uint32_t{id[2]} << 8 | id[3];
    return appId == static_cast<uint32_t>(kDocumentApplicationId) ? FileFormat::Document
                                                                  : FileFormat::ForeignSqlite;
  }
  return FileFormat::Unknown;
}

const char* FormatName(FileFormat f) {
  switch (f) {
    case FileFormat::Missing: return "missing";
    case FileFormat::Unreadable: return "unreadable";
    case FileFormat::Jet3: return "Jet 3.0";
    case FileFormat::Jet4: return "Jet 4.0";
    case FileFormat::Document: return "document";
    case FileFormat::ForeignSqlite: return "SQLite";
    case FileFormat::Unknown: break;
  }
  return "unknown";
}

std::unique_ptr<TableSource> OpenTableSource(const std::string& path) {
  switch (DetectFormat(path)) {
    case FileFormat::Jet3:
    case FileFormat::Jet4: return OpenJetSource(path);
    case FileFormat::Document:
    case FileFormat::ForeignSqlite: return OpenSqliteSource(path);
    case FileFormat::Missing: throw RuntimeError(err::FileNotFound);
    case FileFormat::Unreadable: throw RuntimeError(err::PermissionDenied);
    case FileFormat::Unknown: break;
  }
  throw RuntimeError(err::NotADatabase);
}

}  // namespace r6183
