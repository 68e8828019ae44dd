#include "failures.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <exception>
#include <system_error>

#include <odb/exceptions.hxx>

#include <tessel/exceptions.h>
#include <tessel/platform/od_error.h>
#include <tessel/platform/od_string.h>

namespace tessel::tool {
namespace {

/// The library names a field of the object that was to be saved, such as "name", or else the class: "Unit", "Unit.label".
std::string takenText(const std::string& member) {
  const std::string same = "its name or label is taken";
  if (member.empty()) return same;
  if (std::islower(static_cast<unsigned char>(member.front()))) return "the " + member + " is taken";
  std::string kind = member.substr(0, member.find('.'));
  std::transform(kind.begin(), kind.end(), kind.begin(), [](unsigned char c) { return std::tolower(c); });
  return kind + ": " + same;
}

}  // namespace

std::string currentErrorText() {
  try {
    throw;
  } catch (const DatabaseException&) {
    // It tells no more than that, and this is nearly always why.
    return "the file could not be read or written; another program may be using it, or it is damaged";
  } catch (const odb::timeout&) {
    return "another program is using the file; try again";
  } catch (const ObjectNotUnique& error) {
    return takenText(error.member().toUtf8());
  } catch (const Exception& error) {
    return OdString(error.what()).toUtf8();
  } catch (const OdError& error) {
    return "error " + std::to_string(error.code());
  } catch (const std::exception& error) {
    return error.what();
  }
}

bool isFileFailure(const std::string& errorText) {
  return errorText == OdString(DatabaseException().what()).toUtf8() ||
         errorText == OdString(ForcedRollback().what()).toUtf8() || errorText == odb::timeout().what();
}

std::string openErrorText(int error) {
  if (error == ENOENT || error == ENOTDIR) return "There is no such file.";
  return "The file cannot be opened: " + std::generic_category().message(error) + ".";
}

}  // namespace tessel::tool
