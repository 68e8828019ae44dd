#include <tessel/import_errors.h>

namespace tessel {

ReadError::ReadError(const std::string& text) : std::runtime_error(text) {}
ReadError::~ReadError() = default;

KeyError::KeyError(const std::string& text) : std::runtime_error(text) {}
KeyError::~KeyError() = default;

}  // namespace tessel

namespace tsutils::json {

ValueError::ValueError(const std::string& text) : std::runtime_error(text) {}
ValueError::~ValueError() = default;

}  // namespace tsutils::json
