#include <tessel/tessel.h>

/// What a program may load without knowing of the library behind it: opens a project file, which is made if it is
/// missing, and closes it again. Says whether there is a project.
extern "C" __attribute__((visibility("default"))) bool useProject(const char* file) {
  return tessel::ProjectDb::create(OdString::fromUtf8(file)) != nullptr;
}
