// SPDX-License-Identifier: MIT
#include "stockbook/command/command_line.h"

#include <algorithm>

#include "base/number.h"

namespace stockbook::app {
namespace {

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// Of what may be a connection string no more than its first name, since there may be a password in it.
std::string QuotedArgument(std::string_view text) {
  const size_t equals = text.find('=');
  return Quoted(equals == std::string_view::npos ? std::string(text) : std::string(text.substr(0, equals)) + "=...");
}

const Option* FindOption(std::span<const Option> options, std::string_view name) {
  const auto found =
      std::find_if(options.begin(), options.end(), [&](const Option& option) { return option.name == name; });
  return found == options.end() ? nullptr : &*found;
}

std::string TakeValue(std::span<const std::string> arguments, size_t& at, std::string_view option) {
  if (at + 1 >= arguments.size() || arguments[at + 1].starts_with("--")) {
    throw UsageError("The option " + std::string(option) + " needs a value behind it.");
  }
  return arguments[++at];
}

}  // namespace

CommandLine::CommandLine(std::span<const std::string> arguments, std::span<const Option> options) {
  bool options_ended = false;
  for (size_t at = 0; at < arguments.size(); ++at) {
    const std::string& argument = arguments[at];
    if (options_ended || argument.size() < 2 || argument.front() != '-') {
      positionals_.push_back(argument);
    } else if (argument == "--") {
      options_ended = true;
    } else if (argument[1] == '-') {
      TakeLong(arguments, at, options);
    } else {
      TakeLetter(arguments, at, options);
    }
  }
}

void CommandLine::TakeLong(std::span<const std::string> arguments, size_t& at, std::span<const Option> options) {
  const std::string_view argument = arguments[at];
  const size_t equals = argument.find('=');
  const std::string_view written = argument.substr(0, equals);
  const Option* option = FindOption(options, written.substr(2));
  if (option == nullptr) throw UsageError("There is no option " + Quoted(written) + " here.");
  if (option->kind == OptionKind::Flag) {
    if (equals != std::string_view::npos) throw UsageError("The option " + std::string(written) + " takes no value.");
    Store(*option, {});
  } else if (equals != std::string_view::npos) {
    Store(*option, std::string(argument.substr(equals + 1)));
  } else {
    Store(*option, TakeValue(arguments, at, written));
  }
}

void CommandLine::TakeLetter(std::span<const std::string> arguments, size_t& at, std::span<const Option> options) {
  const std::string_view argument = arguments[at];
  const auto found = std::find_if(options.begin(), options.end(), [&](const Option& option) {
    return option.letter != 0 && option.letter == argument[1];
  });
  if (found == options.end() || argument.size() > 2)
    throw UsageError("There is no option " + Quoted(argument) + " here.");
  Store(*found, found->kind == OptionKind::Flag ? std::string() : TakeValue(arguments, at, argument));
}

void CommandLine::Store(const Option& option, std::string value) {
  auto& values = values_[std::string(option.name)];
  if (option.kind == OptionKind::Value && !values.empty()) {
    throw UsageError("The option --" + std::string(option.name) + " is given twice; give it once.");
  }
  values.push_back(std::move(value));
}

std::optional<std::string> CommandLine::Value(std::string_view name) const {
  const auto found = values_.find(name);
  if (found == values_.end()) return std::nullopt;
  return found->second.front();
}

std::vector<std::string> CommandLine::Values(std::string_view name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::optional<int64_t> CommandLine::Integer(std::string_view name, int64_t least, int64_t most) const {
  const auto text = Value(name);
  if (!text) return std::nullopt;
  const auto number = base::ParseInteger(*text);
  if (!number || *number < least || *number > most) {
    throw UsageError("The option --" + std::string(name) + " needs a whole number from " + std::to_string(least) +
                     " to " + std::to_string(most) + ", not " + Quoted(*text) + ".");
  }
  return number;
}

std::optional<std::string> CommandLine::Choice(std::string_view name, std::span<const std::string_view> choices) const {
  auto text = Value(name);
  if (!text || std::find(choices.begin(), choices.end(), *text) != choices.end()) return text;
  std::string list;
  for (size_t index = 0; index < choices.size(); ++index) {
    list += index == 0 ? "" : index + 1 == choices.size() ? " or " : ", ";
    list += choices[index];
  }
  throw UsageError("The option --" + std::string(name) + " must be " + list + ", not " + Quoted(*text) + ".");
}

std::string CommandLine::Required(std::string_view name, std::string_view meaning) const {
  if (auto text = Value(name); text && !text->empty()) return *text;
  throw UsageError("The option --" + std::string(name) + " is missing: " + std::string(meaning) + ".");
}

std::string CommandLine::Positional(size_t index, std::string_view meaning) const {
  if (index < positionals_.size() && !positionals_[index].empty()) return positionals_[index];
  throw UsageError("An argument is missing: " + std::string(meaning) + ".");
}

void CommandLine::ExpectAtMost(size_t positional_count) const {
  if (positionals_.size() <= positional_count) return;
  throw UsageError("The argument " + QuotedArgument(positionals_[positional_count]) +
                   " is one too many; leave it out.");
}

}  // namespace stockbook::app
