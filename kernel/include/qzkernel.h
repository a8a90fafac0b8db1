// Umbrella header of the reference kernel's public interface.
#pragma once

#include "dp/ReadWriteLock.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/ClassType.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/Object.h"
#include "qzk/ObjectWithRWLock.h"
