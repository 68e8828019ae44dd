#include "interruption.h"

#include <csignal>

namespace tessel::tool {
namespace {

volatile std::sig_atomic_t isAsked = 0;

constexpr int signals[] = {SIGINT, SIGTERM};

extern "C" void ask(int signal) {
  if (isAsked) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);  // It comes when this handler has ended, which blocks it.
  }
  isAsked = 1;
}

bool isIgnored(int signal) {
  struct sigaction now {};
  return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

void setHandler(void (*handler)(int), int flags) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  // One at a time: the handler must know whether it is called for the second one.
  for (const int signal : signals) {
    sigaddset(&action.sa_mask, signal);
  }
  for (const int signal : signals) {
    if (!isIgnored(signal)) sigaction(signal, &action, nullptr);
  }
}

}  // namespace

// With SA_RESTART no read or write of SQLite ends in the middle.
Interruption::Interruption() { setHandler(&ask, SA_RESTART); }

Interruption::~Interruption() { setHandler(SIG_DFL, 0); }

void Interruption::check() {
  if (isAsked) throw Interrupted();
}

}  // namespace tessel::tool
