// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace stockbook::databases {

// Little-endian numbers in the bytes of a desktop file. The caller has checked that the bytes are there.
uint16_t WordAt(std::string_view bytes, size_t at);
uint32_t LongAt(std::string_view bytes, size_t at);
uint64_t QuadAt(std::string_view bytes, size_t at);
double DoubleAt(std::string_view bytes, size_t at);

// UTF-16 as UTF-8. Halves of pairs and an odd last byte become U+FFFD.
std::string WideText(std::string_view bytes);
// A text of Jet 4: UTF-16, or after the mark FF FE the form in which one byte stands for a character below U+0100.
std::string CompressibleText(std::string_view bytes);
// Texts of the others, "{…}", and "yyyy-MM-dd HH:mm:ss"; nothing for a number that is no date.
std::string MoneyText(int64_t units);
// `bytes` are the 17 of a decimal column: sign, then four 32-bit words, the highest first.
std::string DecimalText(std::string_view bytes, int scale);
std::string DayText(double days);
std::string UniqueNumberText(std::string_view bytes);
// The shortest decimals that give this number in single precision, as a double: 0.1 stays 0.1.
double FromSingle(float number);

}  // namespace stockbook::databases
