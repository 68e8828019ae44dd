#pragma once

/// @file
/// The whole interface, in one header.

#include <tessel/copy_report.h>
#include <tessel/criteria.h>
#include <tessel/definitions.h>
#include <tessel/exceptions.h>
#include <tessel/fwd.h>
#include <tessel/id_mapping.h>
#include <tessel/ifc_type.h>
#include <tessel/import_errors.h>
#include <tessel/inspect.h>
#include <tessel/object.h>
#include <tessel/object_traits.h>
#include <tessel/object_type.h>
#include <tessel/project.h>
#include <tessel/project_db.h>
#include <tessel/project_db_import.h>
#include <tessel/project_db_loader.h>
#include <tessel/project_db_reactor.h>
#include <tessel/property_set.h>
#include <tessel/property_type.h>
#include <tessel/reactors.h>
#include <tessel/removal.h>
#include <tessel/smart_ptr.h>
#include <tessel/spatial.h>
#include <tessel/transaction.h>
#include <tessel/type_words.h>
#include <tessel/unit_conversion.h>
#include <tessel/units.h>
