#pragma once
// The conversions of the old runtime that the tool's rules rely on, in one place:
// the numeric value of a text ("9600/ARQ" is 9600, a letter is 0), the true/false of
// a field, and the checked conversions that raise Type mismatch, Overflow or
// Invalid use of Null as the runtime did.
#include <cstdint>
#include <string>
#include <string_view>

#include "shell/Value.h"

namespace r6183 {

// Numeric value of the leading number in a text: blanks, tabs and line feeds are
// skipped anywhere; a sign, digits, one decimal point and an exponent (E or D) are
// taken; "&H" and "&O" prefixes read hexadecimal and octal. Anything else ends the
// number; no number at all is 0.
double Val(std::string_view text);

// True when the whole text (blanks around it allowed) is one number.
bool IsNumeric(std::string_view text);

// Round half to even, the rounding of the runtime's integer conversions.
double RoundHalfEven(double d);

// Checked conversions. Null raises 94, a text that is no number raises 13, a value
// out of range raises 6.
int16_t CInt(const Value& v);
int32_t CLng(const Value& v);
uint8_t CByte(const Value& v);
double CDbl(const Value& v);
// True for a non-zero number and for the texts "True" (any case) and non-zero
// numbers; "False" and zero are false; Null raises 94, other texts 13.
bool CBool(const Value& v);
// Text of a value: whole numbers without a point, reals in their shortest form,
// Null raises 94.
std::string CStr(const Value& v);

// The field as a condition: Null counts as false, as in an If on a Null field.
bool IsTrue(const Value& v);
// The field as text, Null as empty: the "field & """ idiom.
std::string TextOf(const Value& v);
// The numeric value of a field: numbers as they are, texts by Val, Null as 0.
double NumberOf(const Value& v);

}  // namespace r6183
