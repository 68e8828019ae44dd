#pragma once

#include <string>
#include <vector>

namespace tessel::benchmarks {

template <typename Text>
Text textOf(const std::string& text);

/// "000001" and so on, so that the order of names is that of numbers.
inline std::string numbered(const std::string& name, int number) {
  return name + " " + std::to_string(1000000 + number).substr(1);
}

/// What is said of a set and of its definitions.
template <typename Text>
struct SetTexts {
  Text name, label;
  std::vector<Text> definitions;
};

template <typename Text>
std::vector<SetTexts<Text>> setTexts(int sets, int definitionsOfEach) {
  std::vector<SetTexts<Text>> texts;
  for (int s = 1; s <= sets; ++s) {
    SetTexts<Text>& set = texts.emplace_back();
    set.name = textOf<Text>(numbered("Set", s));
    set.label = textOf<Text>(numbered("Properties", s));
    for (int d = 1; d <= definitionsOfEach; ++d) {
      set.definitions.push_back(textOf<Text>(numbered("Property", s) + "." + std::to_string(d)));
    }
  }
  return texts;
}

/// What those sets are changed to: another label and one new definition each.
template <typename Text>
std::vector<SetTexts<Text>> changedSetTexts(int sets) {
  std::vector<SetTexts<Text>> texts = setTexts<Text>(sets, 0);
  for (int s = 1; s <= sets; ++s) {
    SetTexts<Text>& set = texts[static_cast<std::size_t>(s - 1)];
    set.label = textOf<Text>(numbered("Changed", s));
    set.definitions = {textOf<Text>(numbered("Further property", s))};
  }
  return texts;
}

}  // namespace tessel::benchmarks
