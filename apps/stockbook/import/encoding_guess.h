// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/import/text_encoding.h"

namespace stockbook::app {

// Whether the last character of a sample may be cut off.
enum class SampleEnd { kWhole, kCutOff };

// What bytes that are not all ASCII are most likely: kUtf8 or kGb18030. Western texts of one byte a letter can be
// well-formed GB18030 by chance, so most of its characters must be those that Chinese texts are made of. A few damaged
// characters do not matter: what loses fewer bytes is taken, and UTF-8 where both lose as many.
TextEncoding GuessEncoding(std::string_view sample, SampleEnd end);

// Whether GB18030 text has characters that are not in GBK.
bool HasFourByteCharacters(std::string_view text);

}  // namespace stockbook::app
