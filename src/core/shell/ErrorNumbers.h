#pragma once
// Run-time error numbers and their standard texts. The journal stores the number
// with each entry; an entry logged without a description gets the text from here.
#include <cstdint>
#include <stdexcept>
#include <string>

namespace r6183 {

namespace err {
inline constexpr int16_t InvalidProcedureCall = 5;
inline constexpr int16_t Overflow = 6;
inline constexpr int16_t OutOfMemory = 7;
inline constexpr int16_t SubscriptOutOfRange = 9;
inline constexpr int16_t TypeMismatch = 13;
inline constexpr int16_t ObjectNotSet = 91;
inline constexpr int16_t BadFileNameOrNumber = 52;
inline constexpr int16_t FileNotFound = 53;
inline constexpr int16_t FileAlreadyOpen = 55;
inline constexpr int16_t DeviceIoError = 57;
inline constexpr int16_t FileAlreadyExists = 58;
inline constexpr int16_t DiskFull = 61;
inline constexpr int16_t PermissionDenied = 70;
inline constexpr int16_t PathFileAccessError = 75;
inline constexpr int16_t PathNotFound = 76;
inline constexpr int16_t InvalidUseOfNull = 94;
inline constexpr int16_t NoCurrentRecord = 3021;
inline constexpr int16_t CannotFindFile = 3024;
inline constexpr int16_t ReadOnlyObject = 3027;
inline constexpr int16_t TableNotFound = 3078;
inline constexpr int16_t FieldTooSmall = 3163;
inline constexpr int16_t FieldNotUpdatable = 3164;
inline constexpr int16_t RecordDeleted = 3167;
inline constexpr int16_t InvalidBookmark = 3159;
inline constexpr int16_t CharactersAfterStatement = 3142;
inline constexpr int16_t FileInUse = 3045;
inline constexpr int16_t ObjectInvalid = 3420;
inline constexpr int16_t RecordLockedSave = 3186;  // record locked: retry
inline constexpr int16_t RecordLockedUpdate = 3260;  // record locked: retry
inline constexpr int16_t ItemNotFound = 3265;
inline constexpr int16_t UpdateWithoutEdit = 3020;
inline constexpr int16_t SyntaxError = 3075;
inline constexpr int16_t NotADatabase = 3343;
inline constexpr int16_t DataTypeConversion = 3421;
inline constexpr int16_t DatabaseEngineError = 3709;
inline constexpr int16_t PortNotOpen = 8018;  // a serial port operation on a closed port
inline constexpr int16_t InvalidRowValue = 30009;  // a grid's row outside it
inline constexpr int16_t InvalidColValue = 30010;
inline constexpr int16_t ApplicationDefined = 32000;
}  // namespace err

// The standard text of a run-time error number; unknown numbers get the
// generic "Application-defined or object-defined error".
std::string StandardErrorText(int16_t number);

// True for the two numbers that mean "the record is locked, try again".
inline bool IsLockError(int16_t number) {
  return number == err::RecordLockedSave || number == err::RecordLockedUpdate;
}

// A run-time error with its number, as the journal records it.
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int16_t number, const std::string& description = {})
      : std::runtime_error(description.empty() ? StandardErrorText(number) : description),
        number_(number) {}
  int16_t number() const { return number_; }

 private:
  int16_t number_;
};

// Number and description of whatever a failed step threw, narrowed to 16 bits.
struct ErrorInfo {
  int16_t number = 0;
  std::string description;
};
ErrorInfo DescribeCurrentException();

}  // namespace r6183
