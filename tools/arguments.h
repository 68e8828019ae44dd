#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"

namespace tessel::tool {

struct Option {
  std::string_view name;  ///< With its dashes.
  bool takesValue = false;
};

/// The words of a command, sorted into options and operands. A value stands behind its option, or is joined to it by
/// "="; the last one counts. Behind "--" everything is an operand, and so is "-" anywhere.
class Arguments {
public:
  /// Throws UsageError for an option that is not among `options`, and for one with a value missing or too much.
  Arguments(const Words& words, const std::vector<Option>& options);

  bool has(std::string_view option) const { return values_.find(option) != values_.end(); }

  /// Nothing if the option was not given.
  std::optional<std::string> value(std::string_view option) const;

  const std::vector<std::string>& operands() const { return operands_; }

  /// The one operand of a command that works on one file. Throws UsageError if there is none, or more.
  const std::string& onlyOperand() const;

private:
  std::size_t readOption(const Words& words, std::size_t index, const std::vector<Option>& options);

  std::map<std::string, std::string, std::less<>> values_;
  std::vector<std::string> operands_;
};

/// Whether the words ask for help: "--help" or "-h" before a "--".
bool asksForHelp(const Words& words);

}  // namespace tessel::tool
