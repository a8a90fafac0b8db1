// Umbrella header of the scene layer's exported classes.
#pragma once

#include "component/ComponentExport.h"
