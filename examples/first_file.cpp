// The smallest host: makes a project file, saves a site, and finds it again by its name.

#include <iostream>

#include <tessel/tessel.h>

using namespace tessel;

int main() {
  const auto db = ProjectDb::create(L"first.tessel");
  if (!db) return 1;  // the file was refused and is untouched

  // Without a transaction of ours each save is committed at once.
  const auto site = db->save(Site::create(L"Harbour"));
  std::cout << "saved as row " << site->id() << "\n";

  // A look-up makes a new object of the row, or gives null.
  const auto found = db->get<Site>(NameKey(L"Harbour"));
  std::cout << (found ? found->name().toUtf8() : "nothing") << "\n";
  std::cout << (db->get<Site>(NameKey(L"Airport")) ? "an airport" : "no airport") << "\n";
}
