#pragma once

#include "operations/catalogue_traits.h"
#include "operations/spatial_traits.h"
#include "operations/units_traits.h"
