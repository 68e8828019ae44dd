#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tessel::tool {

/// What the program prints to.
enum class Stream { Out, Err };

/// Whether it is a terminal that understands control sequences.
bool takesControls(Stream stream);

/// The columns of a terminal, or what COLUMNS says of it; nothing if there is no terminal or nobody knows.
std::optional<std::size_t> widthOf(Stream stream);

enum class Style { Heading, Error, Warning };

/// The text as it is, or between the control sequences of that style if the stream takes them and nobody set NO_COLOR.
std::string styled(Stream stream, Style style, const std::string& text);

/// The three texts on one line. If that is wider than the terminal, the one in the middle is shortened.
std::string fittedLine(Stream stream, const std::string& before, const std::string& text,
                       const std::string& after = "");

}  // namespace tessel::tool
