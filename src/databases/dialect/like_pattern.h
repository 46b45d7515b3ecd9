// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stockbook::databases {

// LIKE, ignoring ASCII case. The desktop's wildcards are % * (any text), _ ? (one character), # (a digit) and [a-z],
// [!a-z]; the server's are %, _, [a-z] and [^a-z]. Takes text times pattern at worst, and throws base::ArithmeticError
// where that is more than ten million steps.
enum class Wildcards { kDesktop, kServer };
bool MatchesLike(std::string_view text, std::string_view pattern, Wildcards wildcards);

}  // namespace stockbook::databases
