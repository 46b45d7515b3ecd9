// SPDX-License-Identifier: MIT
// Numbers, days and encodings of any bytes: what is read is plain, within its bounds, and the same whole and in pieces.
#include <memory>

#include "base/text.h"
#include "fuzzed_bytes.h"
#include "stockbook/import/import_date.h"
#include "stockbook/import/import_number.h"
#include "stockbook/import/text_encoding.h"

namespace stockbook::fuzz {
namespace {

using app::DecimalMark;
using app::TextEncoding;

// Delivers bytes in pieces of one size.
class EvenPieces : public app::ByteSource {
 public:
  EvenPieces(std::string_view bytes, size_t piece) : bytes_(bytes), piece_(piece) {}
  size_t Read(char* buffer, size_t size) override {
    const size_t count = std::min({piece_, size, bytes_.size()});
    bytes_.copy(buffer, count);
    bytes_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view bytes_;
  size_t piece_;
};

std::string DecodedText(std::string_view bytes, TextEncoding encoding, size_t piece) {
  app::DecodedSource source(std::make_unique<EvenPieces>(bytes, piece), encoding);
  std::string text;
  char buffer[13];
  for (size_t count = source.Read(buffer, sizeof buffer); count > 0; count = source.Read(buffer, sizeof buffer))
    text.append(buffer, count);
  return std::string(source.EncodingName()) + ": " + text;
}

void TryEncoding(std::string_view bytes, TextEncoding encoding, size_t piece) {
  const std::string whole = DecodedText(bytes, encoding, bytes.size() + 1);
  const std::string pieces = DecodedText(bytes, encoding, piece);
  Require(whole == pieces, "a text in pieces is the same text", whole + "\nin pieces\n" + pieces);
  const bool converted = !whole.starts_with("UTF-8: ");
  Require(!converted || whole.find('\0') != std::string::npos || base::IsCleanUtf8(whole),
          "what was converted is well-formed", whole);
}

void TryNumber(std::string_view text, DecimalMark mark) {
  const app::ImportNumber number = app::PlainNumber(text, mark);
  if (number.plain == text) return;
  const size_t begin = number.plain.starts_with('-') ? 1 : 0;
  Require(number.plain.size() > begin, "a number that was found has digits", number.plain);
  const char first = number.plain[begin];
  Require(first == '.' || (first >= '0' && first <= '9'), "a number begins with its digits", number.plain);
  if (number.plain.find_first_not_of("0123456789.-") != std::string::npos) return;
  const app::ImportNumber again = app::PlainNumber(number.plain, DecimalMark::kPoint);
  Require(again.plain == number.plain, "a plain number stays as it is", number.plain + "\nand then\n" + again.plain);
}

void TryDate(std::string_view text) {
  app::ImportSentence why;
  const auto date = app::ReadImportDate(text, why);
  Require(date || (!why.english.empty() && !why.chinese.empty()), "there is a reason in both languages");
  if (!date) return;
  const int year = date->parts().year;
  Require(year >= 1900 && year <= 2199, "a date is of the years that are read", date->Text());
  Require(app::ReadImportDate(date->Text(), why) == date, "a date is read back", date->Text());
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace stockbook::fuzz;
  FuzzedBytes bytes(data, size);
  const auto encoding = static_cast<TextEncoding>(bytes.Below(7));
  const size_t piece = 1 + bytes.Below(17);
  const auto mark = static_cast<DecimalMark>(bytes.Below(3));
  const std::string_view text = bytes.TakeAll();
  TryEncoding(text, encoding, piece);
  TryNumber(text, mark);
  TryDate(text);
  return 0;
}
