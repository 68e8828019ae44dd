#include "interruption.h"

#include <csignal>

namespace tessel::tool {
namespace {

volatile std::sig_atomic_t isAsked = 0;

extern "C" void ask(int) { isAsked = 1; }

constexpr int signals[] = {SIGINT, SIGTERM};

bool isIgnored(int signal) {
  struct sigaction now {};
  return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

void setHandler(void (*handler)(int), unsigned flags) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(flags);
  for (const int signal : signals) {
    if (!isIgnored(signal)) sigaction(signal, &action, nullptr);
  }
}

}  // namespace

// With SA_RESTART no read or write of SQLite ends in the middle.
Interruption::Interruption() { setHandler(&ask, static_cast<unsigned>(SA_RESETHAND) | SA_RESTART); }

Interruption::~Interruption() { setHandler(SIG_DFL, 0); }

void Interruption::check() {
  if (isAsked) throw Interrupted();
}

}  // namespace tessel::tool
