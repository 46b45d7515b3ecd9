// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::qt {

// Writes the objects of a PDF, one after the other, and then the table of where they are. It keeps nothing of an object
// but its place. Objects that were numbered and never written are free.
class PdfFile {
 public:
  // Writes the beginning. A failure of `out` shows in its state.
  explicit PdfFile(std::ostream& out);

  // A number for an object that is to come, counted from 1.
  int Number() {
    places_.push_back(0);
    return static_cast<int>(places_.size());
  }
  // "<< ... >>" or any other value.
  void Write(int number, std::string_view value);
  // `entries` of its dictionary besides the length and the filter; the data is compressed.
  void WriteStream(int number, std::string_view entries, const QByteArray& data);
  // All of an object between "obj" and "endobj".
  void WriteWhole(int number, const QByteArray& body);
  void Finish(int catalog, int information);

 private:
  void Begin(int number);
  void Put(std::string_view bytes);

  std::ostream& out_;
  int64_t written_ = 0;
  std::vector<int64_t> places_;  // 0: not written
};

// A text as a PDF has it outside of its pages: "<FEFF...>".
std::string PdfText(const QString& text);
// "12 0 R"
std::string PdfReference(int number);
// Digits without an exponent, at most four behind the point.
std::string PdfNumber(double number);

}  // namespace stockbook::qt
