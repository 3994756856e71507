#include "database/Sql.h"

#include <SQLiteCpp/Exception.h>

#include <array>
#include <cctype>
#include <vector>

#include "shell/Text.h"

namespace r6183::sql {

Statement::Statement(sqlite3* db, std::string_view text) : db_(db) {
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v2(db, text.data(), static_cast<int>(text.size()), &stmt_, &tail);
  if (rc != SQLITE_OK) {
    SQLite::Exception e(db, rc);
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
    throw e;
  }
  if (tail) tail_.assign(tail, text.data() + text.size());
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

void Statement::Bind(int index, const Value& v) {
  int rc = SQLITE_OK;
  if (v.IsNull()) rc = sqlite3_bind_null(stmt_, index);
  else if (v.IsInteger()) rc = sqlite3_bind_int64(stmt_, index, v.Integer());
  else if (v.IsReal()) rc = sqlite3_bind_double(stmt_, index, v.Real());
  else if (v.IsText())
    rc = sqlite3_bind_text(stmt_, index, v.Text().data(), static_cast<int>(v.Text().size()),
                           SQLITE_TRANSIENT);
  else if (v.ByteData().empty()) rc = sqlite3_bind_zeroblob(stmt_, index, 0);
  else
    rc = sqlite3_bind_blob(stmt_, index, v.ByteData().data(), static_cast<int>(v.ByteData().size()),
                           SQLITE_TRANSIENT);
  if (rc != SQLITE_OK) throw SQLite::Exception(db_, rc);
}

bool Statement::Step() {
  if (!stmt_) return false;  // blanks or a comment only
  const int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  throw SQLite::Exception(db_, rc);
}

int Statement::ColumnCount() const { return stmt_ ? sqlite3_column_count(stmt_) : 0; }

Value Statement::Column(int index) const {
  switch (sqlite3_column_type(stmt_, index)) {
    case SQLITE_INTEGER:
      return Value(static_cast<long long>(sqlite3_column_int64(stmt_, index)));
    case SQLITE_FLOAT:
      return Value(sqlite3_column_double(stmt_, index));
    case SQLITE_TEXT: {
      const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, index));
      return Value(std::string(p, static_cast<std::size_t>(sqlite3_column_bytes(stmt_, index))));
    }
    case SQLITE_BLOB: {
      const auto* p = static_cast<const uint8_t*>(sqlite3_column_blob(stmt_, index));
      const auto n = static_cast<std::size_t>(sqlite3_column_bytes(stmt_, index));
      return Value(Value::Bytes(p, p + n));
    }
    default:
      return Value();
  }
}

bool Statement::HasMoreStatements() const {
  if (tail_.empty()) return false;
  sqlite3_stmt* next = nullptr;
  const int rc = sqlite3_prepare_v2(db_, tail_.c_str(), -1, &next, nullptr);
  sqlite3_finalize(next);
  return rc != SQLITE_OK || next != nullptr;
}

std::string Quote(std::string_view identifier) {
  std::string r = "\"";
  for (char c : identifier) {
    if (c == '"') r += '"';
    r += c;
  }
  return r + '"';
}

std::string Unquote(std::string_view t) {
  if (t.size() >= 2) {
    const char open = t.front();
    const char close = t.back();
    if (open == '[' && close == ']') return std::string(t.substr(1, t.size() - 2));
    if ((open == '"' || open == '`') && close == open) {
      std::string r;
      for (std::size_t i = 1; i + 1 < t.size(); ++i) {
        r += t[i];
        if (t[i] == open && i + 2 < t.size() && t[i + 1] == open) ++i;
      }
      return r;
    }
  }
  return std::string(t);
}

namespace {

bool IsWordChar(char c) {
  const auto u = static_cast<unsigned char>(c);
  return std::isalnum(u) || c == '_' || c == '$' || u >= 0x80;
}

struct Token {
  std::string_view text;
  std::size_t begin = 0;
  std::size_t end = 0;
  int depth = 0;
  bool word = false;    // bare identifier or keyword
  bool quoted = false;  // quoted identifier
};

std::size_t SkipQuoted(std::string_view s, std::size_t i, char close) {
  for (++i; i < s.size(); ++i) {
    if (s[i] == close) {
      if (close != ']' && i + 1 < s.size() && s[i + 1] == close) {
        ++i;
        continue;
      }
      return i + 1;
    }
  }
  return s.size();
}

std::vector<Token> Lex(std::string_view s) {
  std::vector<Token> out;
  int depth = 0;
  std::size_t i = 0;
  while (i < s.size()) {
    const char c = s[i];
    if (std::isspace(static_cast<unsigned char>(c))) {
      ++i;
      continue;
    }
    if (c == '-' && i + 1 < s.size() && s[i + 1] == '-') {
      const auto nl = s.find('\n', i);
      i = nl == std::string_view::npos ? s.size() : nl + 1;
      continue;
    }
    if (c == '/' && i + 1 < s.size() && s[i + 1] == '*') {
      const auto e = s.find("*/", i + 2);
      i = e == std::string_view::npos ? s.size() : e + 2;
      continue;
    }
    Token t;
    t.begin = i;
    t.depth = depth;
    if (c == '\'') {
      i = SkipQuoted(s, i, '\'');
    } else if (c == '"' || c == '`') {
      i = SkipQuoted(s, i, c);
      t.quoted = true;
    } else if (c == '[') {
      i = SkipQuoted(s, i, ']');
      t.quoted = true;
    } else if (IsWordChar(c)) {
      t.word = !std::isdigit(static_cast<unsigned char>(c));
      while (i < s.size() && IsWordChar(s[i])) ++i;
    } else {
      ++i;
      if (c == '(') ++depth;
      if (c == ')') {
        depth = depth > 0 ? depth - 1 : 0;
        t.depth = depth;
      }
    }
    t.end = i;
    t.text = s.substr(t.begin, t.end - t.begin);
    out.push_back(t);
  }
  return out;
}

bool Is(const Token& t, std::string_view keyword) { return t.word && EqualsNoCase(t.text, keyword); }

template <std::size_t N>
bool IsAny(const Token& t, const std::array<std::string_view, N>& words) {
  for (auto w : words)
    if (Is(t, w)) return true;
  return false;
}

constexpr std::array<std::string_view, 7> kAggregates{"count", "sum", "total", "avg",
                                                      "min",   "max", "group_concat"};
// Words that may follow the table and mean more than a plain select.
constexpr std::array<std::string_view, 13> kNotPlain{
    "JOIN", "INNER", "LEFT",      "RIGHT",  "FULL",   "CROSS",  "NATURAL",
    "GROUP", "HAVING", "UNION", "INTERSECT", "EXCEPT", "WINDOW"};
constexpr std::array<std::string_view, 3> kTailStart{"WHERE", "ORDER", "LIMIT"};

}  // namespace

bool IsSingleName(std::string_view text) {
  const auto toks = Lex(text);
  return toks.size() == 1 && (toks[0].word || toks[0].quoted);
}

std::optional<FieldInfo> FieldFromDeclaredType(std::string_view declared) {
  const std::string d = ToUpper(Trim(declared));
  if (d.empty()) return std::nullopt;
  std::string base = d;
  int size = 0;
  if (const auto paren = d.find('('); paren != std::string::npos) {
    base = Trim(d.substr(0, paren));
    std::size_t i = paren + 1;
    while (i < d.size() && d[i] == ' ') ++i;
    while (i < d.size() && std::isdigit(static_cast<unsigned char>(d[i]))) size = size * 10 + (d[i++] - '0');
  }
  auto any = [&](std::initializer_list<std::string_view> names) {
    for (auto n : names)
      if (base == n) return true;
    return false;
  };
  FieldInfo f;
  if (any({"BOOLEAN", "BOOL", "BIT", "YESNO", "LOGICAL"})) f.type = FieldType::Boolean;
  else if (any({"BYTE", "TINYINT"})) f.type = FieldType::Byte;
  else if (any({"SMALLINT", "SHORT", "INT2"})) f.type = FieldType::Integer;
  else if (any({"INTEGER", "INT", "LONG", "MEDIUMINT", "INT4", "BIGINT", "INT8", "COUNTER"}))
    f.type = FieldType::Long;
  else if (any({"REAL", "DOUBLE", "DOUBLE PRECISION", "FLOAT", "SINGLE", "NUMERIC", "DECIMAL",
                "CURRENCY", "MONEY"}))
    f.type = FieldType::Real;
  else if (any({"MEMO", "CLOB", "LONGTEXT", "NOTE", "LONGCHAR"})) f.type = FieldType::Memo;
  else if (any({"BLOB", "BINARY", "VARBINARY", "LONGBINARY", "IMAGE", "OLEOBJECT"}))
    f.type = FieldType::Binary;
  else if (base.find("CHAR") != std::string::npos || base.find("TEXT") != std::string::npos ||
           base == "STRING") {
    f.type = size > 0 ? FieldType::Text : FieldType::Memo;
    f.size = size > 0 ? size : 0;
  }
  // otherwise by the engine's affinity rules
  else if (base.find("INT") != std::string::npos) f.type = FieldType::Long;
  else if (base.find("BLOB") != std::string::npos) f.type = FieldType::Binary;
  else if (base.find("REAL") != std::string::npos || base.find("FLOA") != std::string::npos ||
           base.find("DOUB") != std::string::npos)
    f.type = FieldType::Real;
  else f.type = FieldType::Memo;
  return f;
}

std::optional<SimpleSelect> AnalyzeSelect(std::string_view text) {
  const auto toks = Lex(text);
  const std::size_t n = toks.size();
  if (n < 4 || !Is(toks[0], "SELECT")) return std::nullopt;
  std::size_t i = 1;
  std::size_t insertAt = toks[0].end;
  if (Is(toks[i], "DISTINCT")) return std::nullopt;
  if (Is(toks[i], "ALL")) insertAt = toks[i++].end;

  std::size_t from = i;
  while (from < n && !(toks[from].depth == 0 && Is(toks[from], "FROM"))) ++from;
  if (from + 1 >= n) return std::nullopt;
  for (std::size_t k = i; k + 1 < from; ++k)
    if (toks[k].depth == 0 && IsAny(toks[k], kAggregates) && toks[k + 1].text == "(")
      return std::nullopt;

  const Token& table = toks[from + 1];
  if (!(table.word || table.quoted)) return std::nullopt;
  std::string qualifier(table.text);
  std::size_t k = from + 2;
  if (k < n && toks[k].text == ".") return std::nullopt;  // another schema
  if (k < n && Is(toks[k], "AS")) {
    if (k + 1 >= n || !(toks[k + 1].word || toks[k + 1].quoted)) return std::nullopt;
    qualifier = std::string(toks[k + 1].text);
    k += 2;
  } else if (k < n && (toks[k].quoted || (toks[k].word && !IsAny(toks[k], kNotPlain) &&
                                          !IsAny(toks[k], kTailStart) && !Is(toks[k], "INDEXED") &&
                                          !Is(toks[k], "NOT")))) {
    qualifier = std::string(toks[k].text);
    ++k;
  }
  if (k < n && toks[k].text != ";" && !IsAny(toks[k], kTailStart)) return std::nullopt;
  for (; k < n; ++k) {
    if (toks[k].depth != 0) continue;
    if (IsAny(toks[k], kNotPlain)) return std::nullopt;
    if (toks[k].text == ";" && k + 1 < n) return std::nullopt;
  }
  return SimpleSelect{Unquote(table.text), qualifier, insertAt};
}

std::string WithRowid(std::string_view text, const SimpleSelect& s) {
  std::string r(text.substr(0, s.insertAt));
  r += ' ';
  r += s.qualifier;
  r += ".rowid,";
  r += text.substr(s.insertAt);
  return r;
}

}  // namespace r6183::sql
