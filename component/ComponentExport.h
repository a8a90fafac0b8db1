// Symbol visibility of the scene layer: everything is hidden but what is marked QZECAD_EXPORT.
#pragma once

#define QZECAD_EXPORT __attribute__((visibility("default")))
