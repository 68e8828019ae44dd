#include "arguments.h"

#include <algorithm>
#include <string>

#include "failures.h"
#include "suggestion.h"
#include "text.h"

namespace tessel::tool {
namespace {

constexpr std::string_view endOfOptions = "--";

bool isOption(std::string_view word) { return word.size() > 1 && word.front() == '-'; }

[[noreturn]] void refuseOption(const std::vector<Option>& options, std::string_view name) {
  std::vector<std::string> words = {"--help"};
  for (const Option& option : options) {
    words.emplace_back(option.name);
  }
  throw UsageError("there is no option '" + printable(name) + "'", suggestion(name, words));
}

const Option& findOption(const std::vector<Option>& options, std::string_view name) {
  const auto found = std::find_if(options.begin(), options.end(), [&](const Option& o) { return o.name == name; });
  if (found == options.end()) refuseOption(options, name);
  return *found;
}

}  // namespace

Arguments::Arguments(const Words& words, const std::vector<Option>& options) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == endOfOptions) {
      operands_.insert(operands_.end(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
      break;
    }
    if (isOption(words[i])) {
      i = readOption(words, i, options);
    } else {
      operands_.push_back(words[i]);
    }
  }
}

/// Returns the index of the option's last word.
std::size_t Arguments::readOption(const Words& words, std::size_t index, const std::vector<Option>& options) {
  const std::string_view word = words[index];
  const std::size_t equals = word.find('=');
  const Option& option = findOption(options, word.substr(0, equals));
  std::string& value = values_[std::string(option.name)];
  if (equals != std::string_view::npos) {
    if (!option.takesValue) throw UsageError("the option '" + std::string(option.name) + "' takes no value");
    value = word.substr(equals + 1);
  } else if (option.takesValue) {
    if (++index == words.size()) throw UsageError("the option '" + std::string(option.name) + "' needs a value");
    value = words[index];
  }
  return index;
}

std::optional<std::string> Arguments::value(std::string_view option) const {
  const auto found = values_.find(option);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

const std::string& Arguments::onlyOperand() const {
  if (operands_.empty()) throw UsageError("a project file is needed");
  if (operands_.size() > 1) throw UsageError("only one project file is wanted");
  return operands_.front();
}

bool asksForHelp(const Words& words) {
  const auto end = std::find(words.begin(), words.end(), endOfOptions);
  return std::any_of(words.begin(), end, [](std::string_view word) { return word == "--help" || word == "-h"; });
}

}  // namespace tessel::tool
