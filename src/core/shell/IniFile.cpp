#include "shell/IniFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <vector>

#include "shell/ErrorNumbers.h"
#include "shell/Journal.h"
#include "shell/Labels.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

namespace fs = std::filesystem;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

enum class Kind { Blank, Comment, Section, Entry };

struct Line {
  std::string body;  // without its line end
  std::string eol;   // "\r\n", "\n" or "" for a last line without one
};

struct Parsed {
  Kind kind;
  std::string_view name;  // section name or key, blanks trimmed
  bool hasValue = false;  // an entry with '='
  std::string_view value;
};

Parsed Classify(std::string_view body) {
  const std::string_view t = TrimBlanks(body);
  if (t.empty()) return {Kind::Blank, {}, false, {}};
  if (t.front() == ';') return {Kind::Comment, {}, false, {}};
  if (t.front() == '[') {
    std::string_view name = t.substr(1);
    if (const auto close = name.find(']'); close != std::string_view::npos)
      name = name.substr(0, close);
    return {Kind::Section, TrimBlanks(name), false, {}};
  }
  const auto eq = t.find('=');
  if (eq == std::string_view::npos) return {Kind::Entry, t, false, {}};
  return {Kind::Entry, TrimBlanks(t.substr(0, eq)), true, TrimBlanks(t.substr(eq + 1))};
}

std::vector<Line> SplitLines(std::string_view text) {
  std::vector<Line> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    const auto nl = text.find('\n', start);
    if (nl == std::string_view::npos) {
      lines.push_back({std::string(text.substr(start)), ""});
      break;
    }
    std::string_view body = text.substr(start, nl - start);
    if (!body.empty() && body.back() == '\r') {
      body.remove_suffix(1);
      lines.push_back({std::string(body), "\r\n"});
    } else {
      lines.push_back({std::string(body), "\n"});
    }
    start = nl + 1;
  }
  return lines;
}

// The line end the file uses; a file without any gets CRLF like the older installations.
std::string LineEndStyle(const std::vector<Line>& lines) {
  for (const auto& l : lines)
    if (!l.eol.empty()) return l.eol;
  return "\r\n";
}

bool QuotePair(std::string_view v) {
  return v.size() >= 2 && v.front() == v.back() && (v.front() == '"' || v.front() == '\'');
}

std::string Unquote(std::string_view v) {
  if (QuotePair(v)) v = v.substr(1, v.size() - 2);
  return std::string(v);
}

// A value as it is stored so that a read gives it back: in quotes when a read would
// otherwise lose its blanks at either end, a pair of quotes around it, or a carriage
// return at its end. Anything else is stored as it stands, as earlier installations do.
std::string Stored(std::string_view v) {
  const bool quote = !v.empty() && (IsBlank(v.front()) || IsBlank(v.back()) || v.back() == '\r' || QuotePair(v));
  return quote ? "\"" + std::string(v) + "\"" : std::string(v);
}

enum class ReadResult { Ok, Missing, Failed };

// Reads the whole file; a file that is not there is told apart from one that cannot
// be read, so that a write never replaces a file it could not read.
ReadResult ReadWholeFile(const std::string& path, std::string& out) {
  out.clear();
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT ? ReadResult::Missing : ReadResult::Failed;
  char buf[8192];
  for (;;) {
    const ssize_t n = ::read(fd, buf, sizeof buf);
    if (n == 0) break;
    if (n < 0) {
      if (errno == EINTR) continue;
      ::close(fd);
      return ReadResult::Failed;
    }
    out.append(buf, static_cast<std::size_t>(n));
  }
  ::close(fd);
  return ReadResult::Ok;
}

bool WriteAll(int fd, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  return true;
}

// Writes a temporary file beside `path` and renames it over `path`, so that a
// crash leaves either the old file or the new one.
bool ReplaceFileAtomically(const std::string& given, const std::string& bytes) {
  // a linked settings file keeps its link: the file it points to is replaced
  std::error_code ec;
  const fs::path resolved = fs::is_symlink(given, ec) ? fs::canonical(given, ec) : fs::path(given);
  const std::string path = ec ? given : resolved.string();
  struct stat old {};
  const bool existed = ::stat(path.c_str(), &old) == 0;
  std::string tmp;
  int fd = -1;
  for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
    tmp = path + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
    fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) return false;
  }
  if (fd < 0) return false;
  bool ok = WriteAll(fd, bytes);
  if (ok && existed) ::fchmod(fd, old.st_mode & 07777);
  ok = ok && ::fsync(fd) == 0;
  ok = (::close(fd) == 0) && ok;
  ok = ok && std::rename(tmp.c_str(), path.c_str()) == 0;
  if (!ok) ::unlink(tmp.c_str());
  return ok;
}

}  // namespace

namespace ini {

std::string Lookup(std::string_view text, std::string_view section, std::string_view key) {
  const std::string_view wantSection = TrimBlanks(section);
  const std::string_view wantKey = TrimBlanks(key);
  bool inSection = false;
  bool seen = false;
  for (const auto& line : SplitLines(text)) {
    const Parsed p = Classify(line.body);
    if (p.kind == Kind::Section) {
      if (seen) break;  // only the first section of that name counts
      inSection = EqualsNoCase(p.name, wantSection);
      seen = inSection;
    } else if (inSection && p.kind == Kind::Entry && p.hasValue && EqualsNoCase(p.name, wantKey)) {
      return Unquote(p.value);
    }
  }
  return {};
}

std::string Update(std::string_view text, std::string_view section, std::string_view key,
                   std::string_view value) {
  std::vector<Line> lines = SplitLines(text);
  const std::string eol = LineEndStyle(lines);
  const std::string_view wantSection = TrimBlanks(section);
  const std::string_view wantKey = TrimBlanks(key);

  std::optional<std::size_t> header, lastEntry, keyLine;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Parsed p = Classify(lines[i].body);
    if (p.kind == Kind::Section) {
      if (header) break;
      if (EqualsNoCase(p.name, wantSection)) header = i;
    } else if (header && p.kind == Kind::Entry) {
      lastEntry = i;
      if (p.hasValue && EqualsNoCase(p.name, wantKey)) {
        keyLine = i;
        break;
      }
    }
  }

  const std::string entry = std::string(wantKey) + "=" + Stored(value);
  if (keyLine) {
    const Parsed p = Classify(lines[*keyLine].body);
    lines[*keyLine].body = std::string(p.name) + "=" + Stored(value);
  } else if (header) {
    const std::size_t at = (lastEntry ? *lastEntry : *header) + 1;
    if (lines[at - 1].eol.empty()) lines[at - 1].eol = eol;
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), Line{entry, eol});
  } else {
    if (!lines.empty()) {
      if (lines.back().eol.empty()) lines.back().eol = eol;
      if (Classify(lines.back().body).kind != Kind::Blank) lines.push_back({"", eol});
    }
    lines.push_back({"[" + std::string(wantSection) + "]", eol});
    lines.push_back({entry, eol});
  }

  std::string out;
  out.reserve(text.size() + entry.size() + section.size() + 8);
  for (const auto& l : lines) {
    out += l.body;
    out += l.eol;
  }
  return out;
}

int64_t LeadingInteger(std::string_view text) {
  constexpr int64_t kLimit = int64_t{1} << 40;
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  int64_t n = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
    if (n < kLimit) n = n * 10 + (text[i] - '0');
  return negative ? -n : n;
}

}  // namespace ini

int16_t INIClass::ReadINT_From_INI(const std::string& key) {
  int16_t result = 0;
  step(journal_, Where{labels::INIClass, "ReadINT_From_INI"}, [&] {
    std::string text;
    if (ReadWholeFile(fileName_, text) != ReadResult::Ok) return;
    const int64_t n = ini::LeadingInteger(ini::Lookup(text, sectionName_, key));
    if (n < INT16_MIN || n > INT16_MAX) throw RuntimeError(err::Overflow);
    result = static_cast<int16_t>(n);
  });
  return result;
}

std::string INIClass::ReadString_From_INI(const std::string& key) {
  std::string result;
  step(journal_, Where{labels::INIClass, "ReadString_From_INI"}, [&] {
    std::string text;
    if (ReadWholeFile(fileName_, text) != ReadResult::Ok) return;
    result = LeftChars(ini::Lookup(text, sectionName_, key), kMaxStringChars);
  });
  return result;
}

void INIClass::WriteINI(const std::string& key, const std::string& value) {
  quietly([&] {
    if (fileName_.empty()) return;
    std::string old;
    if (ReadWholeFile(fileName_, old) == ReadResult::Failed) return;
    ReplaceFileAtomically(fileName_, ini::Update(old, sectionName_, key, value));
  });
}

}  // namespace r6183
