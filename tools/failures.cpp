#include "failures.h"

#include <exception>

#include <tessel/exceptions.h>
#include <tessel/platform/od_error.h>
#include <tessel/platform/od_string.h>

namespace tessel::tool {

std::string currentErrorText() {
  try {
    throw;
  } catch (const DatabaseException&) {
    // It tells no more than that, and this is nearly always why.
    return "the file could not be read or written; another program may be writing it";
  } catch (const Exception& error) {
    return OdString(error.what()).toUtf8();
  } catch (const OdError& error) {
    return "error " + std::to_string(error.code());
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace tessel::tool
