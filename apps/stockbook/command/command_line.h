// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::app {

// Wrong arguments; the program exits with 2. The message is one sentence: what is wrong, where, and what to do about
// it.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class OptionKind { Flag, Value, Values };

// One option of a command: --name, and -letter if it has one. Repeatable options may be given more than once.
struct Option {
  std::string_view name;
  OptionKind kind = OptionKind::Flag;
  char letter = 0;
};

// The parsed arguments of one command: long options as `--name value` or `--name=value`, flags, letters as `-o FILE`,
// and everything else in order. `--` ends the options; `-` alone is not an option. A value may begin with one dash
// (`--second -1`), but with two only after `=`. Throws UsageError for unknown options.
class CommandLine {
 public:
  CommandLine(std::span<const std::string> arguments, std::span<const Option> options);

  bool Has(std::string_view name) const { return values_.find(name) != values_.end(); }
  std::optional<std::string> Value(std::string_view name) const;
  // Every value of a repeatable option, in order.
  std::vector<std::string> Values(std::string_view name) const;
  // The option's value as a whole number of least..most; UsageError if it is not.
  std::optional<int64_t> Integer(std::string_view name, int64_t least, int64_t most) const;
  // The option's value, which must be one of the choices.
  std::optional<std::string> Choice(std::string_view name, std::span<const std::string_view> choices) const;
  std::string Required(std::string_view name, std::string_view meaning) const;

  const std::vector<std::string>& positionals() const { return positionals_; }
  // The positional argument at the index; `meaning` names it in the error ("DB, the inventory to write").
  std::string Positional(size_t index, std::string_view meaning) const;
  void ExpectAtMost(size_t positional_count) const;

 private:
  void TakeLong(std::span<const std::string> arguments, size_t& at, std::span<const Option> options);
  void TakeLetter(std::span<const std::string> arguments, size_t& at, std::span<const Option> options);
  void Store(const Option& option, std::string value);

  std::map<std::string, std::vector<std::string>, std::less<>> values_;
  std::vector<std::string> positionals_;
};

}  // namespace stockbook::app
