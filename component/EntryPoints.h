// The C entry points a host finds with dlsym.
//
// QZDllCreateComponent(family, unused, name, out): for the family "qzapi" and the name
// "sceneapifactory" (exactly, case and length included) it stores a new scene factory in *out
// and returns true; otherwise it returns false and leaves *out alone. The second argument is
// not read. *out is a counted pointer to du::RefCounted so that one entry point can serve any
// kind of component; the host casts it to qzkapp::SceneApiFactory. Every call makes a new factory.
//
// QZDllInit and QZDllTerminate do nothing: there is no global start or stop.
#pragma once

#include "component/ComponentExport.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"

#include <string>

extern "C" {
QZECAD_EXPORT bool QZDllCreateComponent(std::string const& family, void const* unused,
                                        std::string const& name, du::SmartPtr<du::RefCounted>* out);
QZECAD_EXPORT void QZDllInit();
QZECAD_EXPORT void QZDllTerminate();
}

// The entry points' types, for a host that finds them with dlsym.
using QZDllCreateComponentFn = bool (*)(std::string const&, void const*, std::string const&,
                                        du::SmartPtr<du::RefCounted>*);
using QZDllInitFn = void (*)();
using QZDllTerminateFn = void (*)();
