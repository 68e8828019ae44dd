#include "database/savepoint.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "database/transaction_scope.h"

namespace tessel {
namespace {

/// The platform's random source, read in pieces as large as one call gives. Boost's own provider makes a call for each
/// identifier, which cost a tenth of a bulk save.
class BufferedRandom {
public:
  using result_type = std::uint64_t;

  static constexpr result_type min() { return 0; }
  static constexpr result_type max() { return UINT64_MAX; }

  result_type operator()() {
    if (next_ == words_.size()) refill();
    return words_[next_++];
  }

private:
  void refill() {
    if (getentropy(words_.data(), sizeof words_) != 0) throw std::system_error(errno, std::generic_category());
    next_ = 0;
  }

  std::array<result_type, 32> words_{};
  std::size_t next_ = words_.size();
};

std::string randomName() {
  static thread_local boost::uuids::basic_random_generator<BufferedRandom> random;
  return to_string(random());
}

}  // namespace

Savepoint::Savepoint(odb::database& database) : database_(database), name_(randomName()) {
  // Without a transaction around it the savepoint would begin one, and its release would commit.
  requireTransaction();
  execute("SAVEPOINT");
}

Savepoint::~Savepoint() {
  try {
    release();
  } catch (...) {
    // The transaction is gone, and the exception under way says so.
  }
}

void Savepoint::release() {
  if (released_) return;
  execute("RELEASE SAVEPOINT");
  released_ = true;
}

void Savepoint::rollback() {
  if (!released_) execute("ROLLBACK TO SAVEPOINT");
}

void Savepoint::execute(std::string_view verb) {
  // Two such statements go with each object that is written, so their text is put together without an allocation.
  std::array<char, 64> text;
  char* end = std::copy(verb.begin(), verb.end(), text.data());
  *end++ = ' ';
  *end++ = '\'';
  end = std::copy(name_.begin(), name_.end(), end);
  *end++ = '\'';
  database_.execute(text.data(), static_cast<std::size_t>(end - text.data()));
}

SavepointGuard::~SavepointGuard() {
  if (done_) return;
  try {
    savepoint_.rollback();
  } catch (...) {
    // As above; nothing is left that could be undone.
  }
}

}  // namespace tessel
