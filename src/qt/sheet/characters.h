// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QRawFont>
#include <cstddef>
#include <string_view>

namespace stockbook::qt {

// The next character of well-formed UTF-8; U+FFFD for a byte that cannot start one. Moves `at` behind it.
char32_t NextCharacter(std::string_view text, size_t& at);
// Whether a character looks the same whatever its neighbours.
bool StandsAlone(char32_t character);
// The face and the glyph with which the toolkit shows a character; an empty run if it takes more than one glyph.
QGlyphRun RunOf(char32_t character, const QFont& font, const QRawFont& raw_font);

}  // namespace stockbook::qt
