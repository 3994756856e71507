#pragma once
// A field value as the table store hands it out: Null, a whole number, a real
// number, a text or bytes. Booleans are whole numbers 0 and 1.
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace r6183 {

class Value {
 public:
  using Bytes = std::vector<uint8_t>;
  using Storage = std::variant<std::monostate, int64_t, double, std::string, Bytes>;

  Value() = default;
  Value(std::nullptr_t) {}
  Value(bool b) : v_(int64_t{b ? 1 : 0}) {}
  Value(int i) : v_(int64_t{i}) {}
  Value(long i) : v_(int64_t{i}) {}
  Value(long long i) : v_(int64_t{i}) {}
  Value(unsigned i) : v_(int64_t{i}) {}
  Value(double d) : v_(d) {}
  Value(std::string s) : v_(std::move(s)) {}
  Value(std::string_view s) : v_(std::string(s)) {}
  Value(const char* s) : v_(std::string(s)) {}
  Value(Bytes b) : v_(std::move(b)) {}

  bool IsNull() const { return std::holds_alternative<std::monostate>(v_); }
  bool IsInteger() const { return std::holds_alternative<int64_t>(v_); }
  bool IsReal() const { return std::holds_alternative<double>(v_); }
  bool IsNumber() const { return IsInteger() || IsReal(); }
  bool IsText() const { return std::holds_alternative<std::string>(v_); }
  bool IsBytes() const { return std::holds_alternative<Bytes>(v_); }

  int64_t Integer() const { return std::get<int64_t>(v_); }
  double Real() const { return std::get<double>(v_); }
  const std::string& Text() const { return std::get<std::string>(v_); }
  const Bytes& ByteData() const { return std::get<Bytes>(v_); }
  const Storage& Raw() const { return v_; }

  bool operator==(const Value&) const = default;

 private:
  Storage v_;
};

}  // namespace r6183
