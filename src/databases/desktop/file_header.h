// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace stockbook::databases {

enum class Generation { kJet3, kJet4, kAce };

// What the first page of a desktop file says.
struct FileHeader {
  Generation generation = Generation::kJet4;
  size_t page_bytes = 4096;
  uint16_t code_page = 0;  // of the texts; 0 where the file does not say
  uint16_t language = 0;   // that its texts are sorted by

  // The name of the encoding of Jet 3 texts: that of the code page, else the one that goes with the language.
  std::string TextEncoding() const;
};

// The bytes that ReadFileHeader needs, or fewer if the file has fewer.
inline constexpr size_t kHeaderBytes = 512;

// Throws platform::Error that says what is in the way: another kind of file, encryption, a password that is not
// `password`. `file` is its name in messages.
FileHeader ReadFileHeader(std::string_view first_bytes, const std::string& file, const std::string& password,
                          const char* operation);

}  // namespace stockbook::databases
