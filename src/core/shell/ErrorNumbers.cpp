#include "shell/ErrorNumbers.h"

#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <utility>

namespace r6183 {

namespace {
struct ErrorText {
  int16_t number;
  const char* text;
};

constexpr std::array kErrorTexts{
    ErrorText{err::InvalidProcedureCall, "Invalid procedure call or argument"},
    ErrorText{err::Overflow, "Overflow"},
    ErrorText{err::OutOfMemory, "Out of memory"},
    ErrorText{err::SubscriptOutOfRange, "Subscript out of range"},
    ErrorText{err::TypeMismatch, "Type mismatch"},
    ErrorText{err::BadFileNameOrNumber, "Bad file name or number"},
    ErrorText{err::FileNotFound, "File not found"},
    ErrorText{err::FileAlreadyOpen, "File already open"},
    ErrorText{err::DeviceIoError, "Device I/O error"},
    ErrorText{err::FileAlreadyExists, "File already exists"},
    ErrorText{err::DiskFull, "Disk full"},
    ErrorText{err::PermissionDenied, "Permission denied"},
    ErrorText{err::PathFileAccessError, "Path/File access error"},
    ErrorText{err::PathNotFound, "Path not found"},
    ErrorText{err::ObjectNotSet, "Object variable or With block variable not set"},
    ErrorText{err::InvalidUseOfNull, "Invalid use of Null"},
    ErrorText{err::UpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit."},
    ErrorText{err::NoCurrentRecord, "No current record."},
    ErrorText{err::CannotFindFile, "Couldn't find file."},
    ErrorText{err::ReadOnlyObject, "Couldn't update; database or object is read-only."},
    ErrorText{err::SyntaxError, "Syntax error in query expression."},
    ErrorText{err::TableNotFound, "Couldn't find the input table or query."},
    ErrorText{err::FieldTooSmall, "The field is too small to accept the amount of data you attempted to add."},
    ErrorText{err::FieldNotUpdatable, "Field can't be updated."},
    ErrorText{err::RecordDeleted, "Record is deleted."},
    ErrorText{err::InvalidBookmark, "Not a valid bookmark."},
    ErrorText{err::CharactersAfterStatement, "Characters found after end of SQL statement."},
    ErrorText{err::FileInUse, "Couldn't use the file; file already in use."},
    ErrorText{err::ObjectInvalid, "Object invalid or no longer set."},
    ErrorText{err::RecordLockedSave, "Couldn't save; currently locked by another user."},
    ErrorText{err::RecordLockedUpdate, "Couldn't update; currently locked by another user."},
    ErrorText{err::ItemNotFound, "Item not found in this collection."},
    ErrorText{err::NotADatabase, "Unrecognized database format."},
    ErrorText{err::DataTypeConversion, "Data type conversion error."},
    ErrorText{err::DatabaseEngineError, "The database engine reported an error."},
    ErrorText{err::PortNotOpen, "Operation valid only when the port is open"},
    ErrorText{err::InvalidRowValue, "Invalid Row value"},
    ErrorText{err::InvalidColValue, "Invalid Col value"},
};

int16_t NumberForSqliteCode(int code) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return err::RecordLockedUpdate;
    case SQLITE_CANTOPEN:
      return err::CannotFindFile;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return err::NotADatabase;
    case SQLITE_READONLY:
      return err::ReadOnlyObject;
    case SQLITE_FULL:
      return err::DiskFull;
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return err::PermissionDenied;
    case SQLITE_IOERR:
      return err::DeviceIoError;
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
      return err::DataTypeConversion;
    default:
      return err::DatabaseEngineError;
  }
}
}  // namespace

std::string StandardErrorText(int16_t number) {
  for (const auto& e : kErrorTexts)
    if (e.number == number) return e.text;
  return "Application-defined or object-defined error";
}

ErrorInfo DescribeCurrentException() {
  try {
    throw;
  } catch (const RuntimeError& e) {
    return {e.number(), e.what()};
  } catch (const SQLite::Exception& e) {
    return {NumberForSqliteCode(e.getErrorCode()), e.what()};
  } catch (const std::filesystem::filesystem_error& e) {
    const auto code = e.code();
    int16_t n = err::PathFileAccessError;
    if (code == std::errc::no_such_file_or_directory) n = err::FileNotFound;
    else if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted)
      n = err::PermissionDenied;
    else if (code == std::errc::no_space_on_device) n = err::DiskFull;
    return {n, e.what()};
  } catch (const std::bad_alloc&) {
    return {err::OutOfMemory, StandardErrorText(err::OutOfMemory)};
  } catch (const std::out_of_range& e) {
    return {err::SubscriptOutOfRange, e.what()};
  } catch (const std::exception& e) {
    return {err::ApplicationDefined, e.what()};
  } catch (...) {
    return {err::ApplicationDefined, {}};
  }
}

}  // namespace r6183
