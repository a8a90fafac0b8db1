// The C entry points a host finds with dlsym.
#include "component/ComponentExport.h"

extern "C" {

// There is no global start or stop: every scene sets itself up in its own Init.
QZECAD_EXPORT void QZDllInit() {}
QZECAD_EXPORT void QZDllTerminate() {}

}
