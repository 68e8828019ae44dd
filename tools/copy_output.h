#pragma once

#include "copy_content.h"

namespace tessel::tool {

/// As tables on standard output, with what was taken over and what stays behind on standard error.
void printCopyText(const CopyReport& report, const ProjectDb& source, const ProjectDb& destination);

/// As one object on one line of standard output.
void printCopyJson(const CopyReport& report, const ProjectDb& source, const ProjectDb& destination);

}  // namespace tessel::tool
