// Tables of a Jet 3 or Jet 4 database, through libmdb. The file may be damaged: the
// header is checked before libmdb sees the file, the table list is read from the
// catalogue table directly, page maps are checked before libmdb follows them, and
// row counts, memo and OLE lengths are compared with what the file declares.
#include "database/JetSource.h"

#include <glib.h>  // before mdbtools.h, outside its extern "C"
#include <mdbtools.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

constexpr unsigned long kCatalogPage = 2;  // the table definition of MSysObjects
constexpr int kLocalTable = 1;             // MSysObjects.Type of a table in the file
constexpr long kSystemFlags = 0x80000002;  // MSysObjects.Flags bits of system tables
constexpr std::size_t kOleHeader = 12;
constexpr int kOffsetMask = 0x1FFF;  // of a row's offset on its page
// Room for a text of 255 characters of three bytes each, a number or a key as text.
constexpr std::size_t kShortBind = 1024;

struct HandleCloser {
  void operator()(MdbHandle* h) const { mdb_close(h); }
};
using Handle = std::unique_ptr<MdbHandle, HandleCloser>;

struct TableFreer {
  void operator()(MdbTableDef* t) const { mdb_free_tabledef(t); }
};
using TableDef = std::unique_ptr<MdbTableDef, TableFreer>;

[[noreturn]] void Damaged(const std::string& what) {
  throw RuntimeError(err::NotADatabase, "The file is damaged: " + what);
}

const char* TypeName(int type) {
  switch (type) {
    case MDB_BOOL: return "boolean";
    case MDB_BYTE: return "byte";
    case MDB_INT: return "integer";
    case MDB_LONGINT: return "long";
    case MDB_MONEY: return "currency";
    case MDB_FLOAT: return "float";
    case MDB_DOUBLE: return "double";
    case MDB_DATETIME: return "datetime";
    case MDB_BINARY: return "binary";
    case MDB_TEXT: return "text";
    case MDB_OLE: return "ole";
    case MDB_MEMO: return "memo";
    case MDB_REPID: return "guid";
    case MDB_NUMERIC: return "numeric";
    case MDB_COMPLEX: return "complex";
    default: return "unknown";
  }
}

// Types whose values libmdb converts for us into the bound buffer.
bool Converted(int type) {
  return type == MDB_TEXT || type == MDB_MEMO || type == MDB_OLE || type == MDB_NUMERIC || type == MDB_REPID;
}

// Bytes a fixed-size value needs on the row.
std::size_t FixedSize(int type) {
  switch (type) {
    case MDB_BYTE: return 1;
    case MDB_INT: return 2;
    case MDB_LONGINT:
    case MDB_COMPLEX:
    case MDB_FLOAT: return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME: return 8;
    default: return 0;
  }
}

template <typename T>
T Load(const unsigned char* p) {
  T v;
  std::memcpy(&v, p, sizeof v);  // little-endian, as the file and the machine are
  return v;
}

MdbColumn* ColumnAt(MdbTableDef* t, unsigned i) {
  return static_cast<MdbColumn*>(g_ptr_array_index(t->columns, i));
}

// libmdb follows a table's page map unchecked: a missing map crashes it, and a map
// page past the end of the file ends the process.
bool PageMapSound(const MdbTableDef& t, unsigned long pageCount) {
  const unsigned char* map = t.usage_map;
  if (!map || t.map_sz < 5) return false;
  if (map[0] == 0) return true;  // a bitmap in the row itself
  if (map[0] != 1) return false;
  for (std::size_t off = 1; off + 4 <= t.map_sz; off += 4)  // numbers of bitmap pages
    if (Load<uint32_t>(map + off) >= pageCount) return false;
  return true;
}

// Reads one table through its definition page. Raises 3343 when the page isn't one.
struct OpenedTable {
  MdbCatalogEntry entry{};  // must outlive the table definition
  TableDef def;
};

std::unique_ptr<OpenedTable> OpenTable(MdbHandle* mdb, const std::string& name, unsigned long page,
                                       unsigned long pageCount) {
  if (page == 0 || page >= pageCount) Damaged("table " + name + " lies outside the file");
  auto t = std::make_unique<OpenedTable>();
  t->entry.mdb = mdb;
  t->entry.object_type = MDB_TABLE;
  t->entry.table_pg = page;
  std::snprintf(t->entry.object_name, sizeof t->entry.object_name, "%s", name.c_str());
  t->def.reset(mdb_read_table(&t->entry));
  if (!t->def) Damaged("no definition of table " + name);
  if (!PageMapSound(*t->def, pageCount)) Damaged("the page map of table " + name);
  if (!mdb_read_columns(t->def.get()) || !t->def->columns || t->def->columns->len != t->def->num_cols)
    Damaged("the columns of table " + name + " can't be read");
  return t;
}

// The rows of a table; columns not wanted come out as Null and are not read.
class RowReader {
 public:
  // `limit`: the most a memo or OLE value may take.
  RowReader(MdbHandle* mdb, OpenedTable& table, std::vector<bool> want, std::size_t limit)
      : mdb_(mdb), t_(table.def.get()), name_(table.entry.object_name), want_(std::move(want)) {
    const unsigned n = t_->num_cols;
    want_.resize(n, false);
    // libmdb fills every bound buffer up to one size. Only memo and OLE values are long;
    // text, numbers and keys fit kShortBind, so a table of many text columns doesn't take
    // a megabyte for each of them.
    bool longValues = false;
    for (unsigned i = 0; i < n; ++i) {
      const int type = ColumnAt(t_, i)->col_type;
      if (want_[i] && (type == MDB_MEMO || type == MDB_OLE)) longValues = true;
    }
    bindSize_ = longValues ? limit : std::min(limit, kShortBind);
    mdb_set_bind_size(mdb_, bindSize_);
    buffers_.resize(n);
    lengths_.assign(n, 0);
    for (unsigned i = 0; i < n; ++i) {
      cols_.push_back(ColumnAt(t_, i));
      if (!want_[i] || !Converted(cols_[i]->col_type)) continue;
      // an OLE chunk is a whole row of another page, whatever the limit
      const std::size_t size =
          cols_[i]->col_type == MDB_OLE ? std::max<std::size_t>(bindSize_, MDB_PGSIZE) : bindSize_;
      buffers_[i].reset(new char[size]);
      buffers_[i][0] = '\0';
      if (mdb_bind_column(t_, static_cast<int>(i) + 1, buffers_[i].get(), &lengths_[i]) == -1)
        Damaged("column " + std::string(cols_[i]->name) + " of table " + name_);
    }
    // room for every column a row may store, deleted ones included
    fields_.resize(std::max<std::size_t>(n, MDB_MAX_COLS) + 1);
  }

  std::vector<std::vector<Value>> ReadAll() {
    std::vector<std::vector<Value>> rows;
    mdb_rewind_table(t_);
    while (mdb_fetch_row(t_)) rows.push_back(Current());
    // A file cut short ends the scan early without an error.
    if (rows.size() < t_->num_rows)
      Damaged("table " + name_ + " is truncated: " + std::to_string(rows.size()) + " of " +
              std::to_string(t_->num_rows) + " rows could be read");
    return rows;
  }

 private:
  std::vector<Value> Current() {
    // The row libmdb just read, taken apart once more for its null flags and raw values.
    const auto pageSize = static_cast<std::size_t>(mdb_->fmt->pg_size);
    int start = 0;
    size_t len = 0;
    if (t_->cur_row == 0 || mdb_find_row(mdb_, static_cast<int>(t_->cur_row) - 1, &start, &len) != 0)
      Damaged("a row of table " + name_);
    start &= kOffsetMask;  // the high bits flag deleted and moved rows
    if (static_cast<std::size_t>(start) + len > pageSize || mdb_crack_row(t_, start, len, fields_.data()) < 0)
      Damaged("a row of table " + name_);

    std::vector<Value> row(cols_.size());
    std::vector<std::pair<unsigned, std::array<unsigned char, kOleHeader>>> oles;
    for (unsigned i = 0; i < cols_.size(); ++i) {
      if (!want_[i]) continue;
      const MdbField& f = fields_[i];
      const int type = cols_[i]->col_type;
      if (f.colnum != static_cast<int>(i)) Damaged("a row of table " + name_);
      if (type == MDB_BOOL) {  // kept in the null mask: a set bit is true
        row[i] = Value(!f.is_null);
        continue;
      }
      if (f.is_null) continue;
      const auto siz = static_cast<std::size_t>(std::max(f.siz, 0));
      if (f.start < 0 || static_cast<std::size_t>(f.start) + siz > pageSize || siz < FixedSize(type))
        Damaged("a value of table " + name_);
      const unsigned char* p = mdb_->pg_buf + f.start;
      switch (type) {
        case MDB_BYTE: row[i] = Value(int{p[0]}); break;
        case MDB_INT: row[i] = Value(int{Load<int16_t>(p)}); break;
        case MDB_LONGINT:
        case MDB_COMPLEX: row[i] = Value(int{Load<int32_t>(p)}); break;
        case MDB_MONEY: row[i] = Value(static_cast<double>(Load<int64_t>(p)) / 10000.0); break;
        case MDB_FLOAT: row[i] = Value(double{Load<float>(p)}); break;
        case MDB_DOUBLE: row[i] = Value(Load<double>(p)); break;
        case MDB_DATETIME: row[i] = Value(jet::DateText(Load<double>(p))); break;
        case MDB_TEXT:
        case MDB_REPID: row[i] = Value(Bound(i)); break;
        case MDB_MEMO: {
          // Each three bytes stored give at least one byte of text; far less means the
          // pages of the memo ran out.
          std::string text = Bound(i);
          if (siz < kOleHeader || text.size() * 3 + 2 < (Load<uint32_t>(p) & 0x3FFFFFFFu))
            Damaged("a memo of table " + name_ + " is cut short");
          row[i] = Value(std::move(text));
          break;
        }
        case MDB_NUMERIC: row[i] = Value(std::strtod(Bound(i).c_str(), nullptr)); break;
        case MDB_OLE:
          if (siz < kOleHeader) {
            row[i] = Value(Value::Bytes{});
          } else {
            oles.emplace_back(i, std::array<unsigned char, kOleHeader>{});
            std::memcpy(oles.back().second.data(), p, kOleHeader);
          }
          break;
        default: row[i] = Value(Value::Bytes(p, p + siz)); break;  // binary and anything unknown
      }
    }
    // OLE data lies on other pages: read it once the row's own page is done with.
    for (auto& [i, header] : oles) row[i] = Value(Ole(i, header));
    return row;
  }

  std::string Bound(unsigned i) const {
    const auto n = static_cast<std::size_t>(std::max(lengths_[i], 0));
    // libmdb stops at the buffer's end; a value that long may have been cut.
    if (n + 4 >= bindSize_)
      throw RuntimeError(err::FieldTooSmall,
                         "A value of " + name_ + "." + cols_[i]->name + " is longer than the reader takes");
    return std::string(buffers_[i].get(), std::min(n, strnlen(buffers_[i].get(), bindSize_)));
  }

  // The chunks of an OLE value, no more than its header declares.
  Value::Bytes Ole(unsigned i, std::array<unsigned char, kOleHeader>& header) {
    const std::size_t declared = Load<uint32_t>(header.data()) & 0x3FFFFFFFu;
    Value::Bytes data;
    MdbColumn* col = cols_[i];
    const char* chunk = buffers_[i].get();
    std::size_t n = mdb_ole_read(mdb_, col, header.data(), bindSize_);
    while (n > 0) {
      if (data.size() + n > declared) Damaged("an OLE value of table " + name_);
      data.insert(data.end(), chunk, chunk + n);
      n = mdb_ole_read_next(mdb_, col, header.data());
    }
    if (data.size() != declared) Damaged("an OLE value of table " + name_ + " is cut short");
    return data;
  }

  MdbHandle* mdb_;
  MdbTableDef* t_;
  std::string name_;
  std::vector<bool> want_;
  std::size_t bindSize_ = 0;
  std::vector<MdbColumn*> cols_;
  std::vector<std::unique_ptr<char[]>> buffers_;
  std::vector<int> lengths_;
  std::vector<MdbField> fields_;
};

struct CatalogEntry {
  std::string name;
  unsigned long page = 0;
  bool system = false;
};

class JetSource : public TableSource {
 public:
  JetSource(Handle mdb, std::uintmax_t fileSize, std::size_t bindSize)
      : mdb_(std::move(mdb)), bindSize_(bindSize) {
    pageCount_ = static_cast<unsigned long>(fileSize / static_cast<std::uintmax_t>(mdb_->fmt->pg_size));
    ReadCatalog();
  }

  // User tables and the system tables named MSys...: what the import sees. Other
  // system tables (the hidden data of complex columns) are left out.
  std::vector<std::string> TableNames() override {
    std::vector<std::string> names;
    for (const auto& e : tables_)
      if (!e.system || StartsWithNoCase(e.name, "MSys")) names.push_back(e.name);
    return names;
  }

  SourceTable ReadTable(const std::string& name) override {
    auto found = std::find_if(tables_.begin(), tables_.end(), [&](auto& e) { return e.name == name; });
    if (found == tables_.end())
      found =
          std::find_if(tables_.begin(), tables_.end(), [&](auto& e) { return EqualsNoCase(e.name, name); });
    if (found == tables_.end()) throw RuntimeError(err::TableNotFound);

    auto t = OpenTable(mdb_.get(), found->name, found->page, pageCount_);
    SourceTable out;
    out.name = found->name;
    for (unsigned i = 0; i < t->def->num_cols; ++i) {
      const MdbColumn* c = ColumnAt(t->def.get(), i);
      out.columns.push_back({c->name, TypeName(c->col_type), c->col_size});
    }
    out.rows = RowReader(mdb_.get(), *t, std::vector<bool>(out.columns.size(), true), bindSize_).ReadAll();
    return out;
  }

 private:
  static bool StartsWithNoCase(const std::string& s, std::string_view prefix) {
    return s.size() >= prefix.size() && EqualsNoCase(std::string_view(s).substr(0, prefix.size()), prefix);
  }

  void ReadCatalog() {
    auto t = OpenTable(mdb_.get(), "MSysObjects", kCatalogPage, pageCount_);
    int id = -1, name = -1, type = -1, flags = -1;
    std::vector<bool> want(t->def->num_cols, false);
    for (unsigned i = 0; i < t->def->num_cols; ++i) {
      const std::string_view n = ColumnAt(t->def.get(), i)->name;
      int* slot = n == "Id"      ? &id
                  : n == "Name"  ? &name
                  : n == "Type"  ? &type
                  : n == "Flags" ? &flags
                                 : nullptr;
      if (!slot) continue;
      *slot = static_cast<int>(i);
      want[i] = true;
    }
    if (id < 0 || name < 0 || type < 0 || flags < 0) Damaged("the catalogue lacks a column");

    for (const auto& row : RowReader(mdb_.get(), *t, want, bindSize_).ReadAll()) {
      const Value &vId = row[id], &vName = row[name], &vType = row[type], &vFlags = row[flags];
      if (!vType.IsInteger() || vType.Integer() != kLocalTable || !vId.IsInteger() || !vName.IsText())
        continue;
      const int64_t f = vFlags.IsInteger() ? vFlags.Integer() : 0;
      tables_.push_back(
          {vName.Text(), static_cast<unsigned long>(vId.Integer() & 0x00FFFFFF), (f & kSystemFlags) != 0});
    }
  }

  Handle mdb_;
  std::size_t bindSize_;
  unsigned long pageCount_ = 0;
  std::vector<CatalogEntry> tables_;  // catalogue order
};

}  // namespace

namespace jet {

std::string DateText(double days) {
  // The engine keeps dates within these years; anything else is a damaged value.
  if (!std::isfinite(days) || days < -657434.0 || days >= 2958466.0)
    throw RuntimeError(err::DataTypeConversion, "A date lies outside the years 100 to 9999");
  const double whole = std::trunc(days);
  long long day = static_cast<long long>(whole);
  long long secs = std::llround(std::fabs(days - whole) * 86400.0);
  if (secs >= 86400) {  // rounded up to the next midnight
    secs -= 86400;
    ++day;
  }
  // Civil date from days since 1970-01-01 (25569 days after the Jet epoch).
  long long z = day - 25569 + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const long long d = doy - (153 * mp + 2) / 5 + 1;
  const long long m = mp < 10 ? mp + 3 : mp - 9;
  const long long y = yoe + era * 400 + (m <= 2 ? 1 : 0);
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(y), static_cast<int>(m),
                static_cast<int>(d), static_cast<int>(secs / 3600), static_cast<int>(secs / 60 % 60),
                static_cast<int>(secs % 60));
  return text;
}

std::unique_ptr<TableSource> Open(const std::string& path, std::size_t bindSize) {
  const FileFormat format = DetectFormat(path);
  if (format == FileFormat::Missing) throw RuntimeError(err::FileNotFound);
  if (format == FileFormat::Unreadable) throw RuntimeError(err::PermissionDenied);
  // libmdb would "open" any file, even one of zeros: only a Jet header gets this far.
  if (format != FileFormat::Jet3 && format != FileFormat::Jet4) throw RuntimeError(err::NotADatabase);
  std::error_code ec;
  const auto size = std::filesystem::file_size(path, ec);
  if (ec) throw RuntimeError(err::PermissionDenied);

  Handle mdb(mdb_open(path.c_str(), MDB_NOFLAGS));
  if (!mdb) throw RuntimeError(err::NotADatabase);
  return std::make_unique<JetSource>(std::move(mdb), size, bindSize);
}

}  // namespace jet

std::unique_ptr<TableSource> OpenJetSource(const std::string& path) {
  return jet::Open(path, jet::kBindSize);
}

}  // namespace r6183
