// SPDX-License-Identifier: MIT
#include "databases/dialect/like_pattern.h"

#include "base/text.h"
#include "stockbook/base/money.h"

namespace stockbook::databases {
namespace {

unsigned char Fold(char c) { return static_cast<unsigned char>(base::AsciiLower(c)); }

// The character at the front as one comparable number, and its length in bytes.
struct Character {
  uint32_t code = 0;
  size_t length = 0;
};
Character FrontCharacter(std::string_view text) {
  Character front{Fold(text.front()), 1};
  while (front.length < text.size() && front.length < 4 &&
         (static_cast<unsigned char>(text[front.length]) & 0xC0) == 0x80) {
    front.code = front.code << 8 | static_cast<unsigned char>(text[front.length++]);
  }
  return front;
}

bool IsAny(char c, Wildcards wildcards) { return c == '%' || (c == '*' && wildcards == Wildcards::kDesktop); }
bool IsOne(char c, Wildcards wildcards) { return c == '_' || (c == '?' && wildcards == Wildcards::kDesktop); }

// Whether a character is in the class between '[' and ']'.
bool InClass(std::string_view members, uint32_t code, Wildcards wildcards) {
  const char negation = wildcards == Wildcards::kDesktop ? '!' : '^';
  const bool negated = members.size() > 1 && members.front() == negation;
  if (negated) members.remove_prefix(1);
  bool found = false;
  while (!members.empty() && !found) {
    const Character low = FrontCharacter(members);
    members.remove_prefix(low.length);
    Character high = low;
    if (members.size() > 1 && members.front() == '-') {
      high = FrontCharacter(members.substr(1));
      members.remove_prefix(1 + high.length);
    }
    found = low.code <= code && code <= high.code;
  }
  return found != negated;
}

// Goes on where it can, and one character further after the last "any text" where it cannot. That takes text times
// pattern at worst, which nobody waits for, so the work has an end.
class Matcher {
 public:
  Matcher(std::string_view text, std::string_view pattern, Wildcards wildcards)
      : text_(text), pattern_(pattern), wildcards_(wildcards), last_bracket_(pattern.rfind(']')) {}

  bool Run() {
    while (text_at_ < text_.size()) {
      if (pattern_at_ < pattern_.size() && IsAny(pattern_[pattern_at_], wildcards_)) {
        retry_pattern_ = ++pattern_at_;
        retry_text_ = text_at_;
        continue;
      }
      const Character front = FrontCharacter(text_.substr(text_at_));
      const size_t taken = pattern_at_ < pattern_.size() ? MatchOne(front.code) : 0;
      if (taken > 0) {
        pattern_at_ += taken;
        text_at_ += front.length;
      } else if (!Retry()) {
        return false;
      }
    }
    while (pattern_at_ < pattern_.size() && IsAny(pattern_[pattern_at_], wildcards_)) ++pattern_at_;
    return pattern_at_ == pattern_.size();
  }

 private:
  // The element of the pattern against one character; how many bytes of the pattern it takes, or 0 where they differ.
  size_t MatchOne(uint32_t code) {
    Spend(1);
    const std::string_view pattern = pattern_.substr(pattern_at_);
    const char c = pattern.front();
    if (IsOne(c, wildcards_)) return 1;
    if (c == '#' && wildcards_ == Wildcards::kDesktop) return code >= '0' && code <= '9' ? 1 : 0;
    // A bracket that nothing closes is itself; that is known without looking for its end again and again.
    if (c == '[' && last_bracket_ != std::string_view::npos && pattern_at_ + 2 <= last_bracket_) {
      const size_t end = pattern.find(']', 2);
      Spend(end);
      return InClass(pattern.substr(1, end - 1), code, wildcards_) ? end + 1 : 0;
    }
    const Character wanted = FrontCharacter(pattern);
    return wanted.code == code ? wanted.length : 0;
  }

  bool Retry() {
    if (retry_text_ == std::string_view::npos) return false;
    pattern_at_ = retry_pattern_;
    retry_text_ += FrontCharacter(text_.substr(retry_text_)).length;
    text_at_ = retry_text_;
    return true;
  }

  void Spend(size_t steps) {
    constexpr size_t kMostSteps = 10'000'000;
    steps_ += steps;
    if (steps_ > kMostSteps) throw base::ArithmeticError("like 的文本和样式太长，请简化样式。");
  }

  std::string_view text_;
  std::string_view pattern_;
  Wildcards wildcards_;
  size_t last_bracket_;
  size_t steps_ = 0;
  size_t text_at_ = 0;
  size_t pattern_at_ = 0;
  // Where to continue when the piece after the last "any text" does not match.
  size_t retry_text_ = std::string_view::npos;
  size_t retry_pattern_ = 0;
};

}  // namespace

bool MatchesLike(std::string_view text, std::string_view pattern, Wildcards wildcards) {
  return Matcher(text, pattern, wildcards).Run();
}

}  // namespace stockbook::databases
