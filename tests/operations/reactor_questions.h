#pragma once

#include <ostream>

#include <tessel/reactors.h>

#include "support/printers.h"

namespace tessel {

inline bool operator==(const ReactorLog::Question& a, const ReactorLog::Question& b) {
  return a.type == b.type && a.name == b.name && a.answer == b.answer && a.newName == b.newName;
}
inline void PrintTo(const ReactorLog::Question& question, std::ostream* out) {
  *out << "type " << static_cast<int>(question.type) << " answer "
       << (question.answer ? static_cast<int>(*question.answer) : -1) << " ";
  PrintTo(question.name, out);
  PrintTo(question.newName, out);
}

}  // namespace tessel
