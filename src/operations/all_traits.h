#pragma once

#include "operations/spatial_traits.h"
#include "operations/units_traits.h"
