// SPDX-License-Identifier: MIT
#include "databases/dialect/like_elements.h"

#include <utility>

namespace stockbook::databases {
namespace {

using Kind = LikeElement::Kind;

// The text with `mark` before each of the characters.
std::string Marked(std::string_view text, std::string_view characters, char mark) {
  std::string result;
  for (const char c : text) {
    if (characters.find(c) != std::string_view::npos) result += mark;
    result += c;
  }
  return result;
}

LikeElement ClassOf(std::string_view members, Wildcards wildcards) {
  const char negation = wildcards == Wildcards::kDesktop ? '!' : '^';
  LikeElement element{Kind::kClass, std::string(members), members.size() > 1 && members.front() == negation};
  if (element.negated) element.text.erase(0, 1);
  return element;
}

}  // namespace

std::vector<LikeElement> LikeElements(std::string_view pattern, Wildcards wildcards) {
  const bool desktop = wildcards == Wildcards::kDesktop;
  std::vector<LikeElement> elements;
  for (size_t at = 0; at < pattern.size(); ++at) {
    const char c = pattern[at];
    const size_t end = c == '[' ? pattern.find(']', at + 2) : std::string_view::npos;
    if (c == '%' || (c == '*' && desktop)) {
      elements.push_back({Kind::kAny, {}, false});
    } else if (c == '_' || (c == '?' && desktop)) {
      elements.push_back({Kind::kOne, {}, false});
    } else if (c == '#' && desktop) {
      elements.push_back({Kind::kClass, "0-9", false});
    } else if (end != std::string_view::npos) {
      LikeElement element = ClassOf(pattern.substr(at + 1, end - at - 1), wildcards);
      // One character alone in brackets stands for itself.
      if (element.text.size() == 1 && !element.negated) element.kind = Kind::kText;
      elements.push_back(std::move(element));
      at = end;
    } else if (!elements.empty() && elements.back().kind == Kind::kText) {
      elements.back().text += c;
    } else {
      elements.push_back({Kind::kText, std::string(1, c), false});
    }
  }
  return elements;
}

std::string SimplePattern(const std::vector<LikeElement>& elements) {
  std::string pattern;
  for (const LikeElement& element : elements) {
    pattern += element.kind == Kind::kAny ? "%" : element.kind == Kind::kOne ? "_" : Marked(element.text, "%_\\", '\\');
  }
  return pattern;
}

std::string RegularExpression(const std::vector<LikeElement>& elements) {
  std::string pattern = "^";
  for (const LikeElement& element : elements) {
    switch (element.kind) {
      case Kind::kAny:
        pattern += ".*";
        break;
      case Kind::kOne:
        pattern += ".";
        break;
      case Kind::kText:
        pattern += Marked(element.text, "\\^$.|?*+()[]{}", '\\');
        break;
      case Kind::kClass:
        pattern += (element.negated ? "[^" : "[") + Marked(element.text, "\\^[", '\\') + "]";
        break;
    }
  }
  return pattern + "$";
}

std::string BracketPattern(const std::vector<LikeElement>& elements) {
  std::string pattern;
  for (const LikeElement& element : elements) {
    if (element.kind == Kind::kAny || element.kind == Kind::kOne) {
      pattern += element.kind == Kind::kAny ? '%' : '_';
    } else if (element.kind == Kind::kClass) {
      pattern += (element.negated ? "[^" : "[") + element.text + "]";
    } else {
      for (const char c : element.text) {
        const bool special = c == '%' || c == '_' || c == '[';
        pattern += special ? std::string("[") + c + "]" : std::string(1, c);
      }
    }
  }
  return pattern;
}

}  // namespace stockbook::databases
