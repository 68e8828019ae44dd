#pragma once

// The input of the ODB compiler: which column of the file each field of a class is, one file for each public header, and
// the views that read without building objects.

#include "persistence/catalogue_mapping.h"
#include "persistence/catalogue_views.h"
#include "persistence/spatial_mapping.h"
#include "persistence/spatial_views.h"
#include "persistence/units_mapping.h"
#include "persistence/units_views.h"
