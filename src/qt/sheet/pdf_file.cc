// SPDX-License-Identifier: MIT
#include "qt/sheet/pdf_file.h"

#include <cmath>
#include <cstdio>

namespace stockbook::qt {
namespace {

// The fastest level costs a tenth of the usual one here, and the file is a quarter larger.
constexpr int kCompression = 1;
// How many bytes the toolkit puts before what it compresses.
constexpr qsizetype kLengthBytes = 4;

}  // namespace

PdfFile::PdfFile(std::ostream& out) : out_(out) {
  // Bytes beyond ASCII tell programs that copy files that this is no text.
  Put("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
}

void PdfFile::Put(std::string_view bytes) {
  out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  written_ += static_cast<int64_t>(bytes.size());
}

void PdfFile::Begin(int number) {
  places_[static_cast<size_t>(number) - 1] = written_;
  Put(std::to_string(number) + " 0 obj\n");
}

void PdfFile::Write(int number, std::string_view value) {
  Begin(number);
  Put(value);
  Put("\nendobj\n");
}

void PdfFile::WriteStream(int number, std::string_view entries, const QByteArray& data) {
  const QByteArray packed = qCompress(data, kCompression);
  const std::string_view bytes(packed.constData() + kLengthBytes, static_cast<size_t>(packed.size() - kLengthBytes));
  Begin(number);
  Put("<< " + std::string(entries) + " /Filter /FlateDecode /Length " + std::to_string(bytes.size()) + " >>\nstream\n");
  Put(bytes);
  Put("\nendstream\nendobj\n");
}

void PdfFile::WriteWhole(int number, const QByteArray& body) {
  Write(number, {body.constData(), static_cast<size_t>(body.size())});
}

void PdfFile::Finish(int catalog, int information) {
  const int64_t table = written_;
  Put("xref\n0 " + std::to_string(places_.size() + 1) + "\n0000000000 65535 f \n");
  for (const int64_t place : places_) {
    char line[32];
    const int length = std::snprintf(line, sizeof line, "%010lld %05d %c \n", static_cast<long long>(place),
                                     place == 0 ? 65535 : 0, place == 0 ? 'f' : 'n');
    Put({line, static_cast<size_t>(length)});
  }
  Put("trailer\n<< /Size " + std::to_string(places_.size() + 1) + " /Root " + PdfReference(catalog) + " /Info " +
      PdfReference(information) + " >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n");
}

std::string PdfText(const QString& text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string hex = "<FEFF";
  for (const QChar character : text) {
    for (int shift = 12; shift >= 0; shift -= 4) hex += kHex[character.unicode() >> shift & 15];
  }
  return hex + ">";
}

std::string PdfReference(int number) { return std::to_string(number) + " 0 R"; }

std::string PdfNumber(double number) {
  const long long parts = std::llround(number * 10000);
  std::string text = std::to_string(parts < 0 ? -parts : parts);
  constexpr size_t kBehind = 4;
  if (text.size() <= kBehind) text.insert(0, kBehind + 1 - text.size(), '0');
  text.insert(text.size() - kBehind, ".");
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return parts < 0 ? "-" + text : text;
}

}  // namespace stockbook::qt
